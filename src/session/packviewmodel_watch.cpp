// The watch folder: its media joins the pack at once; later, files join once they are
// complete, replaced files are probed again and vanished ones turn red where they stand.
#include "packviewmodel.h"

#include "l10n/localizationmanager.h"
#include "model/discovery.h"
#include "model/pathnames.h"
#include "session/platform.h"
#include "session/watchfoldermonitor.h"
#include "session/watchintake.h"

#include <QCoroFuture>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QPointer>
#include <QtConcurrent>

#include <algorithm>

namespace {

bool isUnder(const QString &path, const QString &folder)
{
    return path.startsWith(folder.endsWith(u'/') ? folder : folder + u'/');
}

} // namespace

void PackViewModel::pickWatchFolder()
{
    if (!m_services.panels)
        return;
    const std::optional<QString> folder = m_services.panels->chooseFolder(
        text("watch.pick.message"), text("watch.pick.prompt"), std::nullopt);
    if (folder)
        startWatching(*folder);
}

void PackViewModel::startWatching(const QString &folder)
{
    QPointer<PackViewModel> self(this);
    m_watchIntake->clear();
    m_watchRelook.stop();
    m_watchSeen.clear();
    m_watchFolder->start(folder, [self](const QString &) {
        if (self) // a report after the session has gone is dropped
            self->lookAtWatchFolder();
    });
    // Before the ingest: it shows "Scanning…" and ends with this status itself.
    setStatus(PackStatus::watching(PathNames::lastComponent(folder)));
    firstWatchIngest(folder);
}

void PackViewModel::stopWatching()
{
    m_watchFolder->stop();
    m_watchIntake->clear();
    m_watchRelook.stop();
    setStatus(m_clips.isEmpty() ? PackStatus::idle() : PackStatus::ready(m_clips.size()));
}

PackStatus PackViewModel::statusAfterIngest() const
{
    if (!m_watchFolder->isWatching())
        return PackStatus::ready(m_clips.size());
    if (m_watchIntake->waitingCount() > 0)
        return PackStatus::waiting(m_watchIntake->waitingCount());
    const std::optional<QString> folder = m_watchFolder->folder();
    return PackStatus::watching(folder ? PathNames::lastComponent(*folder) : QString());
}

// The operator chose the folder: what is in it joins as it is, complete or not; a file still
// being written is probed again once it is complete.
QCoro::Task<> PackViewModel::firstWatchIngest(QString folder)
{
    QPointer<PackViewModel> self(this);
    ++m_watchBusy;
    QCoro::Task<> ingesting = ingest({QUrl::fromLocalFile(folder)});
    co_await ingesting;
    if (self)
        watchWorkDone();
}

void PackViewModel::watchWorkDone()
{
    if (--m_watchBusy == 0 && m_watchLookAgain) {
        m_watchLookAgain = false;
        lookAtWatchFolder();
    }
}

// One look at the folder: every media file below it and every pack file of it, by size and
// modification time, without opening any. Looks and the probes they start run one at a time,
// so a file being probed is never taken for a new one.
QCoro::Task<> PackViewModel::lookAtWatchFolder()
{
    if (!m_watchFolder->folder())
        co_return;
    if (m_watchBusy > 0) {
        m_watchLookAgain = true;
        co_return;
    }
    ++m_watchBusy;
    QPointer<PackViewModel> self(this);
    const QString folder = *m_watchFolder->folder();
    const QString root = Discovery::normalizedPath(folder);
    QStringList packPaths;
    for (const MediaClip &clip : std::as_const(m_clips)) {
        const QString path = clip.sourcePath();
        if (isUnder(path, root) || m_watchSeen.contains(path))
            packPaths.append(path);
    }
    QFuture<WatchIntake::Look> looking = QtConcurrent::run([folder, packPaths] {
        WatchIntake::Look look;
        look.atMs = QDeadlineTimer::current().deadline();
        for (const QString &path : Discovery::freshMedia({folder}, {}))
            look.found.insert(path, FileStamp::of(path));
        for (const QString &path : packPaths)
            look.pack.insert(path, FileStamp::of(path));
        return look;
    });
    const WatchIntake::Look look = co_await looking;
    if (!self)
        co_return;
    if (m_watchFolder->folder() != folder) { // stopped, or another folder chosen meanwhile
        watchWorkDone();
        co_return;
    }
    for (auto it = look.found.cbegin(); it != look.found.cend(); ++it)
        m_watchSeen.insert(it.key());
    QHash<QString, FileStamp> probed;
    for (auto it = look.pack.cbegin(); it != look.pack.cend(); ++it) {
        // A clip that came without a stamp (from a project, a conversion) is taken as it is now.
        const auto known = m_probedStamps.constFind(it.key());
        probed.insert(it.key(), known != m_probedStamps.cend()
                                    ? *known
                                    : *m_probedStamps.insert(it.key(), it.value()));
    }
    const WatchIntake::Outcome outcome = m_watchIntake->take(
        look, probed, [this](const QString &path) { return m_watchFolder->isBeingWritten(path); });

    std::optional<PackStatus> endStatus;
    if (m_watchFolder->lostFolder() || !QFileInfo(folder).isDir()) {
        // Deleted, renamed or unmounted: the watch ends, and its clips stay, red.
        m_watchFolder->stop();
        m_watchIntake->clear();
        m_watchRelook.stop();
        endStatus = PackStatus::error(m_services.localization->strings().format(
            u"watch.lost", {PathNames::lastComponent(folder)}));
        setStatus(*endStatus);
    }
    const QStringList refresh = outcome.changed + outcome.gone;
    if (!refresh.isEmpty()) {
        QCoro::Task<> refreshing = refreshClips(refresh, look.pack, endStatus);
        co_await refreshing;
        if (!self)
            co_return;
    }
    if (!outcome.added.isEmpty() && !endStatus) {
        QList<QUrl> urls;
        for (const QString &path : outcome.added)
            urls.append(QUrl::fromLocalFile(path));
        QCoro::Task<> ingesting = ingest(urls);
        co_await ingesting;
        if (!self)
            co_return;
    }
    // A look that probed nothing only says whether files are still waiting, and only if that
    // is news: "Pack saved" stays up while a file waits on.
    if (refresh.isEmpty() && outcome.added.isEmpty() && !endStatus && !m_isScanning &&
        (m_status.kind() == PackStatus::Kind::waiting ||
         m_status.kind() == PackStatus::Kind::watching || m_watchIntake->waitingCount() > 0) &&
        !(m_status == statusAfterIngest()))
        setStatus(statusAfterIngest());
    if (m_watchIntake->waitingCount() > 0 && !m_watchRelook.isActive())
        m_watchRelook.start();
    watchWorkDone();
}

// Probes pack files again in place, as re-inspection does: id, cue number and Arena name stay.
QCoro::Task<> PackViewModel::refreshClips(QStringList paths, QHash<QString, FileStamp> stamps,
                                          std::optional<PackStatus> endStatus)
{
    QPointer<PackViewModel> self(this);
    setScanning(true);
    // The stamps come from the look just before: any change since shows at the next look.
    for (const QString &path : std::as_const(paths))
        m_probedStamps.insert(path, stamps.value(path));
    QList<MediaClip> fresh;
    for (qsizetype i = 0; i < paths.size(); ++i) {
        const auto clip = std::find_if(m_clips.cbegin(), m_clips.cend(), [&](const MediaClip &c) {
            return c.sourcePath() == paths[i];
        });
        if (clip == m_clips.cend()) // removed by the operator meanwhile
            continue;
        const QUuid id = clip->id;
        setStatus(PackStatus::checking(i + 1, paths.size(), clip->arenaName));
        MediaClip probed = co_await inspectOffThread(paths[i]);
        if (!self)
            co_return;
        probed.id = id;
        fresh.append(std::move(probed));
    }
    QList<MediaClip> clips = m_clips;
    QList<QUuid> ids;
    for (const MediaClip &probed : std::as_const(fresh)) {
        ids.append(probed.id);
        for (MediaClip &clip : clips) {
            if (clip.id != probed.id)
                continue;
            clip.takeProbedFields(probed);
            clip.contentFingerprint = probed.contentFingerprint;
            clip.isDuplicate = false;
            requestThumbnail(clip);
        }
    }
    setClips(std::move(clips));
    markDuplicates();
    Q_EMIT watchedClipsProbed(ids);
    setScanning(false);
    setStatus(endStatus ? *endStatus : statusAfterIngest());
}
