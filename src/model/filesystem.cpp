#include "filesystem.h"

#include <QFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace FileSystem {

namespace {

Error folderError(int code, const QString &path)
{
    return Error{Error::Kind::WriteFailed,
                 QStringLiteral("Could not create the folder (%1)").arg(errorText(code)), path, 0};
}

bool isSpecialMode(mode_t mode)
{
    return S_ISFIFO(mode) || S_ISSOCK(mode) || S_ISCHR(mode) || S_ISBLK(mode);
}

} // namespace

QString notRegularText()
{
    return QStringLiteral("Not a regular file");
}

QString errorText(int code)
{
    return QString::fromLocal8Bit(std::strerror(code));
}

bool isSpecial(const QString &path)
{
    return look(path).special;
}

Look look(const QString &path)
{
    struct stat info {
    };
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return {};
    return {static_cast<qint64>(info.st_size), isSpecialMode(info.st_mode), S_ISDIR(info.st_mode),
            true, qint64(info.st_mtim.tv_sec) * 1'000'000'000 + info.st_mtim.tv_nsec};
}

int openForReading(const QString &path)
{
    // Some devices act on a mere open (a watchdog starts counting), so look first.
    if (isSpecial(path)) {
        errno = ENODEV;
        return -1;
    }
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return -1;
    struct stat info {
    };
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        const int error = S_ISREG(info.st_mode) ? errno : ENODEV;
        ::close(fd);
        errno = error;
        return -1;
    }
    // Regular files never block; the flag only mattered for the open itself.
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    return fd;
}

Status makeFolders(const QString &path, unsigned mode)
{
    const QByteArray local = QFile::encodeName(path);
    // Walk down from the root, creating each missing component, so that the error names the
    // reason of the first folder that could not be made (EACCES, EROFS, ENOSPC, ENOTDIR).
    for (qsizetype end = local.indexOf('/', 1);; end = local.indexOf('/', end + 1)) {
        const QByteArray part = end < 0 ? local : local.left(end);
        if (!part.isEmpty() && ::mkdir(part.constData(), static_cast<mode_t>(mode)) != 0 &&
            errno != EEXIST)
            return folderError(errno, path);
        if (end < 0)
            break;
    }
    struct stat info {
    };
    if (::stat(local.constData(), &info) != 0)
        return folderError(errno, path);
    if (!S_ISDIR(info.st_mode))
        return folderError(ENOTDIR, path);
    return Done{};
}

} // namespace FileSystem
