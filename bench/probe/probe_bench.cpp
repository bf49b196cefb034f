// Probing 1,000 small media files three ways, side by side in one run with a warm page cache:
//   floor    avformat_open_input + avformat_close_input, nothing else (what any reader pays)
//   probe    MediaInspector::inspect over FfmpegProbe, the product's full probe and rules
//   ffprobe  one `ffprobe -show_format -show_streams` process per file, the usual way
//
//   bench_probe [MEDIA_FOLDER] [FILES] [FFPROBE_FILES]
// With FFPROBE_FILES, ffprobe runs over the first that many files (in the same mix of kinds)
// and its time is scaled to FILES: a process per file takes minutes for 1,000.
#include "media/ffmpeg/avhandles.h"
#include "media/ffmpeg/ffmpegprobe.h"
#include "media/ffmpeg/inputfile.h"
#include "media/ffmpeg/vectorstate.h"
#include "media/mediainspector.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

extern char **environ;

namespace {

using Clock = std::chrono::steady_clock;

struct Variant {
    const char *name;
    QStringList arguments; // after the inputs; the output name is appended
};

// Small clips of the kinds a show folder holds; copies of them make up the folder.
QStringList makeFolder(const QString &folder, int count)
{
    const QString base = QDir(folder).filePath(QStringLiteral("base"));
    QDir().mkpath(base);
    const QStringList inputs{"-f", "lavfi", "-i", "testsrc=size=320x180:rate=25:duration=1",
                             "-f", "lavfi", "-i", "sine=frequency=440:duration=1"};
    const QList<Variant> variants{
        {"h264.mov",
         {"-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p", "-c:a", "aac"}},
        {"h264.mp4",
         {"-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p", "-c:a", "aac"}},
        {"prores.mov", {"-c:v", "prores_ks", "-profile:v", "2", "-c:a", "pcm_s16le"}},
        {"hap.mov", {"-c:v", "hap", "-an"}},
        {"hevc.mp4",
         {"-c:v", "libx265", "-preset", "ultrafast", "-pix_fmt", "yuv420p", "-x265-params",
          "log-level=none", "-tag:v", "hvc1", "-c:a", "aac"}},
        {"h264.mkv",
         {"-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p", "-c:a", "ac3"}},
        {"vp9.webm",
         {"-c:v", "libvpx-vp9", "-deadline", "realtime", "-cpu-used", "8", "-c:a", "libopus"}},
        {"mjpeg.avi", {"-c:v", "mjpeg", "-c:a", "pcm_s16le"}},
    };
    QStringList bases;
    for (const Variant &variant : variants) {
        const QString out = QDir(base).filePath(QString::fromLatin1(variant.name));
        if (!QFile::exists(out)) {
            QProcess::execute("ffmpeg", QStringList{"-v", "error", "-nostdin", "-y"} + inputs +
                                            variant.arguments + QStringList{out});
        }
        if (QFile::exists(out))
            bases.append(out);
    }
    QStringList paths;
    for (int i = 0; i < count && !bases.isEmpty(); ++i) {
        const QString source = bases[i % bases.size()];
        const QString path = QDir(folder).filePath(
            QStringLiteral("clip%1.%2").arg(i, 4, 10, QChar(u'0')).arg(QFileInfo(source).suffix()));
        if (!QFile::exists(path))
            QFile::copy(source, path);
        paths.append(path);
    }
    return paths;
}

template<typename Pass>
double bestOf(int runs, Pass pass)
{
    double best = 1e300;
    for (int i = 0; i < runs; ++i) {
        const auto start = Clock::now();
        pass();
        best =
            std::min(best, std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    }
    return best;
}

int floorPass(const QList<QByteArray> &paths)
{
    int opened = 0;
    for (const QByteArray &path : paths) {
        AVFormatContext *raw = nullptr;
        clearUpperVectorState(); // as the product does before every open
        if (avformat_open_input(&raw, path.constData(), nullptr, nullptr) == 0) {
            ++opened;
            avformat_close_input(&raw);
        }
    }
    return opened;
}

// The product's open alone (guarded, whitelisted, one file only): what of the probe's cost is
// opening, next to the floor's bare open.
int openPass(const QStringList &paths)
{
    int opened = 0;
    for (const QString &path : paths)
        opened += InputFile::open(path, {}, std::chrono::seconds(10)).has_value() ? 1 : 0;
    return opened;
}

int probePass(const QStringList &paths, const FfmpegProbe &probe)
{
    const InspectionRules rules;
    int probed = 0;
    for (const QString &path : paths) {
        const MediaClip clip = MediaInspector::inspect(path, rules, probe);
        probed += clip.width.has_value() ? 1 : 0;
    }
    return probed;
}

int ffprobePass(const QList<QByteArray> &paths)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    int succeeded = 0;
    for (const QByteArray &path : paths) {
        const char *argv[] = {"ffprobe", "-v",           "error",         "-of",
                              "json",    "-show_format", "-show_streams", path.constData(),
                              nullptr};
        pid_t pid = 0;
        if (posix_spawnp(&pid, "ffprobe", &actions, nullptr, const_cast<char **>(argv), environ) !=
            0)
            continue;
        int status = 0;
        waitpid(pid, &status, 0);
        succeeded += WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 1 : 0;
    }
    posix_spawn_file_actions_destroy(&actions);
    return succeeded;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QString folder =
        argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral(CUEBOX_BENCH_MEDIA);
    const int count = argc > 2 ? std::max(1, std::atoi(argv[2])) : 1000;
    const int ffprobeCount = argc > 3 ? std::clamp(std::atoi(argv[3]), 1, count) : count;
    const QStringList paths = makeFolder(folder, count);
    if (paths.size() != count) {
        std::fprintf(stderr, "could not make %d files in %s\n", count, qPrintable(folder));
        return 1;
    }
    QList<QByteArray> local;
    for (const QString &path : paths)
        local.append(QFile::encodeName(path));
    av_log_set_level(AV_LOG_QUIET);

    // Warm: every byte in the page cache, libraries and demuxers loaded.
    for (const QString &path : paths) {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        file.readAll();
    }
    const FfmpegProbe probe;
    const int opened = floorPass(local);
    const int probed = probePass(paths, probe);

    const double floorMs = bestOf(5, [&] { floorPass(local); });
    const double openMs = bestOf(5, [&] { openPass(paths); });
    const double probeMs = bestOf(5, [&] { probePass(paths, probe); });
    int ffprobeOk = 0;
    const double ffprobeMs =
        bestOf(1, [&] { ffprobeOk = ffprobePass(local.mid(0, ffprobeCount)); }) * count /
        ffprobeCount;

    std::printf("files: %d in %s (%d opened, %d probed with a size, %d of %d by ffprobe)\n", count,
                qPrintable(folder), opened, probed, ffprobeOk, ffprobeCount);
    std::printf("floor   (open + close):      %9.1f ms  %7.1f us/file\n", floorMs,
                1000 * floorMs / count);
    std::printf("open    (InputFile::open):   %9.1f ms  %7.1f us/file\n", openMs,
                1000 * openMs / count);
    std::printf("probe   (MediaInspector):    %9.1f ms  %7.1f us/file\n", probeMs,
                1000 * probeMs / count);
    std::printf("ffprobe (process per file):  %9.1f ms  %7.1f us/file\n", ffprobeMs,
                1000 * ffprobeMs / count);
    // Where the time goes, kind by kind (one pass each, same warm cache).
    for (const QString &suffix : QStringList{"mov", "mp4", "mkv", "webm", "avi"}) {
        QStringList some;
        QList<QByteArray> someLocal;
        for (qsizetype i = 0; i < paths.size(); ++i) {
            if (paths[i].endsWith(u'.' + suffix)) {
                some.append(paths[i]);
                someLocal.append(local[i]);
            }
        }
        if (some.isEmpty())
            continue;
        const double kindFloor = bestOf(3, [&] { floorPass(someLocal); });
        const double kindProbe = bestOf(3, [&] { probePass(some, probe); });
        std::printf("  .%-5s %4lld files: floor %7.1f us/file, probe %7.1f us/file (%.2fx)\n",
                    qPrintable(suffix), static_cast<long long>(some.size()),
                    1000 * kindFloor / some.size(), 1000 * kindProbe / some.size(),
                    kindProbe / kindFloor);
    }
    std::printf("probe / floor:   %6.2fx  (goal <= 3)\n", probeMs / floorMs);
    std::printf("ffprobe / probe: %6.0fx  (goal >= 100)\n", ffprobeMs / probeMs);
    return 0;
}
