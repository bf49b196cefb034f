#include "imagemodule.h"

#include "modulefile.h"
#include "runtimelibrary.h"

#include <QtGlobal>

#include <atomic>

namespace {

std::atomic<const ImageModule *> installed{nullptr};

const char kFileName[] = "cuebox-images.so";

struct ModuleEntry {
    decltype(&cuebox_image_module) entry = nullptr;
};

struct LoadedModule {
    const ImageModule *functions = nullptr;
    QString why;

    LoadedModule()
    {
        const QByteArray file = ModuleFile::path(kFileName);
        if (file.isEmpty()) {
            why = QStringLiteral("%1 is missing from this installation")
                      .arg(QString::fromLatin1(kFileName));
        } else {
            // Never unloaded: what it made may live until the process ends.
            const RuntimeLibrary<ModuleEntry> library(file, [](auto &opened, ModuleEntry &f) {
                return opened.resolve("cuebox_image_module", f.entry);
            });
            if (const ModuleEntry *found = library.functions(&why))
                functions = found->entry();
        }
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
