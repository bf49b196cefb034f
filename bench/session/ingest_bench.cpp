// Ingest of 1,000 media files through the session, on a running event loop: the total time,
// the longest stall of the GUI thread, and next to them the bare header-open floor of the same
// files measured in the same run.
//
//   bench_ingest [WORK_FOLDER] [FILES] [READ_AHEAD_DEPTH]   (depth 0: no reading ahead)
#include "common/benchmedia.h"
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
