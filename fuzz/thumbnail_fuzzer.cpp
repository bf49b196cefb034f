// Feeds arbitrary bytes to the thumbnail makers as files: a frame grab (open, seek, decode,
// scale, turn) and a still's upright thumbnail. Whatever the bytes, each call must return.
//
//   thumbnail_fuzzer -max_total_time=600 corpus/ build/fixtures/media/
#include "scratchfiles.h"

#include "media/thumbnails.h"

#include <QCoreApplication>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication app(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const ScratchFiles scratch;
    if (const QString movie = scratch.write(QStringLiteral("input.mov"), data, size);
        !movie.isEmpty())
        Thumbnails::video(movie);
    if (const QString still = scratch.write(QStringLiteral("input.jpg"), data, size);
        !still.isEmpty())
        Thumbnails::still(still);
    return 0;
}
