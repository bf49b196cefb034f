#pragma once
// The session's ingest of a folder as the benchmarks measure it: on a running event loop, with
// the longest stall of the GUI thread and the growth of the process's peak memory beside the
// total time.
#include "l10n/apppreferences.h"
#include "l10n/localizationmanager.h"
#include "media/ffmpeg/ffmpegprobe.h"
#include "session/packviewmodel.h"

#include <QCoroTask>
#include <QElapsedTimer>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>

#include <memory>

namespace BenchMedia {

struct IngestRun {
    double seconds = 0;
    double longestStallMs = 0;
    qsizetype clips = 0;
    double peakGrowthMiB = 0; // the most resident memory during the ingest, above what was before
};

// A "VmRSS:"-style line of /proc/self/status, in KiB; 0 when it cannot be read.
inline qint64 statusKiB(const char *field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(field))
            return line.mid(qstrlen(field)).trimmed().split(' ').front().toLongLong();
    }
    return 0;
}

// Sets the peak ("VmHWM") back to what is resident now, so that it measures what follows.
inline bool resetPeakMemory()
{
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    return clear.open(QIODevice::WriteOnly) && clear.write("5") == 1;
}

inline IngestRun ingestFolder(const QString &folder, ReadAhead::Options readAhead)
{
    QTemporaryDir settingsDir;
    QSettings settings(settingsDir.filePath("prefs.conf"), QSettings::IniFormat);
    LocalizationManager localization(settings);
    AppPreferences preferences(settings);
    PackViewModel::Services services;
    services.probe = std::make_shared<FfmpegProbe>();
    services.localization = &localization;
    services.preferences = &preferences;
    services.requestThumbnail = [](const MediaClip &) {}; // thumbnails are measured elsewhere
    services.readAhead = std::move(readAhead);
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
    const bool peakReset = resetPeakMemory();
    const qint64 residentBefore = statusKiB("VmRSS:");
    QElapsedTimer total;
    total.start();
    QCoro::waitFor(session.ingest({QUrl::fromLocalFile(folder)}));
    IngestRun run;
    run.seconds = total.nsecsElapsed() / 1e9;
    run.longestStallMs = longestStallNs / 1e6;
    run.clips = session.clips().size();
    if (peakReset)
        run.peakGrowthMiB = (statusKiB("VmHWM:") - residentBefore) / 1024.0;
    return run;
}

} // namespace BenchMedia
