// Feeds arbitrary bytes to the media layer's probes as files: the container probe, the still
// probe through Qt's readers, and the HEIF path. Whatever the bytes, each call must return.
//
//   probe_fuzzer -max_total_time=600 corpus/ build/fixtures/media/
#include "scratchfiles.h"

#include "media/ffmpeg/ffmpegprobe.h"

#include <QCoreApplication>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    // Qt's image plugins are found through the application object.
    static QCoreApplication app(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const ScratchFiles scratch;
    static const FfmpegProbe probe;
    // The name picks nothing in the container probe (FFmpeg goes by content first), but it
    // steers Qt's choice of reader; HEIF is recognised by its brand whatever the name.
    for (const char *name : {"input.mov", "input.png", "input.jpg"}) {
        const QString path = scratch.write(QString::fromLatin1(name), data, size);
        if (path.isEmpty())
            continue;
        if (path.endsWith(u".mov"))
            probe.probeVideo(path, {});
        else
            probe.probeImage(path, {});
    }
    return 0;
}
