#include "packexporter.h"

#include "atomicfile.h"
#include "checksumfile.h"
#include "jsonwriter.h"
#include "manifest.h"
#include "model/arenanamer.h"
#include "model/filesystem.h"
#include "model/pathnames.h"
#include "sha256.h"
#include "timestamp.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <future>
#include <mutex>

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

} // namespace

QString description(const Error &error)
{
    // A stopped copy and an empty pack say so in the export's own words; any other invalid
    // value (a manifest that cannot be encoded) keeps its own description.
    if (error.kind == Error::Kind::Cancelled)
        return kCancelledText;
    if (error.kind == Error::Kind::Empty)
        return kEmptyText;
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
    return QString::fromUtf8("Cuebox pack\n"
                             "=================\n"
                             "1. Открой папку media/ в Resolume Arena (File → Import или drag into "
                             "Composition).\n"
                             "2. Имена файлов уже в формате cue: 01_..., 02_...\n"
                             "3. cues.csv / manifest.json — шпаргалка для режиссёра и бэкапа.\n"
                             "\n"
                             "Проверь жёлтые/красные клипы в отчёте до выезда.")
        .toUtf8();
}

Result<QString> exportPack(const QList<MediaClip> &clips, const QString &to, const Options &options,
                           const QDateTime &now, const CopyFile &copy,
                           const std::function<void(const Progress &)> &progress,
                           std::stop_token stop)
{
    if (clips.isEmpty())
        return Error{Error::Kind::Empty, kEmptyText, {}, 0};
    const QString pack = QDir(to).filePath(folderName(options.showPrefix, now));
    const QString media = QDir(pack).filePath(QStringLiteral("media"));
    if (const Status made = FileSystem::makeFolders(media); !made)
        return made.error();
    const ReadBack readBack = options.verifyCopies ? ReadBack::on : ReadBack::off;

    Progress state;
    state.total = clips.size();
    for (const MediaClip &clip : clips)
        state.bytesTotal += qMax<qint64>(0, QFileInfo(clip.sourcePath()).size());
    if (readBack == ReadBack::on)
        state.bytesTotal *= 2;

    QList<MediaClip> exported;
    exported.reserve(clips.size());
    QList<ChecksumFile::Entry> sums;
    const auto addSum = [&sums](const QString &path, const QByteArray &digest) {
        // Two clips with one name: the later copy replaced the earlier, and so does its line.
        for (ChecksumFile::Entry &entry : sums) {
            if (entry.path == path) {
                entry.digest = digest;
                return;
            }
        }
        sums.append({path, digest});
    };
    // The read-back of one copy runs on its own thread while the next file is copied: the
    // device reads one while it writes the other, and the two hashes use both cores. At most
    // one check is in flight, so a failure stops the export after at most one more copy.
    std::mutex progressLock;
    const auto report = [&](qint64 n) {
        const std::lock_guard lock(progressLock);
        state.bytesDone += n;
        if (progress)
            progress(state);
    };
    std::future<Status> checking;
    const auto previousCheck = [&checking]() -> Status {
        return checking.valid() ? checking.get() : Status(Done{});
    };
    for (const MediaClip &clip : clips) {
        const QString name = mediaFileName(clip);
        const QString destination = QDir(media).filePath(name);
        if (options.copyMedia) {
            if (stop.stop_requested()) {
                previousCheck();
                return Error{Error::Kind::Cancelled, kCancelledText, {}, 0};
            }
            {
                const std::lock_guard lock(progressLock);
                ++state.index;
                state.fileName = name;
                if (progress)
                    progress(state);
            }
            // Two clips may share a name: their copies in flight must not.
            const QString partial = partialPath(destination, QString::number(state.index));
            const Result<QByteArray> digest =
                copyToPartial(clip.sourcePath(), partial, copy, stop, report);
            if (const Status previous = previousCheck(); !previous) {
                QFile::remove(partial);
                return previous.error();
            }
            if (!digest)
                return digest.error();
            addSum(QStringLiteral("media/") + name, *digest);
            checking = std::async(std::launch::async, [=, &report] {
                const Status placed =
                    placeChecked(partial, destination, *digest, readBack, stop, report);
                Sha256::releaseThreadState();
                return placed;
            });
        }
        MediaClip copyOfClip = clip;
        copyOfClip.sourceURL = QUrl::fromLocalFile(destination);
        exported.append(std::move(copyOfClip));
    }
    if (const Status last = previousCheck(); !last)
        return last.error();
    syncFolder(media);

    // Each text file is checked against the bytes meant for it and listed with their digest.
    const auto check = [&](const QString &name, const QByteArray &bytes) -> Status {
        const Result<QByteArray> digest =
            checkWritten(QDir(pack).filePath(name), bytes, readBack, stop);
        if (!digest)
            return digest.error();
        addSum(name, *digest);
        return Done{};
    };
    const auto writeAndCheck = [&](const QString &name, const QByteArray &bytes) -> Status {
        if (const Status written = writeFileAtomically(QDir(pack).filePath(name), bytes); !written)
            return written;
        return check(name, bytes);
    };
    if (options.includeManifest) {
        const Status written = Manifest::write(exported, pack, options.showPrefix, now);
        if (!written)
            return written.error();
        const Result<QByteArray> bytes =
            encodeJson(Manifest::build(exported, options.showPrefix, now));
        if (!bytes)
            return bytes.error();
        if (const Status checked = check(QStringLiteral("manifest.json"), *bytes); !checked)
            return checked.error();
    }
    if (options.includeCSV) {
        const Status written = writeAndCheck(QStringLiteral("cues.csv"), cuesCsv(exported));
        if (!written)
            return written.error();
    }
    if (const Status written = writeAndCheck(QStringLiteral("README.txt"), readme()); !written)
        return written.error();
    // Last, so that a pack with a checksum file is a finished pack.
    const Status written = writeFileAtomically(QDir(pack).filePath(ChecksumFile::kFileName),
                                               ChecksumFile::format(sums));
    if (!written)
        return written.error();
    syncFolder(pack);
    return pack;
}

} // namespace PackExporter
