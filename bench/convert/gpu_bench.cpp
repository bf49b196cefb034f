// The HAP family and ProRes 4444 with alpha: our converter next to the ffmpeg CLI with the same
// encoder, format, chunk count and sound, side by side in one run.
//   HAP, HAP Alpha, HAP Q   from 10 s of 1920×1080 H.264 at 25 fps with AAC sound
//   ProRes 4444             from 10 s of 1920×1080 ProRes 4444 whose left half is clear; ours
//                           is asked for ProRes 422 and keeps the alpha by itself
// Each way runs `rounds` times, alternating; the best wall time of each counts (the machine is
// shared). Quality: PSNR of each output against its source, both decoded by ffmpeg, in RGB for
// HAP (the codec's own colour space) and in 4:4:4 YUV with alpha for ProRes 4444.
// Goals: ours/cli <= 1.05; PSNR equal to the CLI's within 0.1 dB.
//
//   bench_convert_gpu [ROUNDS]
#include "media/convert/encodersettings.h"
#include "media/convert/mediaconverter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace {

using Clock = std::chrono::steady_clock;

struct Case {
    const char *name;
    ArenaConvertFormat asked; // what our converter is asked for
    bool alphaSource;
    QStringList cliArguments;
    const char *psnrFormat;
};

QList<Case> cases()
{
    const QString chunks = QString::number(hapChunkCount(1920, 1080));
    const QStringList pcm{"-c:a", "pcm_s16le"};
    return {
        {"HAP", ArenaConvertFormat::hap, false,
         QStringList{"-c:v", "hap", "-format", "hap", "-compressor", "snappy", "-chunks", chunks} +
             pcm,
         "gbrp"},
        {"HAP Alpha", ArenaConvertFormat::hapAlpha, false,
         QStringList{"-c:v", "hap", "-format", "hap_alpha", "-compressor", "snappy", "-chunks",
                     chunks} +
             pcm,
         "gbrp"},
        {"HAP Q", ArenaConvertFormat::hapQ, false,
         QStringList{"-c:v", "hap", "-format", "hap_q", "-compressor", "snappy", "-chunks",
                     chunks} +
             pcm,
         "gbrp"},
        {"ProRes 4444", ArenaConvertFormat::proRes422, true,
         QStringList{"-c:v", "prores_ks", "-profile:v", "4444", "-q:v", "5", "-alpha_bits", "16",
                     "-pix_fmt", "yuva444p10le"} +
             pcm,
         "yuva444p10le"},
    };
}

bool runFfmpeg(const QStringList &arguments, QByteArray *errors = nullptr)
{
    QProcess process;
    if (!errors)
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QStringLiteral("ffmpeg"),
                  QStringList{"-nostdin", "-hide_banner", "-y"} +
                      (errors ? QStringList{} : QStringList{"-loglevel", "error"}) + arguments);
    const bool finished = process.waitForFinished(-1);
    if (errors)
        *errors = process.readAllStandardError();
    return finished && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

QString makeSource(const QString &folder, bool alpha)
{
    QDir().mkpath(folder);
    const QString source = QDir(folder).filePath(alpha ? QStringLiteral("source_alpha_1080p25.mov")
                                                       : QStringLiteral("source_1080p25.mp4"));
    if (QFile::exists(source))
        return source;
    std::printf("making %s …\n", qPrintable(source));
    const QString part =
        source + (alpha ? QStringLiteral(".part.mov") : QStringLiteral(".part.mp4"));
    const QStringList sound{"-f", "lavfi", "-i",
                            "sine=frequency=440:sample_rate=48000:duration=10"};
    QStringList arguments{"-f", "lavfi", "-i", "testsrc2=size=1920x1080:rate=25:duration=10"};
    if (alpha) {
        arguments += QStringList{"-f", "lavfi", "-i",
                                 "color=black:size=1920x1080:rate=25:duration=10,"
                                 "drawbox=x=960:y=0:w=960:h=1080:color=white:t=fill"} +
                     sound +
                     QStringList{"-filter_complex",
                                 "[1:v]format=gray[m];[0:v][m]alphamerge,format=yuva444p10le[v]",
                                 "-map",
                                 "[v]",
                                 "-map",
                                 "2:a",
                                 "-c:v",
                                 "prores_ks",
                                 "-profile:v",
                                 "4444",
                                 "-c:a",
                                 "pcm_s16le",
                                 part};
    } else { // the same source as bench_convert, shared through the same file
        arguments += sound + QStringList{"-c:v", "libx264",  "-preset", "veryfast", "-crf",
                                         "18",   "-pix_fmt", "yuv420p", "-c:a",     "aac",
                                         "-ac",  "2",        "-b:a",    "192k",     part};
    }
    if (!runFfmpeg(arguments) || !QFile::rename(part, source))
        return {};
    return source;
}

// The average PSNR over all planes of `output` against `source`, both decoded by ffmpeg.
double psnr(const QString &output, const QString &source, const char *format)
{
    QByteArray log;
    const QString graph =
        QStringLiteral("[0:v]format=%1[a];[1:v]format=%1[b];[a][b]psnr").arg(QLatin1String(format));
    if (!runFfmpeg({"-i", output, "-i", source, "-lavfi", graph, "-f", "null", "-"}, &log))
        return NAN;
    const QRegularExpressionMatch match =
        QRegularExpression(QStringLiteral("average:([0-9.]+|inf)")).match(QString::fromUtf8(log));
    return match.hasMatch() ? match.captured(1).toDouble() : NAN;
}

QString loadAverage()
{
    QFile file(QStringLiteral("/proc/loadavg"));
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("?");
    return QString::fromLatin1(file.readLine()).section(u' ', 0, 2);
}

double seconds(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 2;
    const QString sources[] = {makeSource(QStringLiteral(CUEBOX_BENCH_MEDIA), false),
                               makeSource(QStringLiteral(CUEBOX_BENCH_MEDIA), true)};
    if (sources[0].isEmpty() || sources[1].isEmpty()) {
        std::fprintf(stderr, "could not make the source clips\n");
        return 1;
    }
    QTemporaryDir folder;
    std::printf("10 s 1920x1080 25 fps; %d HAP chunks; best of %d rounds; load %s\n\n",
                hapChunkCount(1920, 1080), rounds, qPrintable(loadAverage()));
    std::printf("%-12s %8s %8s %9s %10s %10s %8s %10s\n", "format", "ours s", "cli s", "ours/cli",
                "ours dB", "cli dB", "dB diff", "MB o/c");
    bool ok = true;
    for (const Case &c : cases()) {
        const QString source = sources[c.alphaSource ? 1 : 0];
        MediaClip clip = MediaClip::forFile(source);
        clip.arenaName = QStringLiteral("ours");
        const QString cliOut = folder.filePath(QStringLiteral("cli.mov"));
        double ours = 1e9;
        double cli = 1e9;
        QString oursOut;
        for (int round = 0; round < rounds && ok; ++round) {
            Clock::time_point start = Clock::now();
            const ConvertResult result = MediaConverter::convertVideo(
                clip, folder.path(), ConvertOptions{c.asked, false, false}, {}, {});
            ours = std::min(ours, seconds(start));
            if (!result) {
                std::fprintf(stderr, "%s: ours failed: %s\n", c.name,
                             qPrintable(result.error().description()));
                ok = false;
                break;
            }
            oursOut = *result;
            start = Clock::now();
            if (!runFfmpeg(QStringList{"-i", source, "-map", "0:v:0", "-map", "0:a:0"} +
                           c.cliArguments + QStringList{"-f", "mov", cliOut})) {
                std::fprintf(stderr, "%s: ffmpeg failed\n", c.name);
                ok = false;
                break;
            }
            cli = std::min(cli, seconds(start));
        }
        if (!ok)
            break;
        const double oursDb = psnr(oursOut, source, c.psnrFormat);
        const double cliDb = psnr(cliOut, source, c.psnrFormat);
        std::printf("%-12s %8.2f %8.2f %9.3f %10.3f %10.3f %8.3f %5.0f/%-4.0f\n", c.name, ours, cli,
                    ours / cli, oursDb, cliDb, oursDb - cliDb,
                    double(QFileInfo(oursOut).size()) / 1e6,
                    double(QFileInfo(cliOut).size()) / 1e6);
        std::fflush(stdout);
    }
    std::printf("\nload at the end %s\n", qPrintable(loadAverage()));
    std::printf("goals: ours/cli <= 1.05; |dB diff| <= 0.1\n");
    return ok ? 0 : 1;
}
