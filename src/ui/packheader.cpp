#include "packheader.h"

#include "apptheme.h"
#include "glasscard.h"
#include "kitbuttons.h"
#include "kitwidgets.h"
#include "motion.h"
#include "output/packreport.h"
#include "segmentbar.h"
#include "session/packviewmodel.h"
#include "statusbadge.h"

#include <QHBoxLayout>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

namespace {

// Bold, widely spaced capitals filled with the green gradient.
class Kicker final : public QWidget
{
public:
    explicit Kicker(const QString &text, QWidget *parent = nullptr) : QWidget(parent), m_text(text)
    {
        m_font = AppTheme::font(10, QFont::Bold, AppTheme::Face::rounded);
        m_font.setLetterSpacing(QFont::AbsoluteSpacing, 1.8);
        setFixedHeight(QFontMetrics(m_font).height());
        setMinimumWidth(QFontMetrics(m_font).horizontalAdvance(m_text) + 4);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        QPainterPath path;
        path.addText(0, QFontMetrics(m_font).ascent(), m_font, m_text);
        QLinearGradient g(0, 0, path.boundingRect().right(), 0);
        g.setColorAt(0, AppTheme::accentGreen);
        g.setColorAt(1, AppTheme::accentGreenDim);
        p.fillPath(path, g);
    }

private:
    QString m_text;
    QFont m_font;
};

} // namespace

RollingText::RollingText(QWidget *parent) : QWidget(parent)
{
    setFont(AppTheme::font(18, QFont::DemiBold));
    m_roll.setStartValue(0.0);
    m_roll.setEndValue(1.0);
    m_roll.setEasingCurve(AppTheme::springCurve(AppTheme::Spring::snappy));
    m_roll.setDuration(AppTheme::springDurationMs(AppTheme::Spring::snappy));
    connect(&m_roll, &QVariantAnimation::valueChanged, this, [this](const QVariant &v) {
        m_progress = v.toReal();
        update();
    });
}

void RollingText::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_previous = m_text;
    m_text = text;
    updateGeometry();
    if (isVisible() && !m_previous.isEmpty() && !Motion::isInstant()) {
        m_progress = 0;
        m_roll.stop();
        m_roll.start();
    } else {
        m_progress = 1;
    }
    update();
}

QSize RollingText::sizeHint() const
{
    const QFontMetrics fm(font());
    return {fm.horizontalAdvance(m_text) + 2, fm.height() + 2};
}

void RollingText::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.setFont(font());
    const QFontMetrics fm(font());
    const int baseline = fm.ascent() + 1;
    const int h = height();
    p.setClipRect(rect());
    if (m_progress >= 1 || m_previous.size() != m_text.size()) {
        // Lengths differ (9 → 10): the whole text rises into place.
        const qreal t = std::min<qreal>(m_progress, 1.0);
        if (t < 1 && !m_previous.isEmpty()) {
            p.setPen(AppTheme::white(1 - t));
            p.drawText(QPointF(0, baseline - t * h * 0.6), m_previous);
        }
        p.setPen(AppTheme::white(std::clamp<qreal>(t, 0, 1)));
        p.drawText(QPointF(0, baseline + (1 - t) * h * 0.6), m_text);
        return;
    }
    // Same length: only the characters that changed roll.
    qreal x = 0;
    for (qsizetype i = 0; i < m_text.size(); ++i) {
        const QString now = m_text.mid(i, 1);
        const QString before = m_previous.mid(i, 1);
        const qreal w = fm.horizontalAdvance(now);
        if (now == before) {
            p.setPen(Qt::white);
            p.drawText(QPointF(x, baseline), now);
        } else {
            const qreal t = m_progress;
            p.setPen(AppTheme::white(std::clamp<qreal>(1 - t, 0, 1)));
            p.drawText(QPointF(x, baseline - t * h * 0.7), before);
            p.setPen(AppTheme::white(std::clamp<qreal>(t, 0, 1)));
            p.drawText(QPointF(x, baseline + (1 - t) * h * 0.7), now);
        }
        x += w;
    }
}

PackHeader::PackHeader(const UiContext &context, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_title(new RollingText)
    , m_badge(new StatusBadge)
    , m_bar(new SegmentBar(120, 7))
    , m_warn(new Pill(AppTheme::warn))
    , m_fail(new Pill(AppTheme::fail))
    , m_clear(new KitButton(KitButton::Kind::ghostCompact, QStringLiteral("trash"), QString()))
{
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto *card = new GlassCard(16, GlassCard::Elevation::flat);
    outer->addWidget(card);
    auto *row = new QHBoxLayout(card);
    const QMargins shadow = card->contentsMargins();
    row->setContentsMargins(shadow + QMargins(14, 12, 14, 12));
    row->setSpacing(10);
    auto *column = new QVBoxLayout;
    column->setSpacing(4);
    column->addWidget(new Kicker(m_context.text(u"header.kicker")));
    auto *titleRow = new QHBoxLayout;
    titleRow->setSpacing(10);
    titleRow->addWidget(m_title);
    titleRow->addWidget(m_badge, 0, Qt::AlignVCenter);
    titleRow->addStretch(1);
    column->addLayout(titleRow);
    row->addLayout(column);
    row->addStretch(1);
    row->addWidget(m_bar, 0, Qt::AlignVCenter);
    row->addWidget(m_warn, 0, Qt::AlignVCenter);
    row->addWidget(m_fail, 0, Qt::AlignVCenter);
    m_clear->setToolTip(m_context.text(u"toolbar.clear.help"));
    row->addWidget(m_clear, 0, Qt::AlignVCenter);

    PackViewModel &vm = m_context.viewModel;
    connect(m_clear, &QAbstractButton::clicked, &vm, [&vm] { vm.clear(); });
    connect(&vm, &PackViewModel::clipsChanged, this, &PackHeader::refresh);
    refresh();
}

ClipHealth PackHeader::summaryHealth(const QList<MediaClip> &clips)
{
    const PackReport report = PackReport::from(clips);
    if (report.failCount > 0)
        return ClipHealth::fail;
    if (report.warnCount > 0)
        return ClipHealth::warn;
    if (report.okCount > 0)
        return ClipHealth::ok;
    return ClipHealth::warn;
}

void PackHeader::refresh()
{
    const QList<MediaClip> &clips = m_context.viewModel.clips();
    const L10n strings = m_context.strings();
    const PackReport report = PackReport::from(clips);
    m_title->setText(strings.format(u"header.clips", {qint64(clips.size())}));
    const ClipHealth summary = summaryHealth(clips);
    m_badge->setHealth(summary, StatusBadgeLook::label(summary, strings));
    m_bar->setSegments({{double(report.okCount), AppTheme::ok},
                        {double(report.warnCount), AppTheme::warn},
                        {double(report.failCount), AppTheme::fail}});
    m_warn->setText(strings.format(u"header.warn", {report.warnCount}));
    m_warn->setVisible(report.warnCount > 0);
    m_fail->setText(strings.format(u"header.fail", {report.failCount}));
    m_fail->setVisible(report.failCount > 0);
}
