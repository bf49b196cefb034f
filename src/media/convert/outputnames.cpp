#include "outputnames.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <cstring>

namespace {

Error writeError(QString message, const QString &path)
{
    return Error{Error::Kind::WriteFailed, std::move(message), path, 0};
}

} // namespace

Result<QString> OutputNames::targetPath(const QString &folder, const QString &arenaName,
                                        QStringView extension)
{
    if (!QFileInfo(folder).isDir())
        return writeError(QString::fromLocal8Bit(std::strerror(ENOENT)), folder);
    if (arenaName.isEmpty() || arenaName.contains(u'/') || arenaName.contains(QChar(0)) ||
        arenaName == u"." || arenaName == u"..")
        return writeError(QStringLiteral("Invalid output name"), arenaName);
    return QDir(folder).absoluteFilePath(arenaName + extension.toString());
}
