#pragma once

#include "media/mediaconversion.h"

// The session's converter on this platform: MediaConverter's FFmpeg pipeline and image path,
// its errors turned into the session's Error values (message = the error's description).
class FfmpegConversion final : public MediaConversion
{
public:
    Result<QString> convertVideo(const MediaClip &clip, const QString &folder,
                                 const ConvertOptions &options,
                                 const std::function<void(double)> &progress,
                                 std::stop_token stop) const override;
    Result<QString> convertImage(const MediaClip &clip, const QString &folder, bool forceEven,
                                 const std::function<void(double)> &progress) const override;
};
