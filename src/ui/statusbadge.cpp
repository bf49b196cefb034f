#include "statusbadge.h"

#include "apptheme.h"
#include "l10n/l10n.h"

#include <QPainter>

namespace StatusBadgeLook {

QString label(ClipHealth health, const L10n &strings)
{
    switch (health) {
    case ClipHealth::ok:
        return strings[u"health.ok.short"].toUpper();
    case ClipHealth::warn:
        return strings[u"health.warn.short"].toUpper();
    case ClipHealth::fail:
        return strings[u"health.fail.short"].toUpper();
    case ClipHealth::unknown:
        break;
    }
    return strings[u"health.unknown.short"].toUpper();
}

QFont font()
{
    return AppTheme::font(10, QFont::Bold, AppTheme::Face::rounded);
}

QSize size(const QString &label, const QFont &font)
{
    const QFontMetrics fm(font);
    return {6 + 6 + 5 + fm.horizontalAdvance(label) + 8, fm.height() + 6};
}

bool pulses(ClipHealth health)
{
    return health == ClipHealth::ok || health == ClipHealth::warn;
}

void paint(QPainter *painter, const QRectF &rect, ClipHealth health, const QString &label,
           const QFont &font, qreal glow)
{
    const QColor color = AppTheme::healthColor(health);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QRectF capsule = rect.adjusted(0.5, 0.5, -0.5, -0.5);
    const qreal radius = capsule.height() / 2;
    painter->setBrush(AppTheme::withAlpha(color, 0.13));
    painter->setPen(QPen(AppTheme::withAlpha(color, 0.38), 1));
    painter->drawRoundedRect(capsule, radius, radius);

    const QPointF dot(capsule.left() + 6 + 3, capsule.center().y());
    // The dot's shadow: radius 1 at 0.3 quietly, radius 5 at 0.9 at the peak of a breath.
    const qreal shadowRadius = 1 + 4 * glow;
    const qreal shadowAlpha = 0.3 + 0.6 * glow;
    painter->setPen(Qt::NoPen);
    for (int i = 3; i >= 1; --i) {
        const qreal r = 3 + shadowRadius * i / 3.0;
        painter->setBrush(AppTheme::withAlpha(color, shadowAlpha / 4));
        painter->drawEllipse(dot, r, r);
    }
    painter->setBrush(color);
    painter->drawEllipse(dot, 3, 3);

    painter->setFont(font);
    painter->setPen(color);
    painter->drawText(
        QRectF(dot.x() + 3 + 5, capsule.top(), capsule.right() - dot.x(), capsule.height()),
        Qt::AlignVCenter | Qt::AlignLeft, label);
    painter->restore();
}

} // namespace StatusBadgeLook

StatusBadge::StatusBadge(QWidget *parent) : QWidget(parent)
{
    setFont(StatusBadgeLook::font());
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_glow.setStartValue(0.0);
    m_glow.setEndValue(1.0);
    m_glow.setDuration(1200);
    m_glow.setEasingCurve(QEasingCurve::InOutSine);
    m_glow.setLoopCount(-1);
    connect(&m_glow, &QVariantAnimation::valueChanged, this, [this](const QVariant &v) {
        // Forward then back: a breath in and out per two loops would look like a jump.
        const qreal t = v.toReal();
        m_glowValue = t;
        update();
    });
    connect(&m_glow, &QVariantAnimation::currentLoopChanged, this, [this](int loop) {
        m_glow.setDirection(loop % 2 ? QAbstractAnimation::Backward : QAbstractAnimation::Forward);
    });
}

void StatusBadge::setHealth(ClipHealth health, const QString &label)
{
    if (health == m_health && label == m_label)
        return;
    m_health = health;
    m_label = label;
    updateGeometry();
    updatePulse();
    update();
}

QSize StatusBadge::sizeHint() const
{
    return StatusBadgeLook::size(m_label, font());
}

void StatusBadge::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    StatusBadgeLook::paint(&p, QRectF(rect()), m_health, m_label, font(),
                           StatusBadgeLook::pulses(m_health) ? m_glowValue : 0.0);
}

void StatusBadge::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    updatePulse();
}

void StatusBadge::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    updatePulse();
}

void StatusBadge::updatePulse()
{
    if (isVisible() && StatusBadgeLook::pulses(m_health)) {
        if (m_glow.state() != QAbstractAnimation::Running)
            m_glow.start();
    } else {
        m_glow.stop();
        m_glowValue = 0;
    }
}
