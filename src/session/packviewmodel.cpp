#include "packviewmodel.h"

#include "l10n/apppreferences.h"
#include "l10n/localizationmanager.h"
#include "model/arenanamer.h"
#include "output/packreport.h"
#include "session/duplicates.h"
#include "session/probebatch.h"
#include "session/watchfoldermonitor.h"
#include "session/watchintake.h"

PackViewModel::PackViewModel(Services services, QObject *parent)
    : QObject(parent)
    , m_services(std::move(services))
    , m_watchFolder(std::make_unique<WatchFolderMonitor>())
    , m_watchIntake(std::make_unique<WatchIntake>())
    , m_convertFormat(ArenaConvertFormat::proRes422)
{
    if (!m_services.localization)
        m_services.localization = &LocalizationManager::shared();
    if (!m_services.preferences)
        m_services.preferences = &AppPreferences::shared();
    if (!m_services.clock)
        m_services.clock = systemClock();
    m_liveRules = std::make_shared<LiveRules>(rules());
    connect(this, &PackViewModel::screenProfileChanged, this, &PackViewModel::publishRules);
    connect(this, &PackViewModel::warnOnEmbeddedAudioChanged, this, &PackViewModel::publishRules);
    connect(this, &PackViewModel::warnOnHEVCChanged, this, &PackViewModel::publishRules);
    m_watchRelook.setSingleShot(true);
    m_watchRelook.setTimerType(Qt::PreciseTimer); // never early: the looks must be far enough apart
    m_watchRelook.setInterval(int(WatchIntake::kSettleMs));
    connect(&m_watchRelook, &QTimer::timeout, this, [this] { lookAtWatchFolder(); });
}

PackViewModel::~PackViewModel()
{
    // A conversion still running on the pool must not report into a dead session.
    m_conversionStop.request_stop();
    m_exportStop.request_stop();
    // An ingest worker posts into this object; it stops within one probe and must be gone
    // before the object is.
    m_ingestStop.request_stop();
    for (QFuture<void> &worker : m_ingestWorkers)
        worker.waitForFinished();
}

void PackViewModel::publishRules()
{
    m_liveRules->set(rules());
}

void PackViewModel::pruneIngestWorkers()
{
    m_ingestWorkers.removeIf([](const QFuture<void> &worker) { return worker.isFinished(); });
}

// --- published state -------------------------------------------------------------------------

#define CUEBOX_SETTER(Name, member, signal)                                                        \
    void PackViewModel::Name(decltype(member) value)                                               \
    {                                                                                              \
        if (member == value)                                                                       \
            return;                                                                                \
        member = std::move(value);                                                                 \
        Q_EMIT signal();                                                                           \
    }

void PackViewModel::setClips(QList<MediaClip> clips)
{
    m_clips = std::move(clips);
    Q_EMIT clipsChanged();
}

void PackViewModel::setSelectedClipID(const std::optional<QUuid> &id)
{
    if (m_selectedClipID == id)
        return;
    m_selectedClipID = id;
    Q_EMIT selectedClipIDChanged();
}

void PackViewModel::setStatus(const PackStatus &status)
{
    // Re-assigning the same status still notifies: a repeated "Names updated" is news.
    m_status = status;
    Q_EMIT statusChanged();
}

void PackViewModel::setLastExportURL(const std::optional<QUrl> &url)
{
    if (m_lastExportURL == url)
        return;
    m_lastExportURL = url;
    Q_EMIT lastExportURLChanged();
}

void PackViewModel::setProjectURL(const std::optional<QUrl> &url)
{
    if (m_projectURL == url)
        return;
    m_projectURL = url;
    Q_EMIT projectURLChanged();
}

void PackViewModel::setLastBackupURL(const std::optional<QUrl> &url)
{
    if (m_lastBackupURL == url)
        return;
    m_lastBackupURL = url;
    Q_EMIT lastBackupURLChanged();
}

CUEBOX_SETTER(setScanning, m_isScanning, isScanningChanged)
CUEBOX_SETTER(setShowPrefix, m_showPrefix, showPrefixChanged)
CUEBOX_SETTER(setZeroPad, m_zeroPad, zeroPadChanged)
CUEBOX_SETTER(setPreferredWidth, m_preferredWidth, preferredWidthChanged)
CUEBOX_SETTER(setWarnOnEmbeddedAudio, m_warnOnEmbeddedAudio, warnOnEmbeddedAudioChanged)
CUEBOX_SETTER(setWarnOnHEVC, m_warnOnHEVC, warnOnHEVCChanged)
CUEBOX_SETTER(setScreenProfileField, m_screenProfile, screenProfileChanged)
CUEBOX_SETTER(setShowRenameStudio, m_showRenameStudio, showRenameStudioChanged)
CUEBOX_SETTER(setShowConvertStudio, m_showConvertStudio, showConvertStudioChanged)
CUEBOX_SETTER(setConverting, m_isConverting, isConvertingChanged)
CUEBOX_SETTER(setConvertProgress, m_convertProgress, convertProgressChanged)
CUEBOX_SETTER(setConvertFormat, m_convertFormat, convertFormatChanged)
CUEBOX_SETTER(setStripAudioOnConvert, m_stripAudioOnConvert, stripAudioOnConvertChanged)
CUEBOX_SETTER(setForceEvenDimensions, m_forceEvenDimensions, forceEvenDimensionsChanged)
CUEBOX_SETTER(setConvertOnlyProblems, m_convertOnlyProblems, convertOnlyProblemsChanged)
CUEBOX_SETTER(setDuplicateCount, m_duplicateCount, duplicateCountChanged)
CUEBOX_SETTER(setExportProgress, m_exportProgress, exportProgressChanged)
CUEBOX_SETTER(setExporting, m_isExporting, isExportingChanged)
CUEBOX_SETTER(setVerifying, m_isVerifying, isVerifyingChanged)
CUEBOX_SETTER(setVerifyProgress, m_verifyProgress, verifyProgressChanged)

#undef CUEBOX_SETTER

QString PackViewModel::statusText() const
{
    return m_status.text(m_services.localization->strings());
}

QString PackViewModel::text(const char *key) const
{
    return m_services.localization->strings()[QString::fromLatin1(key)];
}

// --- derived values --------------------------------------------------------------------------

std::optional<MediaClip> PackViewModel::selectedClip() const
{
    if (!m_selectedClipID)
        return std::nullopt;
    for (const MediaClip &clip : m_clips) {
        if (clip.id == *m_selectedClipID)
            return clip;
    }
    return std::nullopt;
}

qint64 PackViewModel::clipsWithAudioCount() const
{
    return std::count_if(m_clips.cbegin(), m_clips.cend(),
                         [](const MediaClip &c) { return c.hasAudio && !c.isImage(); });
}

qint64 PackViewModel::problemClipsCount() const
{
    return std::count_if(m_clips.cbegin(), m_clips.cend(), [](const MediaClip &c) {
        const ClipHealth health = c.health();
        return health == ClipHealth::warn || health == ClipHealth::fail;
    });
}

InspectionRules PackViewModel::rules() const
{
    return InspectionRules::make(m_screenProfile, m_warnOnEmbeddedAudio, m_warnOnHEVC);
}

PreShowChecklist PackViewModel::checklist() const
{
    return PreShowChecklist::build(m_clips, m_lastExportURL, m_lastBackupURL);
}

// --- clip-list edits -------------------------------------------------------------------------

void PackViewModel::clear()
{
    setClips({});
    setSelectedClipID(std::nullopt);
    setStatus(PackStatus::idle());
    setLastExportURL(std::nullopt);
    setLastBackupURL(std::nullopt);
    setProjectURL(std::nullopt);
    setDuplicateCount(0);
}

void PackViewModel::remove(QUuid id)
{
    // An unknown id removes nothing, but the pack is still renumbered and says so.
    m_clips.removeIf([&](const MediaClip &c) { return c.id == id; });
    if (m_selectedClipID == id)
        setSelectedClipID(m_clips.isEmpty() ? std::nullopt : std::optional(m_clips.front().id));
    renameAll();
}

void PackViewModel::moveUp(QUuid id)
{
    for (qsizetype i = 1; i < m_clips.size(); ++i) {
        if (m_clips[i].id == id) {
            m_clips.swapItemsAt(i, i - 1);
            renameAll();
            return;
        }
    }
}

void PackViewModel::moveDown(QUuid id)
{
    for (qsizetype i = 0; i + 1 < m_clips.size(); ++i) {
        if (m_clips[i].id == id) {
            m_clips.swapItemsAt(i, i + 1);
            renameAll();
            return;
        }
    }
}

void PackViewModel::moveClip(qsizetype from, qsizetype to)
{
    if (from < 0 || from >= m_clips.size() || to < 0 || to >= m_clips.size() || from == to)
        return;
    m_clips.move(from, to);
    renameAll();
}

void PackViewModel::renameAll()
{
    QList<MediaClip> clips = m_clips;
    ArenaNamer::reindex(clips, m_showPrefix, m_zeroPad);
    setClips(std::move(clips));
    setStatus(PackStatus::renamed());
}

void PackViewModel::setArenaName(QUuid id, const QString &typed)
{
    for (qsizetype i = 0; i < m_clips.size(); ++i) {
        if (m_clips[i].id == id) {
            const QString clean = ArenaNamer::sanitize(typed);
            if (clean == m_clips[i].arenaName)
                return;
            m_clips[i].arenaName = clean;
            Q_EMIT clipsChanged();
            return;
        }
    }
}

void PackViewModel::markDuplicates()
{
    QList<MediaClip> clips = m_clips;
    const qint64 count = Duplicates::markDuplicates(clips);
    setClips(std::move(clips));
    setDuplicateCount(count);
}

void PackViewModel::removeDuplicatesKeepingFirst()
{
    QList<MediaClip> clips = m_clips;
    std::optional<QUuid> selected = m_selectedClipID;
    const qint64 count =
        Duplicates::removeDuplicatesKeepingFirst(clips, selected, m_showPrefix, m_zeroPad);
    setClips(std::move(clips));
    setSelectedClipID(selected);
    setStatus(PackStatus::renamed());
    setDuplicateCount(count);
}

void PackViewModel::applyNames(const QList<MediaClip> &clips, const QString &prefix, bool zeroPad)
{
    setShowPrefix(prefix);
    setZeroPad(zeroPad);
    setClips(clips);
    setStatus(PackStatus::renamed());
}

void PackViewModel::applyPrefixTemplate(PrefixTemplate prefixTemplate)
{
    setShowPrefix(prefixValue(prefixTemplate));
    renameAll();
}

void PackViewModel::setScreenProfile(ScreenProfile profile)
{
    setScreenProfileField(profile);
    setPreferredWidth(parameters(profile).referenceWidth);
    reinspectAll(); // runs on; the call returns at its first suspension
}

void PackViewModel::requestThumbnail(const MediaClip &clip)
{
    if (m_services.requestThumbnail)
        m_services.requestThumbnail(clip);
}
