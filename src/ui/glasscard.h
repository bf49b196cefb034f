#pragma once

#include <QColor>
#include <QPixmap>
#include <QWidget>

#include <optional>

// A rounded panel that holds other widgets: `panel` or `panelElevated`, a faint light outline
// and a soft drop shadow with a coloured glow. The shadow is painted inside the widget's own
// rectangle, so the card keeps a margin around its face; content sits inside the face.
class GlassCard : public QWidget
{
    Q_OBJECT
public:
    enum class Elevation { flat, elevated };
    explicit GlassCard(qreal cornerRadius = 14, Elevation elevation = Elevation::flat,
                       QWidget *parent = nullptr);

    void setGlow(std::optional<QColor> glow);
    void setCornerRadius(qreal radius);
    // The face of the card inside the shadow margin, and its opaque colour.
    QRectF faceRect() const;
    QColor faceColor() const;
    static constexpr int kShadowMargin = 10;

    // Paints a card face with its shadow into `face` (shared with painted rows and overlays).
    static void paintCard(QPainter *painter, const QRectF &face, qreal radius, const QColor &fill,
                          const QColor &glow, QPixmap *shadowCache);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    qreal m_radius;
    Elevation m_elevation;
    std::optional<QColor> m_glow;
    QPixmap m_shadow; // rebuilt only when the size changes
};
