#pragma once

#include "avhandles.h"

#include <optional>

// The four-character codes a QuickTime reader would report for a track, most significant byte
// first (the code of avc1 reads 0x61766331). Both mappings live in codectags.cpp as tables.
namespace CodecTags {

// The sample-entry code the file stores where it has one (QuickTime and MP4); for containers
// that store none, the code a QuickTime writer would give the codec. Absent when nothing fits.
std::optional<quint32> videoCode(const AVFormatContext *format, const AVCodecParameters *codec);

// The audio format identifier (aac, lpcm, .mp3, ac-3…), whatever the container calls its
// sample entry: an AAC track in MP4 is "aac ", never "mp4a".
std::optional<quint32> audioCode(const AVCodecParameters *codec);

} // namespace CodecTags
