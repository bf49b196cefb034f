#pragma once

#include "media/mediaprobe.h"

#include <QImage>
#include <QString>

// HEIC stills through libheif: Qt's readers have no HEIF plugin on our platforms.
namespace HeifImage {

// Whether the file starts like a HEIF file (its ftyp brand), whatever its name says.
bool looksLikeHeif(const QString &path);

// The primary image's stored size, from its ispe property; nothing is decoded.
ImageFacts readFacts(const QString &path);

// The primary image decoded with its rotation and mirroring applied, fitted into a square of
// `maxSide`; null when the file cannot be decoded.
QImage thumbnail(const QString &path, int maxSide);

} // namespace HeifImage
