#pragma once

#include "mediaconversion.h"
#include "mediaprobe.h"

#include <QString>

#include <memory>

// What the command line needs of the FFmpeg code. FFmpeg and the hundred-odd libraries it pulls
// in took about 55 ms of a 70 ms start of the command line, and longer from a cold disk, so
// that code lives in a module (cuebox-media.so) that starts loading on a thread of its own as
// soon as a verb is known, and the first probe waits for the module. Only the main thread's own
// work overlaps the load: glibc holds its TLS lock all through dlopen, so a thread started
// meanwhile (the scan's, the readers') waits in pthread_create until the load is done. Starting
// the scan's thread before the load gained nothing measurable (the scan of 1,000 files is a few
// ms), and loading the hundred libraries one dlopen at a time cost 20 ms more CPU than one.
// Nor did a pool thread, started before the load, that hands the kernel the first files' reads
// while it goes on: the load itself slowed by about what that saved.
// Programs that link the code in (tests, benchmarks) install it instead, and nothing is loaded;
// the window and still-image modules link the module itself.
struct MediaModule {
    const MediaProbe *probe = nullptr;
    const MediaConversion *conversion = nullptr;

    // Starts loading the module on a thread of its own; `get` then waits for it, if need be.
    static void preload();
    // The installed functions, or else the module, loaded once for the whole process; null
    // when it cannot be loaded, with the loader's reason in `why`. Thread-safe.
    static const MediaModule *get(QString *why = nullptr);
    // Before any `get`: the functions of code linked into this program.
    static void install(const MediaModule *linked);

    // A probe and a converter that ask for the module on first use, on the worker thread that
    // uses them: made at once, before the module is there. Without the module, every movie
    // fails at its open and every conversion fails, both with the reason.
    static std::shared_ptr<MediaProbe> deferredProbe();
    static std::shared_ptr<MediaConversion> deferredConversion();
};

// The one function the module exports, by this name.
extern "C" const MediaModule *cuebox_media_module();
