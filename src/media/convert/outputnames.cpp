#include "outputnames.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>

#include <sys/stat.h>

namespace {

Error writeError(QString message, const QString &path)
{
    return Error{Error::Kind::WriteFailed, std::move(message), path, 0};
}

// Same device and inode: the same file, whatever links or spellings lead to it.
bool sameFile(const QString &a, const QString &b)
{
    struct stat first {
    };
    struct stat second {
    };
    if (::stat(QFile::encodeName(a).constData(), &first) != 0 ||
        ::stat(QFile::encodeName(b).constData(), &second) != 0)
        return false;
    return first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

} // namespace

Result<QString> OutputNames::targetPath(const QString &sourcePath, const QString &folder,
                                        const QString &arenaName, QStringView extension)
{
    if (!QFileInfo(folder).isDir())
        return writeError(QString::fromLocal8Bit(std::strerror(ENOENT)), folder);
    if (arenaName.isEmpty() || arenaName.contains(u'/') || arenaName.contains(QChar(0)) ||
        arenaName == u"." || arenaName == u"..")
        return writeError(QStringLiteral("Invalid output name"), arenaName);
    const QString path = QDir(folder).absoluteFilePath(arenaName + extension.toString());
    if (sameFile(path, sourcePath))
        return writeError(QStringLiteral("The converted file would replace its own source"), path);
    return path;
}
