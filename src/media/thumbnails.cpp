#include "thumbnails.h"

#include "ffmpeg/framegrabber.h"
#include "model/pathnames.h"
#include "stillimage.h"

namespace Thumbnails {

QImage still(const QString &path, std::stop_token stop)
{
    if (stop.stop_requested())
        return {};
    return StillImage::thumbnail(path, kStillMaxSide);
}

QImage video(const QString &path, std::stop_token stop)
{
    return FrameGrabber::frameAt(path, kVideoSeconds, kVideoBox, std::move(stop));
}

QImage forFile(const QString &path, std::stop_token stop)
{
    return PathNames::isImage(path) ? still(path, std::move(stop)) : video(path, std::move(stop));
}

QImage generatePoster(const QString &path, std::stop_token stop)
{
    return FrameGrabber::frameAt(path, kPosterSeconds, kPosterBox, std::move(stop));
}

} // namespace Thumbnails
