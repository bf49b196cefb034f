// Pack export and the project file.
#include "packviewmodel.h"

#include "l10n/apppreferences.h"
#include "model/pathnames.h"
#include "output/packexporter.h"
#include "output/packproject.h"
#include "session/platform.h"
#include "session/progressbox.h"

#include <QCoroFuture>
#include <QFileInfo>
#include <QPointer>
#include <QtConcurrent>

QCoro::Task<> PackViewModel::exportPack(std::optional<QString> toFolder)
{
    if (m_clips.isEmpty()) {
        setStatus(PackStatus::addFirst());
        co_return;
    }
    if (!m_services.panels)
        co_return;
    const std::optional<QString> start =
        toFolder ? toFolder : m_services.preferences->lastExportFolderURL();
    const std::optional<QString> chosen = m_services.panels->chooseFolder(
        text("panel.export.message"), text("panel.export.prompt"), start);
    if (!chosen)
        co_return;
    QCoro::Task<> writing = exportPackInto(*chosen);
    co_await writing;
}

QCoro::Task<> PackViewModel::exportPackInto(QString folder)
{
    if (m_clips.isEmpty()) {
        setStatus(PackStatus::addFirst());
        co_return;
    }
    // Remembered before the export, so a folder is remembered even if the export then fails.
    m_services.preferences->rememberExportFolder(folder);

    QPointer<PackViewModel> self(this);
    PackExporter::Options options;
    options.showPrefix = m_showPrefix;
    options.verifyCopies = m_services.preferences->verifyCopies();
    const QList<MediaClip> clips = m_clips;
    const QDateTime now = m_services.clock();
    const PackExporter::CopyFile copy = m_services.copyFile;
    m_exportStop = std::stop_source();
    const std::stop_token stop = m_exportStop.get_token();

    setExportProgress(0.0);
    setExporting(true);
    QStringList sources;
    for (const MediaClip &clip : clips)
        sources.append(clip.sourcePath());
    // Named, not temporaries of the co_await expression: GCC 12 destroys those twice.
    const std::function<qint64()> needed = [sources] { return RoomCheck::copyBytes(sources); };
    QCoro::Task<bool> checking = checkRoom(folder, needed, &PackViewModel::setExporting);
    if (const bool room = co_await checking; !room)
        co_return;
    // Shown at once; the sampler below moves it on while the copies run.
    setStatus(PackStatus::exporting(1, clips.size(), PackExporter::mediaFileName(clips.front())));
    auto box = std::make_shared<ProgressBox<PackExporter::Progress>>();
    auto sampler =
        sampleProgress<PackExporter::Progress>(this, box, [this](const PackExporter::Progress &p) {
            setStatus(PackStatus::exporting(p.index, p.total, p.fileName));
            setExportProgress(p.bytesTotal > 0 ? double(p.bytesDone) / double(p.bytesTotal) : 0.0);
        });
    QFuture<Result<QString>> future = QtConcurrent::run([=] {
        return PackExporter::exportPack(
            clips, folder, options, now, copy,
            [box](const PackExporter::Progress &p) { box->store(p); }, stop);
    });
    Result<QString> pack = co_await future;
    if (!self)
        co_return;
    sampler.reset();
    setExporting(false);
    if (!pack) {
        setStatus(PackStatus::error(PackExporter::description(pack.error())));
        co_return;
    }
    setExportProgress(1.0);
    setLastExportURL(QUrl::fromLocalFile(*pack));
    setStatus(PackStatus::saved(PathNames::lastComponent(*pack)));
    if (m_services.desktop)
        m_services.desktop->reveal(*pack);
}

void PackViewModel::saveProject()
{
    if (m_clips.isEmpty()) {
        setStatus(PackStatus::addFirst());
        return;
    }
    if (!m_services.panels)
        return;
    QString proposed = PackProject::proposedFileName(m_showPrefix);
    std::optional<QString> start;
    if (m_projectURL) {
        const QFileInfo previous(m_projectURL->toLocalFile());
        proposed = previous.fileName();
        start = previous.absolutePath();
    }
    const std::optional<QString> chosen = m_services.panels->chooseSaveFile(
        text("project.save.message"), text("project.save.prompt"), proposed, start);
    if (!chosen)
        return;

    PackProjectFile file;
    file.showPrefix = m_showPrefix;
    file.zeroPad = m_zeroPad;
    file.preferredWidth = m_preferredWidth;
    file.warnOnEmbeddedAudio = m_warnOnEmbeddedAudio;
    file.warnOnHEVC = m_warnOnHEVC;
    file.convertFormat = rawValue(m_convertFormat);
    file.stripAudioOnConvert = m_stripAudioOnConvert;
    file.forceEvenDimensions = m_forceEvenDimensions;
    file.createdAt = m_services.clock();
    for (const MediaClip &clip : std::as_const(m_clips))
        file.clips.append({clip.id, clip.sourcePath(), std::nullopt, clip.originalName,
                           clip.arenaName, clip.cueIndex});
    const Status written = PackProject::write(file, *chosen);
    if (!written) {
        setStatus(PackStatus::error(written.error().message));
        return;
    }
    setProjectURL(QUrl::fromLocalFile(*chosen));
    setStatus(PackStatus::projectSaved(PathNames::lastComponent(*chosen)));
}

void PackViewModel::openProject()
{
    if (!m_services.panels)
        return;
    const std::optional<QString> chosen = m_services.panels->chooseOpenFile(
        text("project.open.message"), text("project.open.prompt"));
    if (chosen)
        loadProject(*chosen);
}

QCoro::Task<> PackViewModel::loadProject(QString path)
{
    QPointer<PackViewModel> self(this);
    QFuture<std::optional<PackProjectFile>> reading =
        QtConcurrent::run([path] { return PackProject::read(path); });
    const std::optional<PackProjectFile> file = co_await reading;
    if (!self)
        co_return;
    if (!file) {
        setScanning(false);
        setStatus(PackStatus::error(PackProject::kUnreadableText));
        co_return;
    }
    setShowPrefix(file->showPrefix);
    setZeroPad(file->zeroPad);
    setPreferredWidth(file->preferredWidth);
    setWarnOnEmbeddedAudio(file->warnOnEmbeddedAudio);
    setWarnOnHEVC(file->warnOnHEVC);
    setStripAudioOnConvert(file->stripAudioOnConvert);
    setForceEvenDimensions(file->forceEvenDimensions);
    if (const std::optional<ArenaConvertFormat> format =
            arenaConvertFormatFromRaw(file->convertFormat))
        setConvertFormat(*format);

    setScanning(true);
    setStatus(PackStatus::scanning());
    QList<MediaClip> loaded;
    qint64 missing = 0;
    for (qsizetype i = 0; i < file->clips.size(); ++i) {
        const PackProjectClip &stored = file->clips[i];
        setStatus(PackStatus::checking(i + 1, file->clips.size(), stored.originalName));
        // Linux has no security-scoped bookmarks: a stored one is ignored and the path decides.
        if (!QFileInfo::exists(stored.path)) {
            ++missing;
            continue;
        }
        MediaClip clip = co_await inspectOffThread(stored.path);
        if (!self)
            co_return;
        clip.id = stored.id;
        clip.originalName = stored.originalName;
        clip.arenaName = stored.arenaName;
        clip.cueIndex = stored.cueIndex;
        clip.contentFingerprint.reset();
        clip.isDuplicate = false;
        requestThumbnail(clip);
        loaded.append(std::move(clip));
    }
    std::stable_sort(loaded.begin(), loaded.end(), [](const MediaClip &a, const MediaClip &b) {
        return a.cueIndex < b.cueIndex;
    });
    setClips(loaded);
    setSelectedClipID(loaded.isEmpty() ? std::nullopt : std::optional(loaded.front().id));
    setProjectURL(QUrl::fromLocalFile(path));
    setScanning(false);
    if (loaded.isEmpty())
        setStatus(PackStatus::empty());
    else if (missing > 0)
        setStatus(PackStatus::projectLoaded(loaded.size(), missing));
    else
        setStatus(PackStatus::ready(loaded.size()));
}
