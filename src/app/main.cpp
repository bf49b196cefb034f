// The cuebox executable: the window, or the command line when asked for it.
#include "commandline.h"
#include "media/mediamodule.h"
#include "media/modulefile.h"
#include "media/runtimelibrary.h"
#include "startup.h"
#include "windowmain.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

// Asks the kernel to read the program's own code and data in one go. Right after boot, or off
// a slow disk, they were otherwise faulted in a few pages at a time as the code first ran.
void readProgramAhead()
{
    dl_iterate_phdr(
        [](dl_phdr_info *info, size_t, void *) {
            const auto page = static_cast<ElfW(Addr)>(::sysconf(_SC_PAGESIZE));
            for (int i = 0; i < info->dlpi_phnum; ++i) {
                const ElfW(Phdr) &segment = info->dlpi_phdr[i];
                if (segment.p_type != PT_LOAD)
                    continue;
                const ElfW(Addr) start = (info->dlpi_addr + segment.p_vaddr) & ~(page - 1);
                const ElfW(Addr) end = info->dlpi_addr + segment.p_vaddr + segment.p_filesz;
                ::madvise(reinterpret_cast<void *>(start), end - start, MADV_WILLNEED);
            }
            return 1; // the first object is the program itself
        },
        nullptr);
}

struct WindowModule {
    decltype(&cuebox_window_main) main = nullptr;
};

// The window lives in a module: Qt Widgets, Gui and what they pull in cost every start of the
// command line about 10 ms to load, and a verb never shows a window.
int runWindow(int &argc, char **argv, const QStringList &paths)
{
    const char fileName[] = "cuebox-window.so";
    const QByteArray file = ModuleFile::path(fileName);
    if (file.isEmpty()) {
        std::fprintf(stderr,
                     "cuebox: cannot open the window: %s is missing from this installation\n",
                     fileName);
        return EXIT_FAILURE;
    }
    const RuntimeLibrary<WindowModule> module(file, [](auto &opened, WindowModule &f) {
        return opened.resolve("cuebox_window_main", f.main);
    });
    QString why;
    const WindowModule *window = module.functions(&why);
    if (!window) {
        std::fprintf(stderr, "cuebox: cannot open the window: %s\n", qUtf8Printable(why));
        return EXIT_FAILURE;
    }
    return window->main(argc, argv, paths);
}

} // namespace

int main(int argc, char *argv[])
{
    readProgramAhead();
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args.append(QString::fromLocal8Bit(argv[i]));

    // Options and verbs run headless; anything else (nothing, or folders and files to add)
    // opens the window.
    if (!CommandLine::wants(args))
        return runWindow(argc, argv, args);
    // Qt takes the first thread that asks for its thread data for the main thread: the
    // application is made here before the loader thread below can be that thread.
    QCoreApplication app(argc, argv);
    // FFmpeg loads while the verb starts; the first probe waits for it.
    MediaModule::preload();
    Startup::prepareApplication();
    const int code = CommandLine::run(args);
    // A verb has written, synced and cleaned up all it made by the time it returns. What is
    // left is tearing down the thread pool and the static state of some 150 libraries, which
    // took about 10 ms of every run; the kernel takes the memory back at once.
    std::fflush(stdout);
    std::fflush(stderr);
    std::_Exit(code);
}
