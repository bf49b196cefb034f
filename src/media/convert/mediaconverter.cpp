#include "mediaconverter.h"

#include "ffmpegconversion.h"
#include "media/imagemodule.h"

QString MediaConverterError::description() const
{
    switch (m_kind) {
    case Kind::exportFailed:
        return m_text;
    case Kind::unsupported:
        return QStringLiteral("Unsupported media");
    case Kind::cancelled:
        break;
    }
    return QStringLiteral("Cancelled");
}

namespace {

Result<QString> toSessionResult(ConvertResult result, const MediaClip &clip)
{
    if (result)
        return *result;
    const MediaConverterError &error = result.error();
    Error::Kind kind = Error::Kind::WriteFailed;
    if (error.kind() == MediaConverterError::Kind::unsupported)
        kind = Error::Kind::Unsupported;
    else if (error.kind() == MediaConverterError::Kind::cancelled)
        kind = Error::Kind::Cancelled;
    return Error{kind, error.description(), clip.sourcePath(), 0};
}

} // namespace

Result<QString> FfmpegConversion::convertVideo(const MediaClip &clip, const QString &folder,
                                               const ConvertOptions &options,
                                               const std::function<void(double)> &progress,
                                               std::stop_token stop) const
{
    return toSessionResult(MediaConverter::convertVideo(clip, folder, options, progress, stop),
                           clip);
}

Result<QString> FfmpegConversion::convertImage(const MediaClip &clip, const QString &folder,
                                               bool forceEven,
                                               const std::function<void(double)> &progress) const
{
    QString why;
    const ImageModule *images = ImageModule::get(&why);
    if (!images)
        return toSessionResult(MediaConverterError::exportFailed(why), clip);
    return toSessionResult(images->convertImage(clip, folder, forceEven, progress), clip);
}
