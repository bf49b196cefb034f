#include "convertparts.h"

#include "ui/apptheme.h"
#include "ui/symbols.h"

#include <QPainter>

#include <algorithm>

namespace {
constexpr int kChipHeight = 44;
constexpr qreal kChipRadius = 14;
constexpr int kChipPadding = 14;
constexpr int kCheckPx = 16;
constexpr int kHelpPt = 11;
constexpr int kHelpGap = 2;

QFont helpFont()
{
    return AppTheme::font(kHelpPt);
}
} // namespace

FormatChip::FormatChip(const QString &text, QWidget *parent) : QAbstractButton(parent)
{
    setText(text);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setFont(AppTheme::font(13, QFont::DemiBold, AppTheme::Face::rounded));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void FormatChip::setHelp(const QString &help)
{
    m_help = help;
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(!help.isEmpty());
    setSizePolicy(policy);
    updateGeometry();
    update();
}

void FormatChip::setSelected(bool selected)
{
    if (m_selected == selected)
        return;
    m_selected = selected;
    update();
}

QSize FormatChip::sizeHint() const
{
    const QFontMetrics fm(font());
    const int width = 2 * kChipPadding + fm.horizontalAdvance(text()) + kCheckPx + 10;
    const int oneLine = m_help.isEmpty() ? 0 : QFontMetrics(helpFont()).height() + kHelpGap;
    return {width, kChipHeight + oneLine};
}

int FormatChip::helpHeight(int labelWidth) const
{
    if (m_help.isEmpty())
        return 0;
    const QRect bounds =
        QFontMetrics(helpFont())
            .boundingRect(QRect(0, 0, std::max(labelWidth, 1), 10'000), Qt::TextWordWrap, m_help);
    return bounds.height() + kHelpGap;
}

int FormatChip::heightForWidth(int width) const
{
    return kChipHeight + helpHeight(width - 2 * kChipPadding - kCheckPx - 10);
}

void FormatChip::enterEvent(QEnterEvent *event)
{
    m_hover = true;
    update();
    QAbstractButton::enterEvent(event);
}

void FormatChip::leaveEvent(QEvent *event)
{
    m_hover = false;
    update();
    QAbstractButton::leaveEvent(event);
}

void FormatChip::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF face = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    const qreal lift = m_hover && isEnabled() ? 0.03 : 0.0;
    if (!isEnabled())
        p.setOpacity(0.45);
    if (m_selected) {
        p.setBrush(AppTheme::withAlpha(AppTheme::accentGreen, 0.1 + lift));
        p.setPen(QPen(AppTheme::accentGreen, 1));
    } else {
        p.setBrush(AppTheme::white(0.04 + lift));
        p.setPen(Qt::NoPen);
    }
    p.drawRoundedRect(face, kChipRadius, kChipRadius);

    const QRectF check(face.right() - kChipPadding - kCheckPx, face.center().y() - kCheckPx / 2.0,
                       kCheckPx, kCheckPx);
    if (m_selected)
        Symbols::paint(&p, QStringLiteral("checkmark.circle.fill"), AppTheme::accentGreen, check);
    const QRectF label(face.left() + kChipPadding, face.top(),
                       check.left() - 10 - face.left() - kChipPadding, face.height());
    const QFontMetrics fm(font());
    // Name and help sit together in the middle of the chip.
    const int help = helpHeight(static_cast<int>(label.width()));
    const qreal block = fm.height() + help;
    const QRectF name(label.left(), face.center().y() - block / 2, label.width(), fm.height());
    p.setFont(font());
    p.setPen(AppTheme::white(m_selected ? 0.95 : 0.8));
    p.drawText(name, Qt::AlignLeft | Qt::AlignVCenter,
               fm.elidedText(text(), Qt::ElideRight, static_cast<int>(label.width())));
    if (m_help.isEmpty())
        return;
    p.setFont(helpFont());
    p.setPen(AppTheme::white(0.45));
    p.drawText(QRectF(label.left(), name.bottom() + kHelpGap, label.width(), help - kHelpGap),
               Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, m_help);
}

ConvertProgressBar::ConvertProgressBar(QWidget *parent) : QProgressBar(parent)
{
    setRange(0, kSteps);
    setValue(0);
    setTextVisible(false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ConvertProgressBar::setFraction(double fraction)
{
    setValue(static_cast<int>(std::lround(std::clamp(fraction, 0.0, 1.0) * kSteps)));
}

void ConvertProgressBar::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    const qreal h = 6;
    const QRectF track(0, (height() - h) / 2, width(), h);
    p.setBrush(AppTheme::white(0.06));
    p.drawRoundedRect(track, h / 2, h / 2);
    const double f = fraction();
    if (f <= 0)
        return;
    // Never thinner than the capsule's own height, so the first percent is visible.
    const QRectF fill(track.left(), track.top(), std::max(h, track.width() * f), h);
    p.setBrush(AppTheme::accentGreen);
    p.drawRoundedRect(fill, h / 2, h / 2);
}
