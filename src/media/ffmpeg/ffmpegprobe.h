#pragma once

#include "media/mediaprobe.h"

// The media layer of the product: containers through FFmpeg's demuxers (header only, no frame
// decoded), stills through Qt's image readers and libheif. Stateless; safe on any thread.
class FfmpegProbe final : public MediaProbe
{
public:
    VideoFacts probeVideo(const QString &path, std::stop_token stop) const override;
    ImageFacts probeImage(const QString &path, std::stop_token stop) const override;
};
