#include "selectchip.h"

#include "ui/apptheme.h"
#include "ui/symbols.h"

#include <QPainter>
#include <QtMath>

namespace {
constexpr int kRowPadding = 10;
constexpr int kSymbolPx = 16;
constexpr int kHelpPx = 11;
} // namespace

SelectChip::SelectChip(Look look, const QString &text, QWidget *parent)
    : QAbstractButton(parent), m_look(look), m_accent(AppTheme::accentGreen)
{
    setText(text);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setFont(look == Look::chip ? AppTheme::font(12, QFont::DemiBold, AppTheme::Face::rounded)
                               : AppTheme::font(13, QFont::DemiBold, AppTheme::Face::rounded));
    setSizePolicy(look == Look::chip ? QSizePolicy::Fixed : QSizePolicy::Expanding,
                  QSizePolicy::Fixed);
}

void SelectChip::setSymbol(const QString &symbol)
{
    m_symbol = symbol;
    updateGeometry();
    update();
}

void SelectChip::setHelpText(const QString &help)
{
    m_help = help;
    updateGeometry();
    update();
}

void SelectChip::setSelected(bool selected)
{
    if (m_selected == selected)
        return;
    m_selected = selected;
    update();
}

void SelectChip::setAccent(const QColor &accent)
{
    m_accent = accent;
    update();
}

void SelectChip::setTextFont(const QFont &font)
{
    setFont(font);
    updateGeometry();
}

int SelectChip::textLeft() const
{
    if (m_look == Look::chip)
        return 12;
    return m_symbol.isEmpty() ? kRowPadding + 2 : kRowPadding + kSymbolPx + 10;
}

QSize SelectChip::sizeHint() const
{
    const QFontMetrics fm(font());
    // The advance rounded up: a chip given its hint never elides its label by a fraction.
    const int textWidth = qCeil(QFontMetricsF(font()).horizontalAdvance(text()));
    if (m_look == Look::chip)
        return {textWidth + 24, std::max(30, fm.height() + 14)};
    const int width = textLeft() + textWidth + kRowPadding;
    return {width, heightForWidth(std::max(width, 200))};
}

QSize SelectChip::minimumSizeHint() const
{
    if (m_look == Look::chip)
        return sizeHint();
    return {textLeft() + 40, heightForWidth(200)};
}

int SelectChip::heightForWidth(int width) const
{
    const QFontMetrics fm(font());
    if (m_look == Look::chip)
        return std::max(30, fm.height() + 14);
    int height = 2 * kRowPadding + fm.height();
    if (m_help.isEmpty())
        return std::max(height, 38);
    const QFontMetrics help(AppTheme::font(kHelpPx));
    const int room = std::max(40, width - textLeft() - kRowPadding);
    height += 2 + help.boundingRect(QRect(0, 0, room, 1000), Qt::TextWordWrap, m_help).height();
    return height;
}

void SelectChip::enterEvent(QEnterEvent *event)
{
    m_hover = true;
    update();
    QAbstractButton::enterEvent(event);
}

void SelectChip::leaveEvent(QEvent *event)
{
    m_hover = false;
    update();
    QAbstractButton::leaveEvent(event);
}

void SelectChip::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF face = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    const qreal radius = m_look == Look::chip ? face.height() / 2 : (m_look == Look::row ? 12 : 14);
    const qreal hoverLift = m_hover && isEnabled() ? 0.03 : 0.0;

    QColor fill;
    QColor outline = Qt::transparent;
    QColor textColor;
    if (m_look == Look::rail) {
        fill = m_selected ? AppTheme::white(0.06) : AppTheme::white(hoverLift);
        if (m_selected)
            outline = AppTheme::white(0.28);
        textColor = AppTheme::white(m_selected ? 0.92 : 0.6);
    } else if (m_selected) {
        fill = AppTheme::withAlpha(m_accent, 0.1 + hoverLift);
        outline = m_accent;
        textColor = m_look == Look::chip ? m_accent : AppTheme::white(0.92);
    } else {
        fill = AppTheme::white(0.04 + hoverLift);
        outline = m_look == Look::chip ? AppTheme::stroke : QColor(Qt::transparent);
        textColor = AppTheme::white(m_look == Look::chip ? 0.45 : 0.85);
    }
    if (!isEnabled())
        p.setOpacity(0.45);
    p.setBrush(fill);
    p.setPen(outline.alpha() ? QPen(outline, 1) : Qt::NoPen);
    p.drawRoundedRect(face, radius, radius);

    const QFontMetrics fm(font());
    if (m_look == Look::chip) {
        p.setFont(font());
        p.setPen(textColor);
        p.drawText(face, Qt::AlignCenter, text());
        return;
    }
    const int left = textLeft();
    const int top = kRowPadding;
    if (!m_symbol.isEmpty()) {
        const QColor symbolColor = m_selected ? m_accent : AppTheme::white(0.6);
        const qreal symbolTop = m_help.isEmpty() ? (height() - kSymbolPx) / 2.0 : top + 1.0;
        Symbols::paint(&p, m_symbol, symbolColor,
                       QRectF(kRowPadding, symbolTop, kSymbolPx, kSymbolPx));
    }
    const int room = width() - left - kRowPadding;
    p.setFont(font());
    p.setPen(textColor);
    if (m_help.isEmpty()) {
        p.drawText(QRectF(left, 0, room, height()), Qt::AlignVCenter | Qt::AlignLeft,
                   fm.elidedText(text(), Qt::ElideRight, room));
        return;
    }
    p.drawText(QRectF(left, top, room, fm.height()), Qt::AlignVCenter | Qt::AlignLeft,
               fm.elidedText(text(), Qt::ElideRight, room));
    p.setFont(AppTheme::font(kHelpPx));
    p.setPen(AppTheme::white(0.45));
    p.drawText(QRectF(left, top + fm.height() + 2, room, height()),
               Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop, m_help);
}
