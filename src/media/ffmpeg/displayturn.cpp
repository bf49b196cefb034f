#include "displayturn.h"

#include <cmath>

namespace StreamFacts {

QTransform displayTurn(const AVStream *stream)
{
    const std::optional<DisplayMatrix> m = displayMatrix(stream);
    if (!m)
        return {};
    const double scale = std::sqrt(std::abs(m->a * m->d - m->b * m->c));
    return QTransform(m->a / scale, m->b / scale, m->c / scale, m->d / scale, 0, 0);
}

} // namespace StreamFacts
