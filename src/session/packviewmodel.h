#pragma once

#include "media/convert/convertformat.h"
#include "model/filestamp.h"
#include "model/mediaclip.h"
#include "model/prefixtemplate.h"
#include "model/result.h"
#include "model/screenprofile.h"
#include "output/packverifier.h"
#include "output/timestamp.h"
#include "output/verifiedcopy.h"
#include "session/packstatus.h"
#include "session/preshowchecklist.h"
#include "session/readahead.h"
#include "session/roomcheck.h"

#include <QCoroTask>
#include <QFuture>
#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>
#include <QTimer>
#include <QUrl>
#include <QUuid>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

class LiveRules;
class AppPreferences;
class Desktop;
class LocalizationManager;
class MediaConversion;
class MediaProbe;
class Panels;
class WatchFolderMonitor;
class WatchIntake;

// The one session of the application: the pack and every operation on it. Lives on the GUI
// thread; its long operations are coroutines there that await media work on a thread pool, so
// the window never blocks and state changes arrive in order. Every control and every
// command-line verb only calls this object.
class PackViewModel final : public QObject
{
    Q_OBJECT
public:
    struct Services {
        std::shared_ptr<const MediaProbe> probe;
        std::shared_ptr<const MediaConversion> conversion;
        // Copies one file during export and backup; tests inject failures here. Empty: the
        // hashing copy.
        CopyFile copyFile;
        // Free space of a target folder; tests inject small figures. Empty: the file system's.
        RoomCheck::FreeSpace freeSpace;
        Clock clock = systemClock();
        // Starts a clip's thumbnail in the background; empty: none (the command line).
        std::function<void(const MediaClip &)> requestThumbnail;
        // How an ingest reads ahead of its probe; tests slow the reads down, benchmarks switch
        // it off (depth 0) to compare.
        ReadAhead::Options readAhead;
        Panels *panels = nullptr;
        Desktop *desktop = nullptr;
        LocalizationManager *localization = nullptr;
        AppPreferences *preferences = nullptr;
    };

    explicit PackViewModel(Services services, QObject *parent = nullptr);
    ~PackViewModel() override;

    // Published state.
    const QList<MediaClip> &clips() const { return m_clips; }
    void setClips(QList<MediaClip> clips);
    bool isScanning() const { return m_isScanning; }
    const PackStatus &status() const { return m_status; }
    QString statusText() const;
    const std::optional<QUrl> &lastExportURL() const { return m_lastExportURL; }
    const std::optional<QUuid> &selectedClipID() const { return m_selectedClipID; }
    void setSelectedClipID(const std::optional<QUuid> &id);
    const std::optional<QUrl> &projectURL() const { return m_projectURL; }
    const QString &showPrefix() const { return m_showPrefix; }
    void setShowPrefix(QString prefix);
    bool zeroPad() const { return m_zeroPad; }
    void setZeroPad(bool on);
    qint64 preferredWidth() const { return m_preferredWidth; }
    void setPreferredWidth(qint64 width);
    bool warnOnEmbeddedAudio() const { return m_warnOnEmbeddedAudio; }
    void setWarnOnEmbeddedAudio(bool on);
    bool warnOnHEVC() const { return m_warnOnHEVC; }
    void setWarnOnHEVC(bool on);
    ScreenProfile screenProfile() const { return m_screenProfile; }
    bool showRenameStudio() const { return m_showRenameStudio; }
    void setShowRenameStudio(bool on);
    bool showConvertStudio() const { return m_showConvertStudio; }
    void setShowConvertStudio(bool on);
    bool isConverting() const { return m_isConverting; }
    double convertProgress() const { return m_convertProgress; }
    ArenaConvertFormat convertFormat() const { return m_convertFormat; }
    void setConvertFormat(ArenaConvertFormat format);
    bool stripAudioOnConvert() const { return m_stripAudioOnConvert; }
    void setStripAudioOnConvert(bool on);
    bool forceEvenDimensions() const { return m_forceEvenDimensions; }
    void setForceEvenDimensions(bool on);
    bool convertOnlyProblems() const { return m_convertOnlyProblems; }
    void setConvertOnlyProblems(bool on);
    const std::optional<QUrl> &lastBackupURL() const { return m_lastBackupURL; }
    qint64 duplicateCount() const { return m_duplicateCount; }
    double exportProgress() const { return m_exportProgress; }
    bool isExporting() const { return m_isExporting; }
    bool isVerifying() const { return m_isVerifying; }
    double verifyProgress() const { return m_verifyProgress; }
    // What the last verification found, for the command line's one line per problem.
    const std::optional<PackVerifier::Report> &lastVerifyReport() const
    {
        return m_lastVerifyReport;
    }
    WatchFolderMonitor &watchFolder() { return *m_watchFolder; }
    const WatchFolderMonitor &watchFolder() const { return *m_watchFolder; }

    // Derived on every read.
    std::optional<MediaClip> selectedClip() const;
    qint64 clipsWithAudioCount() const;
    qint64 problemClipsCount() const;
    InspectionRules rules() const;
    PreShowChecklist checklist() const;

    // Ingest and re-inspection.
    QCoro::Task<> ingest(QList<QUrl> urls);
    bool handleDrop(const QList<QUrl> &urls); // starts an ingest of the local files; always true
    void pickFolder();
    QCoro::Task<> reinspectAll();
    void setScreenProfile(ScreenProfile profile);
    void applyPrefixTemplate(PrefixTemplate prefixTemplate);

    // Clip-list edits.
    void clear();
    void remove(QUuid id); // ids by value: callers often pass one from clips() itself
    void moveUp(QUuid id);
    void moveDown(QUuid id);
    void moveClip(qsizetype from, qsizetype to); // drag-to-reorder, then renames
    void renameAll();
    void setArenaName(QUuid id, const QString &typed); // sanitized as typed
    void markDuplicates();
    void removeDuplicatesKeepingFirst();
    // The rename studio's result: names, cue numbers, prefix and padding at once.
    void applyNames(const QList<MediaClip> &clips, const QString &prefix, bool zeroPad);

    // Watch folder.
    void pickWatchFolder();
    void startWatching(const QString &folder);
    void stopWatching();

    // Output.
    QCoro::Task<> exportPack(std::optional<QString> toFolder = std::nullopt);
    // Straight into `folder`, no chooser: a recent export folder picked in the settings.
    QCoro::Task<> exportPackInto(QString folder);
    void saveProject();
    void openProject();
    QCoro::Task<> loadProject(QString path);
    // Re-hashes a pack or backup folder against its checksums.sha256.
    void verifyPack();
    QCoro::Task<> verifyPackAt(QString folder);
    void cancelVerify();

    // Conversion.
    QCoro::Task<> convertPack(std::optional<bool> onlyProblems = std::nullopt);
    QCoro::Task<> stripAudioFromAll();
    QCoro::Task<> stripAudio(QList<QUuid> ids);
    void cancelConversion(); // stops a running conversion or strip at once
    void cancelExport();
    void openSelectedInAlley();

Q_SIGNALS:
    void clipsChanged();
    void isScanningChanged();
    void statusChanged();
    void lastExportURLChanged();
    void selectedClipIDChanged();
    void projectURLChanged();
    void showPrefixChanged();
    void zeroPadChanged();
    void preferredWidthChanged();
    void warnOnEmbeddedAudioChanged();
    void warnOnHEVCChanged();
    void screenProfileChanged();
    void showRenameStudioChanged();
    void showConvertStudioChanged();
    void isConvertingChanged();
    void convertProgressChanged();
    void convertFormatChanged();
    void stripAudioOnConvertChanged();
    void forceEvenDimensionsChanged();
    void convertOnlyProblemsChanged();
    void lastBackupURLChanged();
    void duplicateCountChanged();
    void exportProgressChanged();
    void isExportingChanged();
    void isVerifyingChanged();
    void verifyProgressChanged();
    // Clips of the watched folder probed again in place because their files changed or went.
    void watchedClipsProbed(const QList<QUuid> &ids);

private:
    friend class PackViewModelTestAccess;

    void setScanning(bool on);
    void setStatus(const PackStatus &status);
    void setLastExportURL(const std::optional<QUrl> &url);
    void setProjectURL(const std::optional<QUrl> &url);
    void setConverting(bool on);
    void setConvertProgress(double progress);
    void setLastBackupURL(const std::optional<QUrl> &url);
    void setDuplicateCount(qint64 count);
    void setExportProgress(double progress);
    void setExporting(bool on);
    void setVerifying(bool on);
    void setVerifyProgress(double progress);
    // True when `folder` can take what `neededBytes` computes (on a worker); otherwise the
    // status shows both figures and `endBusy(false)` ends the work that asked. False, too,
    // when this object went away meanwhile: the caller then returns without touching it.
    QCoro::Task<bool> checkRoom(QString folder, std::function<qint64()> neededBytes,
                                void (PackViewModel::*endBusy)(bool));
    void setScreenProfileField(ScreenProfile profile);
    QString text(const char *key) const;
    void requestThumbnail(const MediaClip &clip);
    QCoro::Task<MediaClip> inspectOffThread(QString path);
    // The status an ingest or a refresh ends with: waiting or watching while a watch runs.
    PackStatus statusAfterIngest() const;
    QCoro::Task<> firstWatchIngest(QString folder);
    QCoro::Task<> lookAtWatchFolder();
    QCoro::Task<> refreshClips(QStringList paths, QHash<QString, FileStamp> stamps,
                               std::optional<PackStatus> endStatus);
    void watchWorkDone();
    void publishRules();
    void pruneIngestWorkers();
    void replaceConverted(const QUuid &id, const MediaClip &fresh);
    QCoro::Task<> convertBatch(QList<MediaClip> targets, QString folder, bool dropAudio,
                               bool stripping);

    Services m_services;
    std::unique_ptr<WatchFolderMonitor> m_watchFolder;
    std::unique_ptr<WatchIntake> m_watchIntake;
    QTimer m_watchRelook; // looks again while files are still being written
    int m_watchBusy = 0;  // looks and the ingests they start: one at a time
    bool m_watchLookAgain = false;
    QSet<QString> m_watchSeen; // files found below the folder, also through linked folders
    // Each pack file as looked at before its last probe: a watch compares it with the file now.
    QHash<QString, FileStamp> m_probedStamps;
    std::stop_source m_conversionStop;
    // Ingest workers read the rules from here and report into this session until stopped.
    std::shared_ptr<LiveRules> m_liveRules;
    std::stop_source m_ingestStop;
    QList<QFuture<void>> m_ingestWorkers;
    std::stop_source m_exportStop;
    std::stop_source m_verifyStop;

    QList<MediaClip> m_clips;
    bool m_isScanning = false;
    PackStatus m_status;
    std::optional<QUrl> m_lastExportURL;
    std::optional<QUuid> m_selectedClipID;
    std::optional<QUrl> m_projectURL;
    QString m_showPrefix;
    bool m_zeroPad = true;
    qint64 m_preferredWidth = 1920;
    bool m_warnOnEmbeddedAudio = true;
    bool m_warnOnHEVC = true;
    ScreenProfile m_screenProfile = ScreenProfile::landscape169;
    bool m_showRenameStudio = false;
    bool m_showConvertStudio = false;
    bool m_isConverting = false;
    double m_convertProgress = 0.0;
    ArenaConvertFormat m_convertFormat;
    bool m_stripAudioOnConvert = true;
    bool m_forceEvenDimensions = true;
    bool m_convertOnlyProblems = false;
    std::optional<QUrl> m_lastBackupURL;
    qint64 m_duplicateCount = 0;
    double m_exportProgress = 0.0;
    bool m_isExporting = false;
    bool m_isVerifying = false;
    double m_verifyProgress = 0.0;
    std::optional<PackVerifier::Report> m_lastVerifyReport;
};
