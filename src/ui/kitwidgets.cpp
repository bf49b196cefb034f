#include "kitwidgets.h"

#include "apptheme.h"
#include "kitbuttons.h"
#include "symbols.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

SectionHeader::SectionHeader(const QString &symbol, const QString &title, const QString &tooltip,
                             QWidget *parent)
    : QWidget(parent), m_symbol(symbol), m_title(title)
{
    setToolTip(tooltip);
    setFont(AppTheme::font(13, QFont::DemiBold, AppTheme::Face::rounded));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize SectionHeader::sizeHint() const
{
    return {24 + 8 + QFontMetrics(font()).horizontalAdvance(m_title), 24};
}

void SectionHeader::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF badge(0, (height() - 24) / 2.0, 24, 24);
    p.setPen(Qt::NoPen);
    p.setBrush(AppTheme::withAlpha(AppTheme::accentGreen, 0.14));
    p.drawRoundedRect(badge, 7, 7);
    Symbols::paint(&p, m_symbol, AppTheme::accentGreen, badge.adjusted(6.5, 6.5, -6.5, -6.5));
    // Shrinks to fit rather than eliding: titles are short, but some languages run long.
    QFont f = font();
    const int room = width() - 32;
    while (f.pixelSize() > 9 && QFontMetrics(f).horizontalAdvance(m_title) > room)
        f.setPixelSize(f.pixelSize() - 1);
    p.setFont(f);
    p.setPen(AppTheme::white(0.85));
    p.drawText(QRectF(32, 0, room, height()), Qt::AlignVCenter | Qt::AlignLeft, m_title);
}

HintBanner::HintBanner(const QString &text, const QString &dismissTitle,
                       std::function<void()> onDismiss, QWidget *parent)
    : QWidget(parent), m_onDismiss(std::move(onDismiss))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(10, 10, 10, 10);
    row->setSpacing(8);
    auto *bulb = new QLabel;
    bulb->setPixmap(Symbols::pixmap(QStringLiteral("lightbulb.max.fill"), AppTheme::accentGreen, 14,
                                    devicePixelRatioF()));
    bulb->setAlignment(Qt::AlignTop);
    auto *label = new QLabel(text);
    label->setWordWrap(true);
    label->setFont(AppTheme::font(11));
    QPalette pal = label->palette();
    pal.setColor(QPalette::WindowText, AppTheme::white(0.72));
    label->setPalette(pal);
    auto *close = new RoundIconButton(QStringLiteral("xmark"), 20, 8);
    close->setColors(AppTheme::white(0.08), AppTheme::white(0.55));
    close->setToolTip(dismissTitle);
    row->addWidget(bulb, 0, Qt::AlignTop);
    row->addWidget(label, 1);
    row->addWidget(close, 0, Qt::AlignTop);
    connect(close, &QAbstractButton::clicked, this, &HintBanner::dismiss);

    m_leave.setDuration(AppTheme::springDurationMs(AppTheme::Spring::soft) / 2);
    m_leave.setStartValue(1.0);
    m_leave.setEndValue(0.0);
    connect(&m_leave, &QVariantAnimation::valueChanged, this, [this](const QVariant &v) {
        m_opacity = v.toReal();
        setMaximumHeight(static_cast<int>(sizeHint().height() * m_opacity));
        update();
    });
    connect(&m_leave, &QVariantAnimation::finished, this, [this] {
        if (m_onDismiss)
            m_onDismiss();
    });
}

void HintBanner::dismiss()
{
    if (m_leave.state() != QAbstractAnimation::Running)
        m_leave.start();
}

void HintBanner::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setOpacity(m_opacity);
    p.setBrush(AppTheme::withAlpha(AppTheme::accentGreen, 0.08));
    p.setPen(QPen(AppTheme::withAlpha(AppTheme::accentGreen, 0.22), 1));
    p.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 12, 12);
}

BentoMetric::BentoMetric(const QString &title, const QString &value, const QColor &accent,
                         const QString &symbol, QWidget *parent)
    : QWidget(parent), m_title(title), m_value(value), m_accent(accent), m_symbol(symbol)
{
    setMinimumHeight(68);
}

void BentoMetric::setValue(const QString &value, const QColor &accent)
{
    m_value = value;
    m_accent = accent;
    update();
}

void BentoMetric::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(AppTheme::white(0.08), 1));
    p.setBrush(AppTheme::white(0.045));
    p.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 12, 12);
    const QRectF inner = QRectF(rect()).adjusted(8, 8, -8, -8);
    qreal x = inner.left();
    if (!m_symbol.isEmpty()) {
        Symbols::paint(&p, m_symbol, AppTheme::white(0.7), QRectF(x, inner.top() + 1, 11, 11));
        x += 15;
    }
    QFont title = AppTheme::font(10, QFont::Bold, AppTheme::Face::rounded);
    title.setLetterSpacing(QFont::AbsoluteSpacing, 0.38);
    p.setFont(title);
    p.setPen(AppTheme::white(0.7));
    p.drawText(QRectF(x, inner.top(), inner.right() - x, 14), Qt::AlignLeft | Qt::AlignVCenter,
               QFontMetrics(title).elidedText(m_title, Qt::ElideRight,
                                              static_cast<int>(inner.right() - x)));
    const QFont value = AppTheme::font(16, QFont::Bold, AppTheme::Face::rounded);
    p.setFont(value);
    p.setPen(m_accent);
    p.drawText(
        inner.adjusted(0, 18, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
        QFontMetrics(value).elidedText(m_value, Qt::ElideRight, static_cast<int>(inner.width())));
}

ToggleSwitch::ToggleSwitch(QWidget *parent) : QAbstractButton(parent)
{
    setCheckable(true);
    setCursor(Qt::PointingHandCursor);
    setFixedSize(sizeHint());
    m_slide.setEasingCurve(AppTheme::springCurve(AppTheme::Spring::snappy));
    m_slide.setDuration(AppTheme::springDurationMs(AppTheme::Spring::snappy));
    connect(&m_slide, &QVariantAnimation::valueChanged, this, [this](const QVariant &v) {
        m_position = v.toReal();
        update();
    });
    connect(this, &QAbstractButton::toggled, this, [this](bool on) {
        if (!isVisible()) { // nothing to watch: jump
            m_position = on ? 1 : 0;
            return;
        }
        m_slide.stop();
        m_slide.setStartValue(m_position);
        m_slide.setEndValue(on ? 1.0 : 0.0);
        m_slide.start();
    });
}

void ToggleSwitch::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setOpacity(isEnabled() ? 1 : 0.4);
    const QRectF track = QRectF(rect()).adjusted(1, 2, -1, -2);
    const QColor off = AppTheme::white(0.16);
    const QColor on = AppTheme::accentGreen;
    const qreal t = std::clamp(m_position, 0.0, 1.0);
    const QColor mixed = QColor::fromRgbF(off.redF() + (on.redF() - off.redF()) * t,
                                          off.greenF() + (on.greenF() - off.greenF()) * t,
                                          off.blueF() + (on.blueF() - off.blueF()) * t,
                                          off.alphaF() + (on.alphaF() - off.alphaF()) * t);
    p.setPen(Qt::NoPen);
    p.setBrush(mixed);
    p.drawRoundedRect(track, track.height() / 2, track.height() / 2);
    const qreal d = track.height() - 4;
    const qreal x = track.left() + 2 + (track.width() - d - 4) * m_position;
    p.setBrush(Qt::white);
    p.drawEllipse(QRectF(x, track.top() + 2, d, d));
}

BentoToggleRow::BentoToggleRow(const QString &title, const QString &subtitle, bool on,
                               QWidget *parent)
    : QWidget(parent), m_switch(new ToggleSwitch)
{
    setMinimumHeight(68);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(12, 8, 12, 8);
    auto *texts = new QVBoxLayout;
    texts->setSpacing(2);
    auto *titleLabel = new QLabel(title);
    titleLabel->setFont(AppTheme::font(13, QFont::DemiBold, AppTheme::Face::rounded));
    QPalette pal = titleLabel->palette();
    pal.setColor(QPalette::WindowText, AppTheme::white(0.92));
    titleLabel->setPalette(pal);
    texts->addWidget(titleLabel);
    if (!subtitle.isEmpty()) {
        auto *sub = new QLabel(subtitle);
        sub->setWordWrap(true);
        sub->setFont(AppTheme::font(11));
        pal.setColor(QPalette::WindowText, AppTheme::white(0.4));
        sub->setPalette(pal);
        texts->addWidget(sub);
    }
    row->addLayout(texts, 1);
    row->addWidget(m_switch, 0, Qt::AlignVCenter);
    m_switch->setChecked(on);
    connect(m_switch, &QAbstractButton::toggled, this, &BentoToggleRow::toggled);
}

EqualTile::EqualTile(int minHeight, QWidget *parent) : QWidget(parent)
{
    setMinimumHeight(minHeight);
    setContentsMargins(12, 10, 12, 10);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void EqualTile::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(AppTheme::white(0.08), 1));
    p.setBrush(AppTheme::white(0.045));
    p.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 16, 16);
}

Pill::Pill(const QColor &color, QWidget *parent) : QWidget(parent), m_color(color)
{
    setFont(AppTheme::font(11, QFont::Medium));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Pill::setText(const QString &text)
{
    m_text = text;
    updateGeometry();
    update();
}

QSize Pill::sizeHint() const
{
    const QFontMetrics fm(font());
    return {fm.horizontalAdvance(m_text) + 20, fm.height() + 12};
}

void Pill::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF r = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    p.setBrush(AppTheme::withAlpha(m_color, 0.12));
    p.setPen(QPen(AppTheme::withAlpha(m_color, 0.3), 1));
    p.drawRoundedRect(r, r.height() / 2, r.height() / 2);
    p.setPen(m_color);
    p.drawText(r, Qt::AlignCenter, m_text);
}
