#pragma once

#include <QProxyStyle>

// The dark look on top of Fusion: the theme's palette, soft text fields, thin capsule scroll
// bars and rounded menus. Widgets of the style kit paint themselves; this covers the stock
// widgets (menus, tooltips, line edits, scroll bars, check boxes) so they match.
class CueboxStyle final : public QProxyStyle
{
    Q_OBJECT
public:
    CueboxStyle();

    void polish(QPalette &palette) override;
    void polish(QWidget *widget) override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                            QPainter *painter, const QWidget *widget = nullptr) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption *option = nullptr,
                    const QWidget *widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr,
                  const QWidget *widget = nullptr,
                  QStyleHintReturn *returnData = nullptr) const override;

    static QPalette darkPalette();

private:
    void drawScrollBar(const QStyleOptionComplex *option, QPainter *painter,
                       const QWidget *widget) const;
};
