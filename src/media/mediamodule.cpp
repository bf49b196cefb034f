#include "mediamodule.h"

#include "modulefile.h"

#include <thread>

namespace {

ModuleFile::Slot<MediaModule> &slot()
{
    static ModuleFile::Slot<MediaModule> media("cuebox-media.so", "cuebox_media_module",
                                               "media files cannot be read or converted");
    return media;
}

class DeferredProbe final : public MediaProbe
{
public:
    VideoFacts probeVideo(const QString &path, std::stop_token stop) const override
    {
        QString why;
        if (const MediaModule *media = MediaModule::get(&why))
            return media->probe->probeVideo(path, std::move(stop));
        VideoFacts facts;
        facts.failedAt = VideoFacts::Stage::open;
        facts.errorText = why;
        return facts;
    }

    ImageFacts probeImage(const QString &path, std::stop_token stop) const override
    {
        if (const MediaModule *media = MediaModule::get())
            return media->probe->probeImage(path, std::move(stop));
        return {};
    }
};

class DeferredConversion final : public MediaConversion
{
public:
    Result<QString> convertVideo(const MediaClip &clip, const QString &folder,
                                 const ConvertOptions &options,
                                 const std::function<void(double)> &progress,
                                 std::stop_token stop) const override
    {
        QString why;
        if (const MediaModule *media = MediaModule::get(&why))
            return media->conversion->convertVideo(clip, folder, options, progress,
                                                   std::move(stop));
        return Error{Error::Kind::WriteFailed, why, clip.sourcePath(), 0};
    }

    Result<QString> convertImage(const MediaClip &clip, const QString &folder, bool forceEven,
                                 const std::function<void(double)> &progress) const override
    {
        QString why;
        if (const MediaModule *media = MediaModule::get(&why))
            return media->conversion->convertImage(clip, folder, forceEven, progress);
        return Error{Error::Kind::WriteFailed, why, clip.sourcePath(), 0};
    }
};

} // namespace

void MediaModule::install(const MediaModule *linked)
{
    slot().install(linked);
}

const MediaModule *MediaModule::get(QString *why)
{
    return slot().get(why);
}

void MediaModule::preload()
{
    if (slot().isInstalled())
        return;
    // Detached: a run that ends before the module is loaded must not wait for it.
    std::thread([] { get(); }).detach();
}

std::shared_ptr<MediaProbe> MediaModule::deferredProbe()
{
    return std::make_shared<DeferredProbe>();
}

std::shared_ptr<MediaConversion> MediaModule::deferredConversion()
{
    return std::make_shared<DeferredConversion>();
}
