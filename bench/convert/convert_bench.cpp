// Converting 10 s of 1920×1080 H.264 at 25 fps with AAC sound, format by format, two ways side
// by side in one run:
//   ours  MediaConverter::convertVideo, the product's pipeline in this process
//   cli   the ffmpeg CLI with the same encoders and settings (the peer to beat)
// Each way runs `rounds` times, alternating; the best wall time of each counts, since this
// machine is shared and a slow round says more about the neighbours than about the code.
// Goals: ours/cli ≤ 1.10; ProRes 422 at least 1× real time.
//
//   bench_convert [ROUNDS]
#include "media/convert/mediaconverter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <sys/resource.h>

namespace {

using Clock = std::chrono::steady_clock;
constexpr double kClipSeconds = 10.0;

// The same choices as the product's encoder table, spelled for the CLI.
struct Format {
    const char *name;
    ArenaConvertFormat format;
    QStringList cliArguments;
};

const QList<Format> &formats()
{
    static const QList<Format> all{
        {"ProRes 422",
         ArenaConvertFormat::proRes422,
         {"-c:v", "prores_ks", "-profile:v", "standard", "-q:v", "5", "-pix_fmt", "yuv422p10le",
          "-c:a", "pcm_s16le"}},
        {"ProRes 422 LT",
         ArenaConvertFormat::proRes422LT,
         {"-c:v", "prores_ks", "-profile:v", "lt", "-q:v", "7", "-pix_fmt", "yuv422p10le", "-c:a",
          "pcm_s16le"}},
        {"H.264",
         ArenaConvertFormat::h264,
         {"-c:v", "libx264", "-preset", "medium", "-crf", "17", "-profile:v", "high", "-pix_fmt",
          "yuv420p", "-c:a", "aac", "-b:a", "256k", "-movflags", "+faststart"}},
    };
    return all;
}

bool runFfmpeg(const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QStringLiteral("ffmpeg"),
                  QStringList{"-nostdin", "-hide_banner", "-loglevel", "error", "-y"} + arguments);
    return process.waitForFinished(-1) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

QString makeSource(const QString &folder)
{
    QDir().mkpath(folder);
    const QString source = QDir(folder).filePath(QStringLiteral("source_1080p25.mp4"));
    if (QFile::exists(source))
        return source;
    std::printf("making %s …\n", qPrintable(source));
    const bool made = runFfmpeg({"-f",
                                 "lavfi",
                                 "-i",
                                 "testsrc2=size=1920x1080:rate=25:duration=10",
                                 "-f",
                                 "lavfi",
                                 "-i",
                                 "sine=frequency=440:sample_rate=48000:duration=10",
                                 "-c:v",
                                 "libx264",
                                 "-preset",
                                 "veryfast",
                                 "-crf",
                                 "18",
                                 "-pix_fmt",
                                 "yuv420p",
                                 "-c:a",
                                 "aac",
                                 "-ac",
                                 "2",
                                 "-b:a",
                                 "192k",
                                 source + QStringLiteral(".part.mp4")});
    if (!made || !QFile::rename(source + QStringLiteral(".part.mp4"), source))
        return {};
    return source;
}

// Other work on the machine shows here; wall times under load say little.
QString loadAverage()
{
    QFile file(QStringLiteral("/proc/loadavg"));
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("?");
    return QString::fromLatin1(file.readLine()).section(u' ', 0, 2);
}

double cpuSeconds(int who)
{
    rusage usage{};
    getrusage(who, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

struct Timing {
    double wallSeconds = 1e9; // best round
    double cpuSeconds = 0;    // of that round
    qint64 bytes = 0;
};

void keepBest(Timing &best, double wall, double cpu, qint64 bytes)
{
    if (wall < best.wallSeconds)
        best = {wall, cpu, bytes};
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 2;
    const QString source = makeSource(QStringLiteral(CUEBOX_BENCH_MEDIA));
    if (source.isEmpty()) {
        std::fprintf(stderr, "could not make the source clip\n");
        return 1;
    }
    QTemporaryDir folder;
    MediaClip clip = MediaClip::forFile(source);
    clip.arenaName = QStringLiteral("ours");
    std::printf("source: 10 s 1920x1080 25 fps H.264 + AAC; best of %d rounds; load %s\n\n", rounds,
                qPrintable(loadAverage()));
    std::printf("%-14s %9s %9s %7s %9s %9s %9s %9s %9s\n", "format", "ours s", "cli s", "ours/cli",
                "ours xRT", "cli xRT", "ours cpu", "cli cpu", "MB o/c");
    bool ok = true;
    for (const Format &format : formats()) {
        Timing ours;
        Timing cli;
        const QString cliOut = folder.filePath(QStringLiteral("cli.mov"));
        for (int round = 0; round < rounds; ++round) {
            double cpu = cpuSeconds(RUSAGE_SELF);
            Clock::time_point start = Clock::now();
            const ConvertResult result = MediaConverter::convertVideo(
                clip, folder.path(), ConvertOptions{format.format, false, false}, {}, {});
            double wall = std::chrono::duration<double>(Clock::now() - start).count();
            if (!result) {
                std::fprintf(stderr, "%s: ours failed: %s\n", format.name,
                             qPrintable(result.error().description()));
                ok = false;
                break;
            }
            keepBest(ours, wall, cpuSeconds(RUSAGE_SELF) - cpu, QFileInfo(*result).size());

            cpu = cpuSeconds(RUSAGE_CHILDREN);
            start = Clock::now();
            const bool made =
                runFfmpeg(QStringList{"-i", source, "-map", "0:v:0", "-map", "0:a:0"} +
                          format.cliArguments + QStringList{"-f", "mov", cliOut});
            wall = std::chrono::duration<double>(Clock::now() - start).count();
            if (!made) {
                std::fprintf(stderr, "%s: ffmpeg failed\n", format.name);
                ok = false;
                break;
            }
            keepBest(cli, wall, cpuSeconds(RUSAGE_CHILDREN) - cpu, QFileInfo(cliOut).size());
        }
        if (!ok)
            break;
        std::printf("%-14s %9.2f %9.2f %8.2f %9.2f %9.2f %9.2f %9.2f %4.0f/%-4.0f\n", format.name,
                    ours.wallSeconds, cli.wallSeconds, ours.wallSeconds / cli.wallSeconds,
                    kClipSeconds / ours.wallSeconds, kClipSeconds / cli.wallSeconds,
                    ours.cpuSeconds, cli.cpuSeconds, double(ours.bytes) / 1e6,
                    double(cli.bytes) / 1e6);
    }
    std::printf("\nload at the end %s\n", qPrintable(loadAverage()));
    std::printf("goals: ours/cli <= 1.10; ProRes 422 >= 1.00 x real time\n");
    return ok ? 0 : 1;
}
