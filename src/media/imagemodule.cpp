#include "imagemodule.h"

#include "modulefile.h"

#include <QtGlobal>

#include <atomic>

namespace {

std::atomic<const ImageModule *> installed{nullptr};

struct LoadedModule {
    QString why; // before `functions`, which the load fills it with
    const ImageModule *functions = nullptr;

    LoadedModule()
        : functions(ModuleFile::load<ImageModule>("cuebox-images.so", "cuebox_image_module", why))
    {
        // Said once, here: a still is otherwise reported only as unreadable.
        if (!functions)
            qWarning("cuebox: stills cannot be read or written: %s", qUtf8Printable(why));
    }
};

} // namespace

void ImageModule::install(const ImageModule *linked)
{
    installed.store(linked, std::memory_order_release);
}

const ImageModule *ImageModule::get(QString *why)
{
    if (const ImageModule *linked = installed.load(std::memory_order_acquire))
        return linked;
    static const LoadedModule loaded; // thread-safe, and tried once
    if (why)
        *why = loaded.why;
    return loaded.functions;
}
