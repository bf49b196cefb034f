// Ingest, re-inspection and the entry points that feed them.
#include "packviewmodel.h"

#include "l10n/localizationmanager.h"
#include "media/mediainspector.h"
#include "model/arenanamer.h"
#include "model/discovery.h"
#include "model/pathnames.h"
#include "session/contentfingerprint.h"
#include "session/duplicates.h"
#include "session/platform.h"
#include "session/probebatch.h"
#include "session/watchfoldermonitor.h"

#include <QCoroFuture>
#include <QPointer>
#include <QPromise>
#include <QTimer>
#include <QtConcurrent>

#include <atomic>

namespace {

// How often the GUI catches up with the files the ingest worker has reached: quicker than the
// eye, rare beside the probes.
constexpr std::chrono::milliseconds kCheckingStatusInterval{10};

} // namespace

QCoro::Task<MediaClip> PackViewModel::inspectOffThread(QString path)
{
    // The worker gets values only, never `this`.
    const std::shared_ptr<const MediaProbe> probe = m_services.probe;
    const InspectionRules rules = this->rules(); // read again for every file
    // g++ 12 destroys temporaries inside a co_await expression twice, so every future is a
    // named local before it is awaited.
    QFuture<MediaClip> future = QtConcurrent::run([probe, rules, path] {
        MediaClip probed = MediaInspector::inspect(path, rules, *probe);
        probed.contentFingerprint =
            ContentFingerprint::make(path, probed.duration, probed.fileSize);
        return probed;
    });
    MediaClip clip = co_await future;
    co_return clip;
}

QCoro::Task<> PackViewModel::ingest(QList<QUrl> urls)
{
    if (urls.isEmpty())
        co_return;
    QPointer<PackViewModel> self(this);
    setScanning(true);
    setStatus(PackStatus::scanning());

    QStringList dropped;
    for (const QUrl &url : std::as_const(urls)) {
        if (url.isLocalFile())
            dropped.append(url.toLocalFile());
    }
    QStringList existing;
    for (const MediaClip &clip : std::as_const(m_clips))
        existing.append(clip.sourcePath());
    // Discovery reads folders only; a big tree can still take a moment, so it runs off the
    // GUI thread too.
    QFuture<QStringList> discovery =
        QtConcurrent::run([dropped, existing] { return Discovery::freshMedia(dropped, existing); });
    const QStringList fresh = co_await discovery;
    if (!self)
        co_return;

    if (fresh.isEmpty()) {
        setScanning(false);
        // While watching, a rescan that finds nothing new is no news: the watch goes on.
        if (m_watchFolder->isWatching())
            setStatus(statusAfterIngest());
        else
            setStatus(m_clips.isEmpty() ? PackStatus::empty() : PackStatus::ready(m_clips.size()));
        co_return;
    }

    // The probes run on one worker. It notes which file it has reached, and the GUI thread
    // shows a "Checking" status for every file up to there, in order, on a short timer and once
    // more before the batch's end, which the worker posts. A posted call per file woke the GUI
    // thread for every file, which cost the worker a twentieth of its time. When the session
    // goes away first, its destructor stops and waits for the worker, the posted call dies with
    // it, and the abandoned promise wakes this coroutine.
    struct Run {
        QPromise<void> done;
        QList<MediaClip> clips;
        QList<FileStamp> stamps; // of each clip's file, as looked at just before its probe
        std::atomic<qsizetype> reached = -1; // the last file the worker has begun
        qsizetype shown = -1;                // the last file whose status the GUI has shown
    };
    auto run = std::make_shared<Run>();
    run->done.start();
    QFuture<void> finished = run->done.future();
    const auto showReached = [this, run, fresh] {
        for (const qsizetype reached = run->reached.load(); run->shown < reached;) {
            ++run->shown;
            setStatus(PackStatus::checking(run->shown + 1, fresh.size(),
                                           PathNames::lastComponent(fresh[run->shown])));
        }
    };
    QTimer relay; // no parent: it lives in this frame, and dies with it
    relay.setInterval(kCheckingStatusInterval);
    connect(&relay, &QTimer::timeout, this, showReached);
    relay.start();
    const ProbeBatch batch{m_services.probe, m_liveRules,
                           [run](qsizetype i) { run->reached.store(i); }, m_services.readAhead};
    m_ingestWorkers.append(
        QtConcurrent::run([this, batch, fresh, run, showReached, stop = m_ingestStop.get_token()] {
            ProbeBatch::Probed probed = batch.run(fresh, stop);
            if (stop.stop_requested())
                return;
            QMetaObject::invokeMethod(
                this,
                [run, showReached, probed = std::move(probed)]() mutable {
                    showReached();
                    run->clips = std::move(probed.clips);
                    run->stamps = std::move(probed.stamps);
                    run->done.finish();
                },
                Qt::QueuedConnection);
        }));
    co_await finished;
    relay.stop();
    if (!self)
        co_return;
    pruneIngestWorkers();
    QList<MediaClip> added = std::move(run->clips);

    const qsizetype base = m_clips.size();
    for (qsizetype i = 0; i < added.size(); ++i) {
        MediaClip &clip = added[i];
        clip.cueIndex = base + i + 1;
        clip.arenaName =
            ArenaNamer::makeName(clip.cueIndex, clip.originalName, m_showPrefix, m_zeroPad);
        requestThumbnail(clip);
        m_probedStamps.insert(clip.sourcePath(), run->stamps[i]);
    }

    const std::optional<QUuid> firstAdded =
        added.isEmpty() ? std::nullopt : std::optional<QUuid>(added.front().id);
    // Duplicates are marked before the clips are set: marking them after copied the whole pack
    // once more, and showed it once without its duplicate findings.
    QList<MediaClip> clips = m_clips;
    clips.append(std::move(added));
    const qint64 duplicates = Duplicates::markDuplicates(clips);
    setClips(std::move(clips));
    setDuplicateCount(duplicates);
    if (!m_selectedClipID && firstAdded)
        setSelectedClipID(firstAdded);
    setScanning(false);
    setStatus(statusAfterIngest());
}

bool PackViewModel::handleDrop(const QList<QUrl> &urls)
{
    QList<QUrl> files;
    for (const QUrl &url : urls) {
        if (url.isLocalFile()) // other drop items (web links, text) are skipped
            files.append(url);
    }
    ingest(files);
    return true;
}

void PackViewModel::pickFolder()
{
    if (!m_services.panels)
        return;
    const QList<QUrl> chosen =
        m_services.panels->openMedia(text("panel.open.message"), text("panel.open.prompt"));
    if (!chosen.isEmpty())
        ingest(chosen);
}

QCoro::Task<> PackViewModel::reinspectAll()
{
    if (m_clips.isEmpty())
        co_return;
    QPointer<PackViewModel> self(this);
    setScanning(true);
    const QList<MediaClip> snapshot = m_clips;
    QList<MediaClip> reprobed;
    reprobed.reserve(snapshot.size());
    for (qsizetype i = 0; i < snapshot.size(); ++i) {
        const MediaClip &old = snapshot[i];
        setStatus(PackStatus::checking(i + 1, snapshot.size(), old.arenaName));
        MediaClip fresh = co_await inspectOffThread(old.sourcePath());
        if (!self)
            co_return;
        MediaClip clip = old;
        clip.takeProbedFields(fresh);
        clip.contentFingerprint = fresh.contentFingerprint;
        clip.isDuplicate = false;
        requestThumbnail(clip);
        reprobed.append(std::move(clip));
    }
    setClips(std::move(reprobed));
    markDuplicates();
    setScanning(false);
    setStatus(PackStatus::ready(m_clips.size()));
}
