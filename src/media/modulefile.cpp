#include "modulefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <unistd.h>

namespace ModuleFile {

QByteArray path(const char *fileName)
{
    // The executable itself, not argv[0]: a symbolic link or a relative start must not lead to
    // a module of another build.
    const QString executable = QFile::symLinkTarget(QStringLiteral("/proc/self/exe"));
    if (executable.isEmpty())
        return {};
    const QDir folder = QFileInfo(executable).absoluteDir();
    const QString name = QString::fromLatin1(fileName);
    for (const QString &candidate :
         {folder.filePath(name), QDir::cleanPath(folder.filePath(
                                     QStringLiteral(CUEBOX_MODULE_DIR_FROM_BIN "/") + name))}) {
        if (QFileInfo(candidate).isFile())
            return QFile::encodeName(candidate);
    }
    return {};
}

} // namespace ModuleFile
