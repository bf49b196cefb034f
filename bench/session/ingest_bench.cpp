// Ingest of 1,000 media files through the session, on a running event loop: the total time,
// the longest stall of the GUI thread, and next to them the bare header-open floor of the same
// files measured in the same run.
//
//   bench_ingest [WORK_FOLDER] [FILES] [READ_AHEAD_DEPTH]   (depth 0: no reading ahead)
#include "common/benchingest.h"
#include "common/benchmedia.h"
#include "media/ffmpeg/avhandles.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTextStream>

using namespace BenchMedia;

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    av_log_set_level(AV_LOG_QUIET);
    const QString work = argc > 1 ? QString::fromLocal8Bit(argv[1])
                                  : QDir::temp().filePath(QStringLiteral("cuebox-ingest-bench"));
    const int count = argc > 2 ? QString::fromLocal8Bit(argv[2]).toInt() : 1000;
    const QStringList paths = makeFiles(work, count);
    headerOpenFloor(paths); // warm the page cache for both sides

    ReadAhead::Options readAhead;
    if (argc > 3)
        readAhead.depth = QString::fromLocal8Bit(argv[3]).toInt();
    const IngestRun run = ingestFolder(work, readAhead);

    const double floorSeconds = headerOpenFloor(paths);
    QTextStream out(stdout);
    out << QStringLiteral("files ingested:            %1\n").arg(run.clips);
    out << QStringLiteral("ingest total:              %1 s\n").arg(run.seconds, 0, 'f', 3);
    out << QStringLiteral("bare header-open floor:    %1 s\n").arg(floorSeconds, 0, 'f', 3);
    out << QStringLiteral("ratio ingest / floor:      %1\n")
               .arg(run.seconds / floorSeconds, 0, 'f', 2);
    out << QStringLiteral("longest GUI-thread stall:  %1 ms (goal: none above 50 ms)\n")
               .arg(run.longestStallMs, 0, 'f', 1);
    return run.clips == count ? 0 : 1;
}
