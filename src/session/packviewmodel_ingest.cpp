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
#include "session/watchfoldermonitor.h"

#include <QCoroFuture>
#include <QPointer>
#include <QtConcurrent>

QCoro::Task<MediaClip> PackViewModel::inspectOffThread(QString path, Fingerprint fingerprint)
{
    // The worker gets values only, never `this`.
    const std::shared_ptr<const MediaProbe> probe = m_services.probe;
    const InspectionRules rules = this->rules(); // read again for every file
    const bool withFingerprint = fingerprint == Fingerprint::now;
    // g++ 12 destroys temporaries inside a co_await expression twice, so every future is a
    // named local before it is awaited.
    QFuture<MediaClip> future = QtConcurrent::run([probe, rules, path, withFingerprint] {
        MediaClip probed = MediaInspector::inspect(path, rules, *probe);
        if (withFingerprint)
            probed.contentFingerprint =
                ContentFingerprint::make(path, probed.duration, probed.fileSize);
        return probed;
    });
    MediaClip clip = co_await future;
    co_return clip;
}

QFuture<QString> PackViewModel::fingerprintOffThread(const MediaClip &clip)
{
    return QtConcurrent::run(
        [path = clip.sourcePath(), duration = clip.duration, size = clip.fileSize] {
            return ContentFingerprint::make(path, duration, size);
        });
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
        setStatus(m_clips.isEmpty() ? PackStatus::empty() : PackStatus::ready(m_clips.size()));
        co_return;
    }

    const qsizetype base = m_clips.size();
    QList<MediaClip> added;
    added.reserve(fresh.size());
    // Probes stay strictly one after another; a clip's fingerprint is hashed on the second
    // core while the next file is probed.
    QFuture<QString> pendingFingerprint;
    for (qsizetype i = 0; i < fresh.size(); ++i) {
        setStatus(PackStatus::checking(i + 1, fresh.size(), PathNames::lastComponent(fresh[i])));
        MediaClip clip = co_await inspectOffThread(fresh[i], Fingerprint::later);
        if (!self)
            co_return;
        if (!added.isEmpty()) {
            added.back().contentFingerprint = co_await pendingFingerprint;
            if (!self)
                co_return;
        }
        pendingFingerprint = fingerprintOffThread(clip);
        clip.cueIndex = base + i + 1;
        clip.arenaName =
            ArenaNamer::makeName(clip.cueIndex, clip.originalName, m_showPrefix, m_zeroPad);
        requestThumbnail(clip);
        added.append(std::move(clip));
    }
    added.back().contentFingerprint = co_await pendingFingerprint;
    if (!self)
        co_return;

    QList<MediaClip> clips = m_clips;
    clips.append(added);
    setClips(std::move(clips));
    markDuplicates();
    if (!m_selectedClipID)
        setSelectedClipID(added.front().id);
    setScanning(false);
    if (m_watchFolder->isWatching()) {
        const std::optional<QString> folder = m_watchFolder->folder();
        setStatus(PackStatus::watching(folder ? PathNames::lastComponent(*folder) : QString()));
    } else {
        setStatus(PackStatus::ready(m_clips.size()));
    }
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
