#include "packbackup.h"

#include "atomicfile.h"
#include "checksumfile.h"
#include "model/filesystem.h"
#include "model/pathnames.h"

#include <QDir>
#include <QFileInfo>

namespace PackBackup {

Result<QString> backupFiles(const QStringList &sources, const QString &folder, const CopyFile &copy,
                            ReadBack readBack,
                            const std::function<void(const PackExporter::Progress &)> &progress,
                            std::stop_token stop)
{
    if (const Status made = FileSystem::makeFolders(folder); !made)
        return made.error();
    PackExporter::Progress state;
    state.total = sources.size();
    for (const QString &source : sources)
        state.bytesTotal += qMax<qint64>(0, QFileInfo(source).size());
    if (readBack == ReadBack::on)
        state.bytesTotal *= 2;

    QList<ChecksumFile::Entry> sums;
    for (const QString &source : sources) {
        const QString name = PathNames::lastComponent(source);
        QString candidate = QDir(folder).filePath(name);
        const QString stem = PathNames::deletingExtension(name);
        const QString extension = PathNames::extension(name);
        for (int k = 1; QFileInfo::exists(candidate); ++k) {
            candidate = QDir(folder).filePath(stem + u'_' + QString::number(k) +
                                              (extension.isEmpty() ? QString() : u'.' + extension));
        }
        ++state.index;
        state.fileName = PathNames::lastComponent(candidate);
        if (progress)
            progress(state);
        const Result<QByteArray> digest =
            copyVerified(source, candidate, copy, readBack, stop, [&](qint64 n) {
                state.bytesDone += n;
                if (progress)
                    progress(state);
            });
        if (!digest)
            return digest.error();
        sums.append({state.fileName, *digest});
    }
    syncFolder(folder);
    const Status written = writeFileAtomically(QDir(folder).filePath(ChecksumFile::kFileName),
                                               ChecksumFile::format(sums));
    if (!written)
        return written.error();
    return folder;
}

} // namespace PackBackup
