#pragma once

#include <QSize>

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
