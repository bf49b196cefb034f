#pragma once

#include <QImage>
#include <QString>

// A still's first image with its pixels as stored: no EXIF orientation, no HEIF rotation or
// mirroring applied, full size and full bit depth. Null when the file cannot be decoded.
namespace StoredImage {

QImage read(const QString &path);

} // namespace StoredImage
