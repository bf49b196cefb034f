#pragma once

#include <QImage>
#include <QSize>
#include <QString>

#include <stop_token>

// The small pictures of the clip list and the poster of the preview. Each call reads the file
// on the calling thread; null on any failure (the views keep their placeholder).
namespace Thumbnails {

inline constexpr int kStillMaxSide = 120;
inline constexpr QSize kVideoBox{160, 90};
inline constexpr double kVideoSeconds = 0.5;
inline constexpr QSize kPosterBox{640, 360};
inline constexpr double kPosterSeconds = 0.4;

// A still upright, at most 120 pixels on its long side.
QImage still(const QString &path, std::stop_token stop = {});
// A movie's frame at 0.5 s, turned as its display matrix says, fitted into 160 × 90.
QImage video(const QString &path, std::stop_token stop = {});
// still() or video(), by the file's extension as media discovery decides it.
QImage forFile(const QString &path, std::stop_token stop = {});

// The preview's poster: the frame at 0.4 s, turned, fitted into 640 × 360.
QImage generatePoster(const QString &path, std::stop_token stop = {});

} // namespace Thumbnails
