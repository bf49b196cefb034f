#pragma once

#include <QImage>
#include <QSize>
#include <QString>

#include <stop_token>

// Single frames of a movie for thumbnails and posters.
namespace FrameGrabber {

// The picture of the first video track at `seconds` from its start, turned as its display
// matrix says and fitted into `box` (never enlarged). A clip shorter than `seconds` gives its
// last frame. Null when the file cannot be opened or decoded, or when `stop` is requested.
QImage frameAt(const QString &path, double seconds, QSize box, std::stop_token stop);

} // namespace FrameGrabber
