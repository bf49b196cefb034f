#include "glasscard.h"

#include "apptheme.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <qdrawutil.h>

#include <cmath>

GlassCard::GlassCard(qreal cornerRadius, Elevation elevation, QWidget *parent)
    : QWidget(parent), m_radius(cornerRadius), m_elevation(elevation)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setContentsMargins(kShadowMargin, kShadowMargin / 2, kShadowMargin, kShadowMargin * 3 / 2);
}

void GlassCard::setGlow(std::optional<QColor> glow)
{
    m_glow = glow;
    m_shadow = {};
    update();
}

void GlassCard::setCornerRadius(qreal radius)
{
    m_radius = radius;
    m_shadow = {};
    update();
}

QRectF GlassCard::faceRect() const
{
    const QMargins m = contentsMargins();
    return QRectF(rect()).adjusted(m.left(), m.top(), -m.right(), -m.bottom());
}

void GlassCard::resizeEvent(QResizeEvent *event)
{
    // The shadow is drawn as nine slices, so a new size does not redraw it.
    QWidget::resizeEvent(event);
}

void GlassCard::paintCard(QPainter *painter, const QRectF &face, qreal radius, const QColor &fill,
                          const QColor &glow, QPixmap *shadowCache)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    // A blurred shadow is a stack of widening rounded rectangles at falling opacity. It is drawn
    // once around the smallest face that still holds both rounded ends, and stretched to any
    // size through its uniform middle, so cards that change size (the selected clip's card on
    // every click) do not redraw it.
    const int spread = kShadowMargin;
    const int r = static_cast<int>(std::ceil(radius));
    // How far the corners reach in from each side of the pixmap (see the growth below).
    const QMargins slices(spread + r + 1, 2 * spread + r + 1, spread + r + 1, 2 * spread + r + 1);
    const QSizeF minimalFace(2 * r + 4, 2 * r + 2 * spread + 4);
    const auto drawShadow = [&](QPainter &s, QSizeF faceSize) {
        s.setRenderHint(QPainter::Antialiasing);
        s.setPen(Qt::NoPen);
        const QRectF base(spread, spread * 1.6, faceSize.width(), faceSize.height());
        constexpr int kSteps = 8;
        for (int i = kSteps; i >= 1; --i) {
            const qreal grow = spread * i / kSteps;
            QColor black(0, 0, 0, static_cast<int>(255 * 0.45 / kSteps * 0.9));
            s.setBrush(black);
            s.drawRoundedRect(base.adjusted(-grow, -grow * 0.6, grow, grow), radius + grow,
                              radius + grow);
            QColor g = glow;
            g.setAlphaF(g.alphaF() / kSteps);
            s.setBrush(g);
            s.drawRoundedRect(base.adjusted(-grow, -grow, grow, grow * 0.4), radius + grow,
                              radius + grow);
        }
    };
    const QRectF target(face.left() - spread, face.top() - spread, face.width() + 2 * spread,
                        face.height() + 3 * spread);
    if (face.width() < minimalFace.width() || face.height() < minimalFace.height()) {
        // Too small to slice: drawn at its own size every time (small cards only).
        painter->save();
        painter->translate(target.topLeft());
        drawShadow(*painter, face.size());
        painter->restore();
    } else if (shadowCache) {
        const QSize patchSize(static_cast<int>(minimalFace.width()) + 2 * spread,
                              static_cast<int>(minimalFace.height()) + 3 * spread);
        if (shadowCache->size() != patchSize) {
            QPixmap pm(patchSize);
            pm.fill(Qt::transparent);
            QPainter s(&pm);
            drawShadow(s, minimalFace);
            s.end();
            *shadowCache = pm;
        }
        qDrawBorderPixmap(painter, target.toAlignedRect(), slices, *shadowCache,
                          shadowCache->rect(), slices, QTileRules(Qt::StretchTile));
    }

    QPainterPath path;
    path.addRoundedRect(face, radius, radius);
    painter->fillPath(path, fill);
    // The outline is brighter at the top edge, as if lit from above.
    QLinearGradient outline(face.topLeft(), face.bottomLeft());
    outline.setColorAt(0, AppTheme::white(0.16));
    outline.setColorAt(1, AppTheme::white(0.05));
    painter->setPen(QPen(QBrush(outline), 1));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(face.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter->restore();
}

QColor GlassCard::faceColor() const
{
    return m_elevation == Elevation::elevated ? AppTheme::panelElevated : AppTheme::panel;
}

void GlassCard::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    const QColor fill = faceColor();
    const QColor glow = m_glow ? AppTheme::withAlpha(*m_glow, 0.22)
                               : AppTheme::withAlpha(AppTheme::accentGreen, 0.05);
    paintCard(&p, faceRect(), m_radius, fill, glow, &m_shadow);
}
