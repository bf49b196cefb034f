#include "workfolder.h"

#include "model/filesystem.h"

#include <QDir>
#include <QFile>

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace WorkFolder {

namespace {

Error folderError(QString message, const QString &path)
{
    return Error{Error::Kind::WriteFailed, std::move(message), path, 0};
}

// One folder of ours, mode 0700: made if missing, refused if it is someone else's.
Status ownPrivateFolder(const QString &path)
{
    const QByteArray local = QFile::encodeName(path);
    if (::mkdir(local.constData(), 0700) != 0 && errno != EEXIST)
        return folderError(FileSystem::errorText(errno), path);
    struct stat info {
    };
    if (::lstat(local.constData(), &info) != 0)
        return folderError(FileSystem::errorText(errno), path);
    if (!S_ISDIR(info.st_mode))
        return folderError(QStringLiteral("The working folder is not a folder of its own"), path);
    if (info.st_uid != ::geteuid())
        return folderError(QStringLiteral("The working folder belongs to another user"), path);
    if ((info.st_mode & 077) != 0 && ::chmod(local.constData(), 0700) != 0)
        return folderError(FileSystem::errorText(errno), path);
    return Done{};
}

QString cacheHome()
{
    const QString xdg = qEnvironmentVariable("XDG_CACHE_HOME");
    // A relative value is invalid by the XDG rules and must be ignored.
    return QDir::isAbsolutePath(xdg) ? QDir::cleanPath(xdg) : QDir::homePath() + "/.cache";
}

} // namespace

QString stripAudioPath()
{
    return cacheHome() + QStringLiteral("/Cuebox/StripAudio");
}

Result<QString> prepareStripAudio()
{
    const QString cache = cacheHome();
    // A missing cache folder is made private too, as the XDG rules ask.
    if (const Status made = FileSystem::makeFolders(cache, 0700); !made)
        return made.error();
    const QString app = cache + QStringLiteral("/Cuebox");
    const QString folder = stripAudioPath();
    for (const QString &path : {app, folder}) {
        if (const Status owned = ownPrivateFolder(path); !owned)
            return owned.error();
    }
    return folder;
}

} // namespace WorkFolder
