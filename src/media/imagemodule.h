#pragma once

#include "mediaprobe.h"

#include <QString>

#include <functional>

class ConvertResult;
class MediaClip;

// What the command line needs of the still-image code, which reads and writes through Qt Gui.
// Loading Qt Gui and what it pulls in cost every start of the command line about 8 ms, and most
// runs never touch a still, so that code lives in a module (cuebox-images.so) loaded the first
// time a still is read or written. Programs that link the code in (the window, tests,
// benchmarks) install it instead, and nothing is loaded.
struct ImageModule {
    ImageFacts (*readFacts)(const QString &path) = nullptr;
    ConvertResult (*convertImage)(const MediaClip &clip, const QString &folder, bool forceEven,
                                  std::function<void(double)> progress) = nullptr;

    // The installed functions, or else the module, loaded once for the whole process; null
    // when it cannot be loaded, with the loader's reason in `why`. Thread-safe.
    static const ImageModule *get(QString *why = nullptr);
    // Before any `get`: the functions of code linked into this program.
    static void install(const ImageModule *linked);
};

// The one function the module exports, by this name.
extern "C" const ImageModule *cuebox_image_module();
