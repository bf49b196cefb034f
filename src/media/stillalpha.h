#pragma once

#include <QImage>
#include <QString>

// Transparency of stills. A header that declares an alpha channel is only a promise: many
// exported PNGs carry one that is opaque everywhere, and those are plain pictures on stage.
namespace StillAlpha {

// Whether the format a reader announces from the header may hold alpha: it has an alpha
// channel, or the reader cannot tell without decoding (Qt's WebP reader says nothing).
bool mayHaveAlpha(QImage::Format format);

// Decodes the stored pixels and looks for one that is not fully opaque. Costs a full decode,
// so callers ask only when the header declared alpha.
bool anyTranslucentPixel(const QString &path);
bool anyTranslucentPixel(const QImage &image);

} // namespace StillAlpha
