#pragma once

#include <cstdint>
#include <span>

// Facts an H.264 track's sequence header (its avcC record, as MP4, QuickTime and Matroska
// store it) settles without reading a packet.
namespace H264Header {

// True when every sequence header in `avcC` codes frames only (no field or field-pair
// pictures) and does not let pictures announce a field order of their own: such a track is
// progressive whatever its packets say. False when that cannot be told from the record
// (interlaced coding allowed, a picture-timing structure, an unreadable or foreign record).
bool framesOnly(std::span<const uint8_t> avcC);

} // namespace H264Header
