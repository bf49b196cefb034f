// Pack conversion with backup, audio stripping, cancelling, and the Alley hand-off.
#include "packviewmodel.h"

#include "l10n/apppreferences.h"
#include "media/mediaconversion.h"
#include "model/arenanamer.h"
#include "model/filesystem.h"
#include "model/pathnames.h"
#include "output/packbackup.h"
#include "output/timestamp.h"
#include "session/alley.h"
#include "session/platform.h"
#include "session/progressbox.h"
#include "session/workfolder.h"

#include <QCoroFuture>
#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QtConcurrent>

namespace {

const QString kCancelled = QStringLiteral("Cancelled");

QString describe(const Error &error)
{
    if (error.kind == Error::Kind::Cancelled)
        return kCancelled;
    return error.path.isEmpty() ? error.message : error.message + QStringLiteral(": ") + error.path;
}

} // namespace

void PackViewModel::replaceConverted(const QUuid &id, const MediaClip &fresh)
{
    for (qsizetype i = 0; i < m_clips.size(); ++i) {
        if (m_clips[i].id != id)
            continue;
        QList<MediaClip> clips = m_clips;
        MediaClip &entry = clips[i];
        entry.sourceURL = fresh.sourceURL;
        entry.originalName = fresh.originalName;
        entry.takeProbedFields(fresh); // id, cue, Arena name, fingerprint and mark stay
        requestThumbnail(entry);
        setClips(std::move(clips));
        return;
    }
}

QCoro::Task<> PackViewModel::convertBatch(QList<MediaClip> targets, QString folder, bool dropAudio,
                                          bool stripping)
{
    QPointer<PackViewModel> self(this);
    if (!m_services.conversion) {
        setStatus(PackStatus::error(QStringLiteral("Unsupported media")));
        co_return;
    }
    const std::stop_token stop = m_conversionStop.get_token();
    setConverting(true); // already on when a backup came first
    setConvertProgress(0.0);
    // Read once: switching a setting in the studio while the batch runs must not change the
    // clips still to come.
    const ConvertOptions options{m_convertFormat, dropAudio, m_forceEvenDimensions};
    const qsizetype n = targets.size();
    qint64 written = 0;
    for (qsizetype i = 0; i < n; ++i) {
        const MediaClip clip = targets[i];
        setStatus(PackStatus::converting(i + 1, n, clip.arenaName));
        auto box = std::make_shared<ProgressBox<double>>();
        auto sampler = sampleProgress<double>(
            this, box,
            [this, i, n](const double &p) {
                setConvertProgress((double(i) + p) / double(qMax<qsizetype>(n, 1)));
            },
            120);
        // Stills convert as stills whatever the target format says.
        const bool image = clip.isImage() && !stripping;
        const bool even = options.forceEvenDimensions;
        const std::shared_ptr<const MediaConversion> conversion = m_services.conversion;
        QFuture<Result<QString>> future = QtConcurrent::run([=]() -> Result<QString> {
            const auto report = [box](double p) { box->store(p); };
            if (image)
                return conversion->convertImage(clip, folder, even, report);
            return conversion->convertVideo(clip, folder, options, report, stop);
        });
        Result<QString> result = co_await future;
        if (!self)
            co_return;
        sampler.reset();
        if (!result) {
            setConverting(false);
            setStatus(PackStatus::error(result.error().message));
            co_return;
        }
        ++written;
        setConvertProgress(double(i + 1) / double(qMax<qsizetype>(n, 1)));
        MediaClip fresh = co_await inspectOffThread(*result);
        if (!self)
            co_return;
        replaceConverted(clip.id, fresh);
    }
    setConverting(false);
    setConvertProgress(1.0);
    setStatus(PackStatus::converted(written));
    if (!stripping) {
        setLastExportURL(QUrl::fromLocalFile(folder));
        if (m_services.desktop)
            m_services.desktop->reveal(folder);
    }
}

QCoro::Task<> PackViewModel::convertPack(std::optional<bool> onlyProblems)
{
    // One conversion at a time: a second start while one runs is refused, not queued, so two
    // batches never fight over the same progress bar and output names.
    if (m_isConverting)
        co_return;
    const bool problemsOnly = onlyProblems.value_or(m_convertOnlyProblems);
    QList<MediaClip> selection;
    if (problemsOnly) {
        for (const MediaClip &clip : std::as_const(m_clips)) {
            const ClipHealth health = clip.health();
            if (health == ClipHealth::warn || health == ClipHealth::fail)
                selection.append(clip);
        }
        if (selection.isEmpty()) {
            setStatus(PackStatus::noProblems());
            co_return;
        }
    } else {
        selection = m_clips;
        if (selection.isEmpty()) {
            setStatus(PackStatus::addFirst());
            co_return;
        }
    }
    if (!m_services.panels)
        co_return;
    m_conversionStop = std::stop_source(); // a new batch starts uncancelled
    const std::optional<QString> chosen =
        m_services.panels->chooseFolder(text("panel.convert.message"), text("panel.convert.prompt"),
                                        m_services.preferences->lastExportFolderURL());
    if (!chosen)
        co_return;
    m_services.preferences->rememberExportFolder(*chosen);
    // Busy, and cancellable, from here on: a long backup is part of the batch, and a second
    // batch started meanwhile would write into the same folders.
    setConverting(true);
    setConvertProgress(0.0);

    const QString stamp = folderTimestamp(m_services.clock());
    const QString name =
        QStringLiteral("ArenaReady_") +
        (m_showPrefix.isEmpty() ? QString() : ArenaNamer::sanitize(m_showPrefix) + u'_') + stamp;
    const QString output = QDir(*chosen).filePath(name);
    const bool backup = m_services.preferences->autoBackupBeforeConvert();
    QStringList sources;
    for (const MediaClip &clip : std::as_const(selection))
        sources.append(clip.sourcePath());
    {
        // The backup and the converted files land side by side in the chosen folder.
        const ConvertOptions estimated{m_convertFormat, m_stripAudioOnConvert,
                                       m_forceEvenDimensions};
        // Named, not temporaries of the co_await expression: GCC 12 destroys those twice.
        const std::function<qint64()> needed = [=] {
            return RoomCheck::conversionBytes(selection, estimated) +
                   (backup ? RoomCheck::copyBytes(sources) : 0);
        };
        QCoro::Task<bool> checking = checkRoom(*chosen, needed, &PackViewModel::setConverting);
        if (const bool room = co_await checking; !room)
            co_return;
    }
    if (const Status made = FileSystem::makeFolders(output); !made) {
        setConverting(false);
        setStatus(PackStatus::error(describe(made.error())));
        co_return;
    }
    if (backup) {
        QPointer<PackViewModel> self(this);
        const QString backupFolder = QDir(*chosen).filePath(QStringLiteral("ArenaBackup_") + stamp);
        const std::stop_token stop = m_conversionStop.get_token();
        const CopyFile copy = m_services.copyFile;
        const ReadBack readBack =
            m_services.preferences->verifyCopies() ? ReadBack::on : ReadBack::off;
        auto box = std::make_shared<ProgressBox<PackExporter::Progress>>();
        auto sampler = sampleProgress<PackExporter::Progress>(
            this, box, [this](const PackExporter::Progress &p) {
                setStatus(PackStatus::backingUp(p.index, p.total, p.fileName));
            });
        QFuture<Result<QString>> copying = QtConcurrent::run([=] {
            return PackBackup::backupFiles(
                sources, backupFolder, copy, readBack,
                [box](const PackExporter::Progress &p) { box->store(p); }, stop);
        });
        Result<QString> copied = co_await copying;
        if (!self)
            co_return;
        if (!copied) {
            setConverting(false);
            setStatus(PackStatus::error(describe(copied.error())));
            co_return;
        }
        setLastBackupURL(QUrl::fromLocalFile(*copied));
    }
    co_await convertBatch(selection, output, m_stripAudioOnConvert, false);
}

QCoro::Task<> PackViewModel::stripAudioFromAll()
{
    QList<QUuid> ids;
    for (const MediaClip &clip : std::as_const(m_clips)) {
        if (clip.hasAudio && !clip.isImage())
            ids.append(clip.id);
    }
    if (ids.isEmpty()) {
        setStatus(PackStatus::noAudioToStrip());
        co_return;
    }
    co_await stripAudio(ids);
}

QCoro::Task<> PackViewModel::stripAudio(QList<QUuid> ids)
{
    if (m_isConverting)
        co_return;
    QList<MediaClip> targets;
    for (const MediaClip &clip : std::as_const(m_clips)) {
        if (ids.contains(clip.id) && clip.hasAudio && !clip.isImage())
            targets.append(clip);
    }
    if (targets.isEmpty())
        co_return;
    m_conversionStop = std::stop_source();
    // Busy from here on, as a pack conversion is: a second strip started during the room check
    // would write into the same working folder.
    setConverting(true);
    const Result<QString> folder = WorkFolder::prepareStripAudio();
    if (!folder) {
        setConverting(false);
        setStatus(PackStatus::error(describe(folder.error())));
        co_return;
    }
    {
        const ConvertOptions estimated{m_convertFormat, true, m_forceEvenDimensions};
        const std::function<qint64()> needed = [=] {
            return RoomCheck::conversionBytes(targets, estimated);
        };
        QCoro::Task<bool> checking = checkRoom(*folder, needed, &PackViewModel::setConverting);
        if (const bool room = co_await checking; !room)
            co_return;
    }
    co_await convertBatch(targets, *folder, true, true);
}

void PackViewModel::cancelConversion()
{
    m_conversionStop.request_stop();
}

void PackViewModel::cancelExport()
{
    m_exportStop.request_stop();
}

void PackViewModel::openSelectedInAlley()
{
    QStringList files;
    for (const MediaClip &clip : std::as_const(m_clips))
        files.append(clip.sourcePath());
    if (files.isEmpty()) {
        setStatus(PackStatus::addFirst());
        return;
    }
    if (m_services.desktop)
        Alley::open(files, *m_services.desktop);
}
