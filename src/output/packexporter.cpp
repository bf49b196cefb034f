#include "packexporter.h"

#include "atomicfile.h"
#include "filecopy.h"
#include "manifest.h"
#include "model/arenanamer.h"
#include "model/pathnames.h"
#include "timestamp.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace PackExporter {

namespace {

QString csvField(const QString &text)
{
    if (!text.contains(u',') && !text.contains(u'"') && !text.contains(u'\n'))
        return text;
    QString quoted = text;
    quoted.replace(QStringLiteral("\""), QStringLiteral("\"\""));
    return u'"' + quoted + u'"';
}

QString csvLine(const MediaClip &clip)
{
    QStringList kinds;
    for (const ClipIssue &issue : clip.issues)
        kinds.append(rawValue(issue.kind));
    return QStringList{QString::number(clip.cueIndex),
                       clip.arenaName,
                       csvField(clip.originalName),
                       rawValue(clip.health()),
                       clip.resolutionLabel(),
                       clip.durationLabel(),
                       clip.videoCodec.value_or(QString()),
                       csvField(kinds.join(QStringLiteral("; ")))}
        .join(u',');
}

Error fileError(const QString &message, const QString &path)
{
    return Error{Error::Kind::WriteFailed, message, path, 0};
}

} // namespace

QString description(const Error &error)
{
    // A stopped copy says so in the export's own words. The empty pack's error carries its
    // fixed text as its message, so no kind is mapped to it: an invalid value of another kind
    // (a manifest that cannot be encoded) keeps its own description.
    if (error.kind == Error::Kind::Cancelled)
        return kCancelledText;
    if (error.path.isEmpty())
        return error.message;
    return error.message + QStringLiteral(": ") + error.path;
}

QString folderName(const QString &showPrefix, const QDateTime &now)
{
    const QString stamp = folderTimestamp(now);
    if (showPrefix.isEmpty()) // tested before sanitizing: "!!!" still gives "Cuebox__…"
        return QStringLiteral("Cuebox_") + stamp;
    return QStringLiteral("Cuebox_") + ArenaNamer::sanitize(showPrefix) + u'_' + stamp;
}

QString mediaFileName(const MediaClip &clip)
{
    const QString extension = PathNames::extension(clip.sourcePath());
    return extension.isEmpty() ? clip.arenaName : clip.arenaName + u'.' + extension;
}

QByteArray cuesCsv(const QList<MediaClip> &clips)
{
    QStringList lines{QStringLiteral("cue,arena_name,original_name,health,resolution,duration,"
                                     "codec,issues")};
    for (const MediaClip &clip : clips)
        lines.append(csvLine(clip));
    return lines.join(u'\n').toUtf8();
}

QByteArray readme()
{
    return QString::fromUtf8(
               "Cuebox pack\n"
               "=================\n"
               "1. Открой папку media/ в Resolume Arena (File → Import или drag into "
               "Composition).\n"
               "2. Имена файлов уже в формате cue: 01_..., 02_...\n"
               "3. cues.csv / manifest.json — шпаргалка для режиссёра и бэкапа.\n"
               "\n"
               "Проверь жёлтые/красные клипы в отчёте до выезда.")
        .toUtf8();
}

Result<QString> exportPack(const QList<MediaClip> &clips, const QString &to,
                           const Options &options, const QDateTime &now, const CopyFile &copy,
                           const std::function<void(const Progress &)> &progress,
                           std::stop_token stop)
{
    if (clips.isEmpty())
        return Error{Error::Kind::Invalid, kEmptyText, {}, 0};
    const QString pack = QDir(to).filePath(folderName(options.showPrefix, now));
    const QString media = QDir(pack).filePath(QStringLiteral("media"));
    if (!QDir().mkpath(media))
        return fileError(QStringLiteral("Could not create the folder"), media);

    Progress state;
    state.total = clips.size();
    for (const MediaClip &clip : clips)
        state.bytesTotal += qMax<qint64>(0, QFileInfo(clip.sourcePath()).size());

    QList<MediaClip> exported;
    exported.reserve(clips.size());
    for (const MediaClip &clip : clips) {
        const QString name = mediaFileName(clip);
        const QString destination = QDir(media).filePath(name);
        if (options.copyMedia) {
            if (stop.stop_requested())
                return Error{Error::Kind::Cancelled, kCancelledText, {}, 0};
            ++state.index;
            state.fileName = name;
            if (progress)
                progress(state);
            // Copied under a hidden name first, so no half-written file ever carries the
            // clip's name, then renamed into place.
            const QString partial = QDir(media).filePath(u'.' + name + QStringLiteral(".partial"));
            const auto added = [&](qint64 n) {
                state.bytesDone += n;
                if (progress)
                    progress(state);
            };
            const Status copied = copy ? copy(clip.sourcePath(), partial, stop, added)
                                       : copyFileFast(clip.sourcePath(), partial, stop, added);
            if (!copied) {
                QFile::remove(partial);
                return copied.error();
            }
            if (QFileInfo::exists(destination) && !QFile::remove(destination)) {
                QFile::remove(partial);
                return fileError(QStringLiteral("Could not replace the file"), destination);
            }
            if (!QFile::rename(partial, destination)) {
                QFile::remove(partial);
                return fileError(QStringLiteral("Could not write the file"), destination);
            }
        }
        MediaClip copyOfClip = clip;
        copyOfClip.sourceURL = QUrl::fromLocalFile(destination);
        exported.append(std::move(copyOfClip));
    }
    syncFolder(media);

    if (options.includeManifest) {
        const Status written = Manifest::write(exported, pack, options.showPrefix, now);
        if (!written)
            return written.error();
    }
    if (options.includeCSV) {
        const Status written =
            writeFileAtomically(QDir(pack).filePath(QStringLiteral("cues.csv")), cuesCsv(exported));
        if (!written)
            return written.error();
    }
    const Status written =
        writeFileAtomically(QDir(pack).filePath(QStringLiteral("README.txt")), readme());
    if (!written)
        return written.error();
    syncFolder(pack);
    return pack;
}

} // namespace PackExporter
