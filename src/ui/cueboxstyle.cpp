#include "cueboxstyle.h"

#include "apptheme.h"

#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QStyleFactory>
#include <QStyleOption>

CueboxStyle::CueboxStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
{}

QPalette CueboxStyle::darkPalette()
{
    QPalette p;
    const QColor text = AppTheme::white(0.9);
    p.setColor(QPalette::Window, AppTheme::ink);
    p.setColor(QPalette::WindowText, text);
    p.setColor(QPalette::Base, AppTheme::panel);
    p.setColor(QPalette::AlternateBase, AppTheme::panelElevated);
    p.setColor(QPalette::ToolTipBase, AppTheme::panelElevated);
    p.setColor(QPalette::ToolTipText, text);
    p.setColor(QPalette::PlaceholderText, AppTheme::white(0.35));
    p.setColor(QPalette::Text, text);
    p.setColor(QPalette::Button, AppTheme::panelElevated);
    p.setColor(QPalette::ButtonText, text);
    p.setColor(QPalette::BrightText, AppTheme::accentGreen);
    p.setColor(QPalette::Highlight, AppTheme::withAlpha(AppTheme::accentGreen, 0.22));
    p.setColor(QPalette::HighlightedText, Qt::white);
    p.setColor(QPalette::Link, AppTheme::accentGreen);
    p.setColor(QPalette::Light, QColor(70, 70, 74));
    p.setColor(QPalette::Midlight, QColor(52, 52, 56));
    p.setColor(QPalette::Mid, QColor(40, 40, 44));
    p.setColor(QPalette::Dark, QColor(20, 20, 22));
    p.setColor(QPalette::Shadow, Qt::black);
    for (auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, AppTheme::white(0.3));
    return p;
}

void CueboxStyle::polish(QPalette &palette)
{
    palette = darkPalette();
}

void CueboxStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (qobject_cast<QLineEdit *>(widget))
        widget->setAttribute(Qt::WA_Hover);
}

void CueboxStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option,
                                QPainter *painter, const QWidget *widget) const
{
    switch (element) {
    case PE_PanelLineEdit: {
        // Soft field: white at 0.06 on a 14-radius rounded rectangle with the theme's stroke.
        // Frameless fields (the table's inline editor) get only the fill.
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
        const bool framed = frame && frame->lineWidth > 0;
        const QRectF r = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
        const qreal radius = framed ? std::min(14.0, r.height() / 2) : 6.0;
        painter->setBrush(AppTheme::white(0.06));
        const bool focused = option->state & State_HasFocus;
        painter->setPen(framed || focused
                            ? QPen(focused ? AppTheme::withAlpha(AppTheme::accentGreen, 0.55)
                                           : AppTheme::stroke,
                                   1)
                            : Qt::NoPen);
        painter->drawRoundedRect(r, radius, radius);
        painter->restore();
        return;
    }
    case PE_FrameLineEdit:
        return; // drawn with the panel
    case PE_PanelTipLabel: {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(AppTheme::white(0.14), 1));
        painter->setBrush(AppTheme::panelElevated);
        painter->drawRoundedRect(QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);
        painter->restore();
        return;
    }
    case PE_FrameFocusRect:
        return; // selection and the accent outline already say where focus is
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void CueboxStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                     QPainter *painter, const QWidget *widget) const
{
    if (control == CC_ScrollBar) {
        drawScrollBar(option, painter, widget);
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

void CueboxStyle::drawScrollBar(const QStyleOptionComplex *option, QPainter *painter,
                                const QWidget *widget) const
{
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (!bar)
        return;
    const QRect handle = subControlRect(CC_ScrollBar, option, SC_ScrollBarSlider, widget);
    if (handle.isEmpty())
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const bool hot =
        (option->state & State_MouseOver) || (option->activeSubControls & SC_ScrollBarSlider);
    const QRectF r = bar->orientation == Qt::Vertical ? QRectF(handle).adjusted(3, 2, -3, -2)
                                                      : QRectF(handle).adjusted(2, 3, -2, -3);
    const qreal radius = std::min(r.width(), r.height()) / 2;
    painter->setPen(Qt::NoPen);
    painter->setBrush(AppTheme::white(hot ? 0.32 : 0.18));
    painter->drawRoundedRect(r, radius, radius);
    painter->restore();
}

int CueboxStyle::pixelMetric(PixelMetric metric, const QStyleOption *option,
                             const QWidget *widget) const
{
    switch (metric) {
    case PM_ScrollBarExtent:
        return 11;
    case PM_ScrollBarSliderMin:
        return 36;
    case PM_ToolBarIconSize:
        return 18;
    case PM_SmallIconSize:
        return 16;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int CueboxStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                           QStyleHintReturn *returnData) const
{
    switch (hint) {
    case SH_ScrollBar_Transient:
        return 0;
    case SH_ScrollBar_ContextMenu:
        return 0;
    case SH_ToolTip_WakeUpDelay:
        return 500;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}
