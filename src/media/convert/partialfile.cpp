#include "partialfile.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace {

QString systemErrorText(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

// fsync through a fresh descriptor: the writer (libavformat, QImageWriter) has closed its own.
bool syncPath(const QByteArray &path, int flags)
{
    const int fd = ::open(path.constData(), flags | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool synced = ::fsync(fd) == 0;
    ::close(fd);
    return synced;
}

} // namespace

std::optional<PartialFile> PartialFile::create(const QString &finalPath, QString *errorText)
{
    const QFileInfo target(finalPath);
    const QString prefix = target.absolutePath() + QStringLiteral("/.") + target.fileName() +
                           QStringLiteral(".partial-");
    static constexpr char kLetters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    for (int attempt = 0; attempt < 16; ++attempt) {
        QString candidate = prefix;
        for (int i = 0; i < 6; ++i)
            candidate += QChar::fromLatin1(kLetters[QRandomGenerator::global()->bounded(36)]);
        // O_EXCL claims the name; 0666 lets the user's umask decide the final permissions,
        // as for any file they save.
        const int fd = ::open(QFile::encodeName(candidate).constData(),
                              O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0) {
            ::close(fd);
            return PartialFile(candidate, target.absoluteFilePath());
        }
        if (errno != EEXIST) {
            if (errorText)
                *errorText = systemErrorText(errno);
            return std::nullopt;
        }
    }
    if (errorText)
        *errorText = systemErrorText(EEXIST);
    return std::nullopt;
}

PartialFile::PartialFile(QString path, QString finalPath)
    : m_path(std::move(path)), m_finalPath(std::move(finalPath))
{}

PartialFile::PartialFile(PartialFile &&other) noexcept
    : m_path(std::move(other.m_path))
    , m_finalPath(std::move(other.m_finalPath))
    , m_done(other.m_done)
{
    other.m_done = true;
}

PartialFile::~PartialFile()
{
    if (!m_done)
        ::unlink(QFile::encodeName(m_path).constData());
}

QString PartialFile::commit()
{
    const QByteArray from = QFile::encodeName(m_path);
    const QByteArray to = QFile::encodeName(m_finalPath);
    if (!syncPath(from, O_RDONLY))
        return systemErrorText(errno);
    // rename(2) replaces an existing file of the final name in one step: readers see either
    // the old file or the complete new one.
    if (::rename(from.constData(), to.constData()) != 0)
        return systemErrorText(errno);
    m_done = true;
    syncPath(QFile::encodeName(QFileInfo(m_finalPath).absolutePath()), O_RDONLY | O_DIRECTORY);
    return {};
}
