#pragma once

#include "avhandles.h"
#include "media/mediaprobe.h"

#include <optional>

// What a demuxed stream says about itself, read from the header fields FFmpeg filled in.
namespace StreamFacts {

// The first stream of that kind; cover art attached to a file is not a video track.
const AVStream *firstOf(const AVFormatContext *format, AVMediaType type);
int countOf(const AVFormatContext *format, AVMediaType type);

// The display matrix of the stream, absent when it has none or when the matrix cannot be
// inverted (a broken or hostile file; the picture is shown as stored).
std::optional<DisplayMatrix> displayMatrix(const AVStream *stream);

// The stream's frames per second as FFmpeg reports it (the average rate, else the base rate);
// 0 when neither is known.
float frameRate(const AVStream *stream);

// True when the header left out something the probe reports, so that a short read of packets
// has to find it: streams that only appear in the data, an unknown duration, or a first video
// track without size, codec or rate.
bool needsStreamInfo(const AVFormatContext *format);

} // namespace StreamFacts
