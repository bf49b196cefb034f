// Ingest from a slow disk: 1,000 distinct media files behind a FUSE file system that waits a
// fixed time on every open and every read (slowfs), as a USB drive or a network share does.
// For each delay, side by side in one run, each on a fresh mount (an empty cache):
//   ingest   the session's ingest of the folder (probe, rules, fingerprints, read-ahead), and
//            the same with reading ahead switched off, each with its longest GUI stall and how
//            far the process's peak memory grew
//   floor    avformat_open_input + avformat_close_input per file, one after the other
//   ffprobe  one `ffprobe -show_format -show_streams` process per file, 50 files, scaled
//
//   bench_slowdisk [WORK_FOLDER] [FILES] [DELAY_US,…]   (default: 1000 files, 5000,1000 µs)
// Needs /dev/fuse and fusermount3; says so and exits 0 without them.
#include "common/benchingest.h"
#include "common/benchmedia.h"
#include "media/ffmpeg/avhandles.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThread>
#include <QTimer>

using BenchMedia::headerOpenFloor;
using BenchMedia::ingestFolder;
using BenchMedia::IngestRun;

namespace {

// Three containers as show folders hold them: the movie header first (MP4 for the web), last
// (QuickTime as cameras and editors write it), and Matroska. Each file is a copy with its own
// trailing bytes, so that no two are alike.
QStringList makeFiles(const QString &folder, int count)
{
    QDir().mkpath(folder);
    const QList<QStringList> seeds{
        {"seed.mov"},
        {"seed.mp4", "-movflags", "+faststart"},
        {"seed.mkv"},
    };
    QList<QByteArray> bytes;
    for (const QStringList &seed : seeds) {
        const QString path = QDir(folder).filePath("." + seed.front());
        if (!QFile::exists(path)) {
            QStringList arguments{"-v",
                                  "error",
                                  "-y",
                                  "-f",
                                  "lavfi",
                                  "-i",
                                  "testsrc2=size=640x360:rate=25:duration=4",
                                  "-f",
                                  "lavfi",
                                  "-i",
                                  "sine=duration=4",
                                  "-c:v",
                                  "libx264",
                                  "-preset",
                                  "veryfast",
                                  "-pix_fmt",
                                  "yuv420p",
                                  "-c:a",
                                  "aac"};
            arguments += seed.mid(1);
            arguments += path;
            QProcess::execute(QStringLiteral("ffmpeg"), arguments);
        }
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        bytes.append(file.readAll());
    }
    QStringList names;
    for (int i = 0; i < count; ++i) {
        const QString name = QStringLiteral("clip%1.%2")
                                 .arg(i, 4, 10, QChar(u'0'))
                                 .arg(QStringList{"mov", "mp4", "mkv"}[i % 3]);
        const QString path = QDir(folder).filePath(name);
        if (!QFile::exists(path)) {
            QFile file(path);
            file.open(QIODevice::WriteOnly);
            file.write(bytes[i % 3]);
            file.write(QByteArray::number(i)); // trailing bytes after the movie: ignored by readers
        }
        names.append(name);
    }
    return names;
}

// The slow file system over `source`, mounted at `mountPoint` for as long as it lives.
class SlowMount
{
public:
    SlowMount(const QString &slowfs, const QString &source, const QString &mountPoint, int delayUs)
        : m_mountPoint(mountPoint)
    {
        m_process.start(slowfs, {source, mountPoint, QString::number(delayUs), "-f"});
        for (int i = 0; i < 500 && !mounted(); ++i)
            QThread::msleep(10);
    }
    ~SlowMount()
    {
        QProcess::execute(QStringLiteral("fusermount3"), {"-u", m_mountPoint});
        m_process.waitForFinished(5000);
    }
    bool mounted() const
    {
        QFile mounts(QStringLiteral("/proc/self/mounts"));
        mounts.open(QIODevice::ReadOnly);
        return mounts.readAll().contains(' ' + QFile::encodeName(m_mountPoint) + ' ');
    }

private:
    QString m_mountPoint;
    QProcess m_process;
};

double ffprobeEach(const QStringList &paths)
{
    QElapsedTimer timer;
    timer.start();
    for (const QString &path : paths) {
        QProcess ffprobe;
        ffprobe.start(QStringLiteral("ffprobe"),
                      {"-v", "error", "-show_format", "-show_streams", path});
        ffprobe.waitForFinished(-1);
    }
    return timer.nsecsElapsed() / 1e9;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    av_log_set_level(AV_LOG_QUIET);
    QTextStream out(stdout);
    const QString slowfs = QCoreApplication::applicationDirPath() + QStringLiteral("/slowfs");
    if (!QFile::exists(QStringLiteral("/dev/fuse")) ||
        QStandardPaths::findExecutable(QStringLiteral("fusermount3")).isEmpty() ||
        !QFile::exists(slowfs)) {
        out << "skipped: needs /dev/fuse, fusermount3 and the slowfs helper beside this program\n";
        return 0;
    }
    const QString work = argc > 1 ? QString::fromLocal8Bit(argv[1])
                                  : QDir::temp().filePath(QStringLiteral("cuebox-slowdisk-bench"));
    const int count = argc > 2 ? QString::fromLocal8Bit(argv[2]).toInt() : 1000;
    const QStringList delays = QString::fromLocal8Bit(argc > 3 ? argv[3] : "5000,1000").split(',');
    const QString source = QDir(work).filePath(QStringLiteral("source"));
    const QString mountPoint = QDir(work).filePath(QStringLiteral("mount"));
    QDir().mkpath(mountPoint);
    const QStringList names = makeFiles(source, count);
    const int sampled = std::min(50, count);

    bool allIngested = true;
    for (const QString &delay : delays) {
        const int delayUs = delay.toInt();
        QStringList paths;
        for (const QString &name : names)
            paths.append(QDir(mountPoint).filePath(name));
        double floorSeconds = 0;
        double ffprobeSeconds = 0;
        IngestRun run;
        IngestRun plain;
        {
            SlowMount mount(slowfs, source, mountPoint, delayUs);
            floorSeconds = headerOpenFloor(paths);
        }
        // Without reading ahead first: what the first ingest of a process sets up for good (the
        // pool's threads, FFmpeg's tables) then does not count as the readers' memory.
        {
            SlowMount mount(slowfs, source, mountPoint, delayUs);
            ReadAhead::Options off;
            off.depth = 0;
            plain = ingestFolder(mountPoint, off);
        }
        {
            SlowMount mount(slowfs, source, mountPoint, delayUs);
            run = ingestFolder(mountPoint, {});
        }
        {
            SlowMount mount(slowfs, source, mountPoint, delayUs);
            ffprobeSeconds = ffprobeEach(paths.mid(0, sampled)) * count / sampled;
        }
        allIngested = allIngested && run.clips == count;
        out << QStringLiteral("delay per open and read:   %1 ms, %2 files\n")
                   .arg(delayUs / 1000.0, 0, 'f', 1)
                   .arg(count);
        out << QStringLiteral("  ingest (session):        %1 s  (%2 clips, longest GUI stall %3 "
                              "ms, peak memory +%4 MiB)\n")
                   .arg(run.seconds, 0, 'f', 2)
                   .arg(run.clips)
                   .arg(run.longestStallMs, 0, 'f', 1)
                   .arg(run.peakGrowthMiB, 0, 'f', 1);
        out << QStringLiteral("  ingest, no read-ahead:   %1 s  (longest GUI stall %2 ms, peak "
                              "memory +%3 MiB)\n")
                   .arg(plain.seconds, 0, 'f', 2)
                   .arg(plain.longestStallMs, 0, 'f', 1)
                   .arg(plain.peakGrowthMiB, 0, 'f', 1);
        out << QStringLiteral("  header-open floor:       %1 s\n").arg(floorSeconds, 0, 'f', 2);
        out << QStringLiteral("  ffprobe per file:        %1 s  (%2 files, scaled)\n")
                   .arg(ffprobeSeconds, 0, 'f', 2)
                   .arg(sampled);
        out << QStringLiteral("  ratio ingest / floor:    %1  (goal: at most 0.50, aim 0.35)\n")
                   .arg(run.seconds / floorSeconds, 0, 'f', 2);
        out << QStringLiteral("  ratio ffprobe / floor:   %1\n")
                   .arg(ffprobeSeconds / floorSeconds, 0, 'f', 2);
        out.flush();
    }
    return allIngested ? 0 : 1;
}
