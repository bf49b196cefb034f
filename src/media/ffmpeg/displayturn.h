#pragma once

#include "streamfacts.h"

#include <QTransform>

namespace StreamFacts {

// The display matrix's rotation and mirroring without its scale, so that turning a picture
// never resizes it; identity when the stream has no usable matrix.
QTransform displayTurn(const AVStream *stream);

} // namespace StreamFacts
