#pragma once

#include "mediaprobe.h"

#include <QImage>
#include <QString>

// Stills: PNG, JPEG, TIFF, GIF, BMP and WebP through Qt's image readers, HEIC through libheif.
// Reentrant; runs on worker threads.
namespace StillImage {

// The stored pixel size from the file's header, without decoding pixels. EXIF orientation is
// not applied: a portrait photo stored landscape reports its stored size.
ImageFacts readFacts(const QString &path);

// The picture upright (EXIF orientation or HEIF rotation applied), at most `maxSide` pixels on
// its long side; null when the file cannot be decoded.
QImage thumbnail(const QString &path, int maxSide);

} // namespace StillImage
