// Ingest of 1,000 media files through the session, on a running event loop: the total time,
// the longest stall of the GUI thread, and next to them the bare header-open floor of the same
// files measured in the same run.
//
//   bench_ingest [WORK_FOLDER] [FILES] [READ_AHEAD_DEPTH]   (depth 0: no reading ahead)
#include "l10n/apppreferences.h"
#include "l10n/localizationmanager.h"
#include "media/ffmpeg/avhandles.h"
#include "media/ffmpeg/ffmpegprobe.h"
#include "session/packviewmodel.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

namespace {

// One short clip made by the ffmpeg CLI, then copied with a changed tail byte so that every
// file is distinct (no duplicates skew the fingerprints).
QStringList makeFiles(const QString &folder, int count)
{
    QDir().mkpath(folder);
    const QString seed = QDir(folder).filePath(QStringLiteral(".seed.mov"));
    if (!QFile::exists(seed)) {
        QProcess::execute(QStringLiteral("ffmpeg"),
                          {"-v", "error", "-y", "-f", "lavfi", "-i",
                           "testsrc=size=320x180:rate=25:duration=1", "-c:v", "libx264", "-pix_fmt",
                           "yuv420p", seed});
    }
    QFile seedFile(seed);
    seedFile.open(QIODevice::ReadOnly);
    const QByteArray bytes = seedFile.readAll();
    QStringList paths;
    for (int i = 0; i < count; ++i) {
        const QString path =
            QDir(folder).filePath(QStringLiteral("clip%1.mov").arg(i, 4, 10, QChar(u'0')));
        if (!QFile::exists(path)) {
            QFile file(path);
            file.open(QIODevice::WriteOnly);
            file.write(bytes);
            file.write(QByteArray::number(i)); // trailing bytes after the movie: ignored by readers
        }
        paths.append(path);
    }
    return paths;
}

double headerOpenFloor(const QStringList &paths)
{
    QElapsedTimer timer;
    timer.start();
    for (const QString &path : paths) {
        AVFormatContext *raw = nullptr;
        if (avformat_open_input(&raw, QFile::encodeName(path).constData(), nullptr, nullptr) == 0)
            avformat_close_input(&raw);
    }
    return timer.nsecsElapsed() / 1e9;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    av_log_set_level(AV_LOG_QUIET);
    const QString work = argc > 1 ? QString::fromLocal8Bit(argv[1])
                                  : QDir::temp().filePath(QStringLiteral("cuebox-ingest-bench"));
    const int count = argc > 2 ? QString::fromLocal8Bit(argv[2]).toInt() : 1000;
    const QStringList paths = makeFiles(work, count);
    headerOpenFloor(paths); // warm the page cache for both sides

    QTemporaryDir settingsDir;
    QSettings settings(settingsDir.filePath("prefs.conf"), QSettings::IniFormat);
    LocalizationManager localization(settings);
    AppPreferences preferences(settings);
    PackViewModel::Services services;
    services.probe = std::make_shared<FfmpegProbe>();
    services.localization = &localization;
    services.preferences = &preferences;
    services.requestThumbnail = [](const MediaClip &) {}; // thumbnails are measured elsewhere
    if (argc > 3)
        services.readAhead.depth = QString::fromLocal8Bit(argv[3]).toInt();
    PackViewModel session(services);

    // The longest gap between two ticks of a 1 ms timer is the worst freeze a window would see.
    QElapsedTimer sinceTick;
    qint64 longestStallNs = 0;
    QTimer ticker;
    ticker.setInterval(1);
    QObject::connect(&ticker, &QTimer::timeout, [&] {
        longestStallNs = qMax(longestStallNs, sinceTick.nsecsElapsed());
        sinceTick.restart();
    });
    sinceTick.start();
    ticker.start();
    QElapsedTimer total;
    total.start();
    QCoro::waitFor(session.ingest({QUrl::fromLocalFile(work)}));
    const double ingestSeconds = total.nsecsElapsed() / 1e9;
    ticker.stop();

    const double floorSeconds = headerOpenFloor(paths);
    QTextStream out(stdout);
    out << QStringLiteral("files ingested:            %1\n").arg(session.clips().size());
    out << QStringLiteral("ingest total:              %1 s\n").arg(ingestSeconds, 0, 'f', 3);
    out << QStringLiteral("bare header-open floor:    %1 s\n").arg(floorSeconds, 0, 'f', 3);
    out << QStringLiteral("ratio ingest / floor:      %1\n")
               .arg(ingestSeconds / floorSeconds, 0, 'f', 2);
    out << QStringLiteral("longest GUI-thread stall:  %1 ms (goal: none above 50 ms)\n")
               .arg(longestStallNs / 1e6, 0, 'f', 1);
    return session.clips().size() == count ? 0 : 1;
}
