#pragma once

#include <QImage>
#include <QString>

// Transparency of stills. A header that declares an alpha channel is only a promise: many
// exported PNGs carry one that is opaque everywhere, and those are plain pictures on stage.
namespace StillAlpha {

// The format a reader announces from the header has an alpha channel.
bool declaresAlpha(QImage::Format format);

// Decodes the stored pixels and looks for one that is not fully opaque. Costs a full decode,
// so callers ask only when the header declared alpha.
bool anyTranslucentPixel(const QString &path);
bool anyTranslucentPixel(const QImage &image);

} // namespace StillAlpha
