#pragma once

#include "avhandles.h"

// Whether a video track's pictures carry an alpha channel, told from what the container and
// the codec parameters say: nothing is decoded, so probing stays a header read.
namespace AlphaChannel {

bool inStream(const AVStream *stream);

} // namespace AlphaChannel
