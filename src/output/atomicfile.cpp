#include "atomicfile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <fcntl.h>
#include <unistd.h>

void syncFolder(const QString &folder)
{
    const int fd = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    ::fsync(fd);
    ::close(fd);
}

Status writeFileAtomically(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return Error{Error::Kind::WriteFailed, file.errorString(), path, 0};
    if (file.write(bytes) != bytes.size()) {
        const QString why = file.errorString();
        file.cancelWriting();
        return Error{Error::Kind::WriteFailed, why, path, 0};
    }
    // QSaveFile syncs the data before the rename; the folder entry needs its own flush.
    if (!file.commit())
        return Error{Error::Kind::WriteFailed, file.errorString(), path, 0};
    syncFolder(QFileInfo(path).absolutePath());
    return Done{};
}
