#pragma once

#include "media/convert/convertformat.h"
#include "model/mediaclip.h"
#include "model/result.h"

#include <functional>
#include <stop_token>

// What the session needs from the converter: one clip in, the written file's path out.
// Runs on worker threads; progress may be reported from any thread. An error's `message` is
// the text the status line shows ("Unsupported media", "Cancelled", the encoder's own text).
class MediaConversion
{
public:
    virtual ~MediaConversion() = default;
    virtual Result<QString> convertVideo(const MediaClip &clip, const QString &folder,
                                         const ConvertOptions &options,
                                         const std::function<void(double)> &progress,
                                         std::stop_token stop) const = 0;
    virtual Result<QString> convertImage(const MediaClip &clip, const QString &folder,
                                         bool forceEven,
                                         const std::function<void(double)> &progress) const = 0;
};
