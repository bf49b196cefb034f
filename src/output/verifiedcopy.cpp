#include "verifiedcopy.h"

#include "filecopy.h"
#include "model/filesystem.h"
#include "sha256.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>

#include <stdio.h>
#include <unistd.h>

namespace {

Error fileError(const QString &message, const QString &path)
{
    return Error{Error::Kind::WriteFailed, message, path, 0};
}

// "Could not write the file (No space left on device)": what failed and the system's reason.
Error systemFileError(const QString &message, int code, const QString &path)
{
    return fileError(message + QStringLiteral(" (") + FileSystem::errorText(code) + u')', path);
}

} // namespace

QString partialPath(const QString &to, const QString &tag)
{
    const QFileInfo target(to);
    return target.dir().filePath(u'.' + target.fileName() +
                                 (tag.isEmpty() ? QString() : u'.' + tag) +
                                 QStringLiteral(".partial"));
}

Result<QByteArray> copyToPartial(const QString &from, const QString &partial, const CopyFile &copy,
                                 std::stop_token stop, const std::function<void(qint64)> &bytes)
{
    // The flush waits until the copy is checked and placed, which runs beside the next copy.
    Result<QByteArray> digest = copy ? copy(from, partial, stop, bytes)
                                     : copyFileHashing(from, partial, stop, bytes, Flush::later);
    if (!digest)
        QFile::remove(partial);
    return digest;
}

Status placeChecked(const QString &partial, const QString &to, const QByteArray &digest,
                    ReadBack readBack, std::stop_token stop,
                    const std::function<void(qint64)> &readBytes)
{
    if (readBack == ReadBack::on) { // the read-back flushes first
        const Result<QByteArray> onDevice = hashFromDevice(partial, stop, readBytes);
        if (!onDevice || *onDevice != digest) {
            QFile::remove(partial);
            return onDevice ? fileError(kCopyDiffersText, to) : onDevice.error();
        }
    } else if (const Status flushed = flushFile(partial); !flushed) {
        QFile::remove(partial);
        return flushed.error();
    }
    // rename(2) replaces an older file of the same name in one step.
    if (::rename(QFile::encodeName(partial).constData(), QFile::encodeName(to).constData()) != 0) {
        const int code = errno;
        QFile::remove(partial);
        return systemFileError(QStringLiteral("Could not write the file"), code, to);
    }
    return Done{};
}

Result<QByteArray> copyVerified(const QString &from, const QString &to, const CopyFile &copy,
                                ReadBack readBack, std::stop_token stop,
                                const std::function<void(qint64)> &bytes)
{
    const QString partial = partialPath(to);
    Result<QByteArray> digest = copyToPartial(from, partial, copy, stop, bytes);
    if (!digest)
        return digest;
    const Status placed = placeChecked(partial, to, *digest, readBack, stop, bytes);
    if (!placed)
        return placed.error();
    return digest;
}

Result<QByteArray> checkWritten(const QString &path, const QByteArray &bytes, ReadBack readBack,
                                std::stop_token stop)
{
    Sha256 hash;
    hash.update(bytes.constData(), bytes.size());
    const QByteArray digest = hash.finish();
    if (readBack == ReadBack::off)
        return digest;
    const Result<QByteArray> onDevice = hashFromDevice(path, stop, {});
    if (!onDevice)
        return onDevice.error();
    if (*onDevice != digest)
        return fileError(kCopyDiffersText, path);
    return digest;
}
