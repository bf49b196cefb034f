#include "kitbuttons.h"

#include "apptheme.h"
#include "symbols.h"

#include <QEnterEvent>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>

namespace {
constexpr int kHeight = 42;
constexpr int kCompactHeight = 32;
constexpr int kPaddingX = 14;
constexpr int kIconPx = 14;
constexpr qreal kPressedScale = 0.985;
} // namespace

KitButton::KitButton(Kind kind, const QString &symbol, const QString &text, QWidget *parent)
    : QAbstractButton(parent), m_kind(kind), m_symbol(symbol)
{
    setText(text);
    setCursor(Qt::PointingHandCursor);
    setFont(AppTheme::font(12, QFont::DemiBold, AppTheme::Face::rounded));
    setAttribute(Qt::WA_Hover);
    m_press.setEasingCurve(AppTheme::springCurve(AppTheme::Spring::snappy));
    m_press.setDuration(AppTheme::springDurationMs(AppTheme::Spring::snappy));
    connect(&m_press, &QVariantAnimation::valueChanged, this, [this](const QVariant &v) {
        m_scale = v.toReal();
        update();
    });
    connect(this, &QAbstractButton::pressed, this, [this] { pressTo(kPressedScale); });
    connect(this, &QAbstractButton::released, this, [this] { pressTo(1.0); });
}

void KitButton::setSymbol(const QString &symbol)
{
    m_symbol = symbol;
    update();
}

void KitButton::pressTo(qreal scale)
{
    m_press.stop();
    m_press.setStartValue(m_scale);
    m_press.setEndValue(scale);
    m_press.start();
}

QSize KitButton::sizeHint() const
{
    // The advance rounded up: a button given its hint never elides its label by a fraction.
    const int textWidth = qCeil(QFontMetricsF(font()).horizontalAdvance(text()));
    const int iconWidth = m_symbol.isEmpty() ? 0 : kIconPx + 8;
    const int height = m_kind == Kind::ghostCompact ? kCompactHeight : kHeight;
    return {2 * kPaddingX + iconWidth + textWidth, height};
}

void KitButton::enterEvent(QEnterEvent *event)
{
    m_hover = true;
    update();
    QAbstractButton::enterEvent(event);
}

void KitButton::leaveEvent(QEvent *event)
{
    m_hover = false;
    update();
    QAbstractButton::leaveEvent(event);
}

void KitButton::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QPointF centre = QRectF(rect()).center();
    p.translate(centre);
    p.scale(m_scale, m_scale);
    p.translate(-centre);

    const QRectF face = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -2.5);
    const bool enabled = isEnabled();
    QColor textColor;
    if (m_kind == Kind::primary) {
        if (enabled) { // the accent's own glow under the face
            for (int i = 3; i >= 1; --i) {
                p.setPen(Qt::NoPen);
                p.setBrush(AppTheme::withAlpha(AppTheme::accentGreen, 0.4 / 3 / i));
                p.drawRoundedRect(face.adjusted(-i * 0.6, -i * 0.3, i * 0.6, i), 14 + i, 14 + i);
            }
        }
        QColor fill = AppTheme::withAlpha(AppTheme::accentGreen, enabled ? 1.0 : 0.35);
        if (enabled && m_hover)
            fill = fill.lighter(106);
        p.setPen(Qt::NoPen);
        p.setBrush(fill);
        p.drawRoundedRect(face, 14, 14);
        textColor = QColor::fromRgbF(0, 0, 0, enabled ? 0.92f : 0.5f);
    } else {
        p.setBrush(AppTheme::white(m_hover && enabled ? 0.09 : 0.05));
        p.setPen(QPen(AppTheme::stroke, 1));
        p.drawRoundedRect(face.adjusted(0.5, 0.5, -0.5, -0.5), 14, 14);
        textColor = AppTheme::white(enabled ? 0.9 : 0.35);
    }

    // A label wider than its room (a layout that squeezed the button) ends in "…" rather than
    // running over the rounded edge.
    const QFontMetrics fm(font());
    const int icon = m_symbol.isEmpty() ? 0 : kIconPx + (text().isEmpty() ? 0 : 8);
    const int room = std::max(0, width() - 2 * kPaddingX - icon);
    const QString label = fm.elidedText(text(), Qt::ElideRight, room);
    const int textWidth = fm.horizontalAdvance(label);
    qreal x = face.center().x() - (textWidth + icon) / 2.0;
    if (!m_symbol.isEmpty()) {
        Symbols::paint(&p, m_symbol, textColor,
                       QRectF(x, face.center().y() - kIconPx / 2.0, kIconPx, kIconPx));
        x += icon;
    }
    p.setPen(textColor);
    p.setFont(font());
    p.drawText(QRectF(x, face.top(), textWidth + 2, face.height()), Qt::AlignVCenter, label);
}

RoundIconButton::RoundIconButton(const QString &symbol, int diameter, int symbolPx, QWidget *parent)
    : QAbstractButton(parent)
    , m_symbol(symbol)
    , m_diameter(diameter)
    , m_symbolPx(symbolPx)
    , m_fill(AppTheme::white(0.08))
    , m_symbolColor(AppTheme::white(0.7))
{
    setFixedSize(diameter, diameter);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
}

void RoundIconButton::setSymbol(const QString &symbol)
{
    m_symbol = symbol;
    update();
}

void RoundIconButton::setColors(const QColor &fill, const QColor &symbolColor,
                                const QColor &outline)
{
    m_fill = fill;
    m_symbolColor = symbolColor;
    m_outline = outline;
    update();
}

void RoundIconButton::enterEvent(QEnterEvent *event)
{
    m_hover = true;
    update();
    QAbstractButton::enterEvent(event);
}

void RoundIconButton::leaveEvent(QEvent *event)
{
    m_hover = false;
    update();
    QAbstractButton::leaveEvent(event);
}

void RoundIconButton::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setOpacity(isEnabled() ? 1.0 : 0.4);
    const QRectF r = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QColor fill = m_fill;
    if (m_hover && isEnabled())
        fill = fill.alpha() == 255 ? fill.lighter(110)
                                   : AppTheme::withAlpha(fill, std::min(1.0, fill.alphaF() * 1.8));
    p.setBrush(fill);
    p.setPen(m_outline.isValid() ? QPen(m_outline, 1) : Qt::NoPen);
    p.drawEllipse(r);
    const qreal s = m_symbolPx;
    Symbols::paint(&p, m_symbol, m_symbolColor,
                   QRectF(r.center().x() - s / 2, r.center().y() - s / 2, s, s));
}
