#pragma once

#include <QRectF>
#include <QSize>
#include <QTransform>

#include <algorithm>
#include <cmath>

// The largest size with the aspect of `size` that fits in `box`, never larger than `size`
// itself (a thumbnail is not blown up) and never smaller than one pixel a side.
inline QSize fitWithin(QSizeF size, QSize box)
{
    if (size.width() <= 0 || size.height() <= 0 || box.isEmpty())
        return {};
    const double scale = std::min({1.0, box.width() / size.width(), box.height() / size.height()});
    const auto side = [scale](double length) {
        return std::max(1, static_cast<int>(std::lround(length * scale)));
    };
    return {side(size.width()), side(size.height())};
}

// The size to scale an unturned frame of display size `shown` to, so that once turned by `turn`
// it fits in `box`; empty when nothing fits. The smaller ratio is taken, so that rounding one
// side never pushes the other past the box.
inline QSize unturnedFitWithin(QSizeF shown, QSize box, const QTransform &turn)
{
    const QRectF turned = turn.mapRect(QRectF(QPointF(0, 0), shown));
    const QSize fitted = fitWithin(turned.size(), box);
    if (fitted.isEmpty())
        return {};
    const double scale =
        std::min(fitted.width() / turned.width(), fitted.height() / turned.height());
    return {std::max(1, static_cast<int>(std::lround(shown.width() * scale))),
            std::max(1, static_cast<int>(std::lround(shown.height() * scale)))};
}
