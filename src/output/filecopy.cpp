#include "filecopy.h"

#include "sha256.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class Fd
{
public:
    explicit Fd(int fd) : m_fd(fd) {}
    ~Fd()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    Fd(const Fd &) = delete;
    Fd &operator=(const Fd &) = delete;
    int get() const { return m_fd; }
    int release()
    {
        const int fd = m_fd;
        m_fd = -1;
        return fd;
    }

private:
    int m_fd;
};

Error systemError(int code, const QString &path)
{
    return Error{Error::Kind::WriteFailed, QString::fromLocal8Bit(std::strerror(code)), path, 0};
}

Error unreadable(int code, const QString &path)
{
    return Error{Error::Kind::Unreadable, QString::fromLocal8Bit(std::strerror(code)), path, 0};
}

Error cancelled(const QString &path)
{
    return Error{Error::Kind::Cancelled, QString(), path, 0};
}

constexpr size_t kChunk = 8u << 20; // large enough for throughput, small enough to cancel quickly

// Opens a regular file for reading. O_NONBLOCK keeps a FIFO from blocking the open until a
// writer appears; it changes nothing for a regular file.
Result<int> openRegular(const QString &path, struct stat &info)
{
    Fd fd(::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (fd.get() < 0)
        return unreadable(errno, path);
    if (::fstat(fd.get(), &info) != 0)
        return unreadable(errno, path);
    if (!S_ISREG(info.st_mode))
        return Error{Error::Kind::Unreadable, QStringLiteral("Not a regular file"), path, 0};
    return fd.release();
}

ssize_t readSome(int fd, char *buffer, size_t size)
{
    for (;;) {
        const ssize_t n = ::read(fd, buffer, size);
        if (n >= 0 || errno != EINTR)
            return n;
    }
}

Status writeAll(int fd, const char *data, ssize_t size, const QString &path)
{
    for (ssize_t written = 0; written < size;) {
        const ssize_t w = ::write(fd, data + written, static_cast<size_t>(size - written));
        if (w < 0 && errno == EINTR)
            continue;
        if (w < 0)
            return systemError(errno, path);
        written += w;
    }
    return Done{};
}

QByteArray finishDigest(Sha256 &hash)
{
    QByteArray digest = hash.finish();
    Sha256::releaseThreadState();
    return digest;
}

} // namespace

Result<QByteArray> copyFileHashing(const QString &from, const QString &to, std::stop_token stop,
                                   const std::function<void(qint64)> &copiedBytes)
{
    struct stat info {
    };
    Result<int> opened = openRegular(from, info);
    if (!opened)
        return opened.error();
    Fd in(*opened);
    ::posix_fadvise(in.get(), 0, 0, POSIX_FADV_SEQUENTIAL);
    Fd out(
        ::open(QFile::encodeName(to).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    if (out.get() < 0)
        return systemError(errno, to);

    // Reading through user space is what lets the bytes be hashed on their way; the kernel's
    // own copies (reflink, copy_file_range) never show them to us.
    Sha256 hash;
    std::vector<char> buffer(kChunk);
    off_t offset = 0;
    for (;;) {
        if (stop.stop_requested())
            return cancelled(to);
        const ssize_t n = readSome(in.get(), buffer.data(), buffer.size());
        if (n < 0)
            return unreadable(errno, from);
        if (n == 0)
            break;
        hash.update(buffer.data(), n);
        if (const Status written = writeAll(out.get(), buffer.data(), n, to); !written)
            return written.error();
        // Starts the device writing now instead of at the final flush, so the flush finds
        // little left to do and the device works while the next piece is read.
        ::sync_file_range(out.get(), offset, n, SYNC_FILE_RANGE_WRITE);
        offset += n;
        if (copiedBytes)
            copiedBytes(n);
    }
    // The permission bits and the modification time travel with the copy: operators sort by
    // date. File systems without Unix modes (FAT and exFAT sticks) refuse the mode; that is
    // no reason to fail the copy.
    ::fchmod(out.get(), info.st_mode & 0777);
    const struct timespec times[2] = {info.st_atim, info.st_mtim};
    ::futimens(out.get(), times);
    // The operator may pull the drive as soon as the pack is reported saved.
    if (::fsync(out.get()) != 0)
        return systemError(errno, to);
    if (::close(out.release()) != 0)
        return systemError(errno, to);
    return finishDigest(hash);
}

Result<QByteArray> hashFromDevice(const QString &path, std::stop_token stop,
                                  const std::function<void(qint64)> &readBytes)
{
    struct stat info {
    };
    Result<int> opened = openRegular(path, info);
    if (!opened)
        return opened.error();
    Fd in(*opened);
    // Dirty pages cannot be dropped: flush first (at once when the copy already did). A file
    // on a read-only share has none, and may refuse the flush.
    ::fdatasync(in.get());
    ::posix_fadvise(in.get(), 0, 0, POSIX_FADV_DONTNEED);
    ::posix_fadvise(in.get(), 0, 0, POSIX_FADV_SEQUENTIAL);

    Sha256 hash;
    std::vector<char> buffer(kChunk);
    for (;;) {
        if (stop.stop_requested())
            return cancelled(path);
        const ssize_t n = readSome(in.get(), buffer.data(), buffer.size());
        if (n < 0)
            return unreadable(errno, path);
        if (n == 0)
            break;
        hash.update(buffer.data(), n);
        if (readBytes)
            readBytes(n);
    }
    // What was read for checking is not worth keeping in memory.
    ::posix_fadvise(in.get(), 0, 0, POSIX_FADV_DONTNEED);
    return finishDigest(hash);
}
