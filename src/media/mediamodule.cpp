#include "mediamodule.h"

#include "modulefile.h"

#include <QtGlobal>

#include <atomic>
#include <thread>

namespace {

std::atomic<const MediaModule *> installed{nullptr};

struct LoadedModule {
    QString why; // before `functions`, which the load fills it with
    const MediaModule *functions = nullptr;

    LoadedModule()
        : functions(ModuleFile::load<MediaModule>("cuebox-media.so", "cuebox_media_module", why))
    {
        // Said once, here: each file is otherwise reported only as unreadable.
        if (!functions)
            qWarning("cuebox: media files cannot be read or converted: %s", qUtf8Printable(why));
    }
};

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
    installed.store(linked, std::memory_order_release);
}

const MediaModule *MediaModule::get(QString *why)
{
    if (const MediaModule *linked = installed.load(std::memory_order_acquire))
        return linked;
    static const LoadedModule loaded; // thread-safe, and tried once: a second caller waits
    if (why)
        *why = loaded.why;
    return loaded.functions;
}

void MediaModule::preload()
{
    if (installed.load(std::memory_order_acquire))
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
