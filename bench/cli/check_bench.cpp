// `cuebox check` of 1,000 files as a user runs it (a new process: start-up, discovery, probes,
// the printed table), next to the bare header-open floor of the same files in one process, with
// a warm page cache and cold media: the media files' cached pages dropped before each side, as
// for a drive just plugged in. When run as root, also with the whole page cache dropped: then
// the new process reads its own libraries from the disk too, while the floor's process keeps
// its own (the kernel drops no page a process has mapped), so that figure says what a first
// start after boot costs. The same loop is then also timed as a new process of its own that
// links only FFmpeg, started after the drop: the floor with its page cache dropped as well, which
// is the one the cold-cache goal is measured against.
//
//   bench_check [WORK_FOLDER] [FILES]
#include "common/benchmedia.h"
#include "media/ffmpeg/avhandles.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTextStream>

#include <fcntl.h>
#include <unistd.h>

#include <functional>

using namespace BenchMedia;

namespace {

double freshFloor(const QString &work, int count)
{
    QElapsedTimer timer;
    timer.start();
    QProcess floor;
    floor.setStandardOutputFile(QProcess::nullDevice());
    floor.start(QStringLiteral(CUEBOX_FLOOR_PROCESS), {work, QString::number(count)});
    floor.waitForFinished(-1);
    return timer.nsecsElapsed() / 1e9;
}

double check(const QString &folder)
{
    QElapsedTimer timer;
    timer.start();
    QProcess cuebox;
    cuebox.setStandardOutputFile(QProcess::nullDevice());
    cuebox.setStandardErrorFile(QProcess::nullDevice());
    cuebox.start(QStringLiteral(CUEBOX_BINARY), {"check", folder});
    cuebox.waitForFinished(-1);
    return timer.nsecsElapsed() / 1e9;
}

// What `dd iflag=nocache count=0` does per file: the media go cold, the libraries stay.
void dropMediaPages(const QStringList &paths)
{
    for (const QString &path : paths) {
        const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
        if (fd < 0)
            continue;
        ::posix_fadvise(fd, 0, 0, POSIX_FADV_DONTNEED);
        ::close(fd);
    }
}

bool dropPageCache()
{
    ::sync();
    QFile drop(QStringLiteral("/proc/sys/vm/drop_caches"));
    return drop.open(QIODevice::WriteOnly) && drop.write("3\n") == 2;
}

double best(int runs, const std::function<double()> &measure)
{
    double fastest = measure();
    for (int i = 1; i < runs; ++i)
        fastest = std::min(fastest, measure());
    return fastest;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    av_log_set_level(AV_LOG_QUIET);
    const QString work = argc > 1 ? QString::fromLocal8Bit(argv[1])
                                  : QDir::temp().filePath(QStringLiteral("cuebox-check-bench"));
    const int count = argc > 2 ? QString::fromLocal8Bit(argv[2]).toInt() : 1000;
    const QStringList paths = makeFiles(work, count);
    QDir().mkpath(QDir(work).filePath(".empty"));
    QTextStream out(stdout);

    headerOpenFloor(paths); // warm
    const double warmFloor = best(3, [&] { return headerOpenFloor(paths); });
    const double warmCheck = best(3, [&] { return check(work); });
    const double startUp = best(3, [&] { return check(QDir(work).filePath(".empty")); });
    out << QStringLiteral("files:                       %1\n").arg(count);
    out << QStringLiteral("warm: cuebox check           %1 s\n").arg(warmCheck, 0, 'f', 3);
    out << QStringLiteral("warm: header-open floor      %1 s\n").arg(warmFloor, 0, 'f', 3);
    out << QStringLiteral("warm: ratio check / floor    %1  (goal: at most 2.0)\n")
               .arg(warmCheck / warmFloor, 0, 'f', 2);
    out << QStringLiteral("cuebox check of no files     %1 s  (start-up and exit)\n")
               .arg(startUp, 0, 'f', 3);
    const double mediaFloor = best(3, [&] {
        dropMediaPages(paths);
        return headerOpenFloor(paths);
    });
    const double mediaCheck = best(3, [&] {
        dropMediaPages(paths);
        return check(work);
    });
    out << QStringLiteral("cold media: cuebox check     %1 s\n").arg(mediaCheck, 0, 'f', 3);
    out << QStringLiteral("cold media: header-open floor %1 s\n").arg(mediaFloor, 0, 'f', 3);
    out << QStringLiteral("cold media: ratio            %1  (libraries warm on both sides)\n")
               .arg(mediaCheck / mediaFloor, 0, 'f', 2);
    if (!dropPageCache()) {
        out << "cold all: skipped (dropping the whole page cache needs root)\n";
        return 0;
    }
    const double coldFloor = best(2, [&] {
        dropPageCache();
        return headerOpenFloor(paths);
    });
    const double coldCheck = best(2, [&] {
        dropPageCache();
        return check(work);
    });
    out << QStringLiteral("cold all: cuebox check       %1 s\n").arg(coldCheck, 0, 'f', 3);
    out << QStringLiteral("cold all: header-open floor  %1 s\n").arg(coldFloor, 0, 'f', 3);
    out << QStringLiteral("cold all: ratio              %1  (this floor keeps its libraries)\n")
               .arg(coldCheck / coldFloor, 0, 'f', 2);
    const double coldFreshFloor = best(2, [&] {
        dropPageCache();
        return freshFloor(work, count);
    });
    out << QStringLiteral("cold all: floor, new process %1 s\n").arg(coldFreshFloor, 0, 'f', 3);
    out << QStringLiteral("cold all: ratio to it        %1  (goal: at most 1.0; both start cold)\n")
               .arg(coldCheck / coldFreshFloor, 0, 'f', 2);
    return 0;
}
