#include "filecopy.h"

#include "sha256.h"

#include <QFile>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <future>
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
constexpr size_t kBlock = 4096;     // what direct writes align to

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

class AlignedBuffer
{
public:
    explicit AlignedBuffer(size_t size)
        : m_data(static_cast<char *>(std::aligned_alloc(kBlock, size)))
    {}
    ~AlignedBuffer() { std::free(m_data); }
    AlignedBuffer(const AlignedBuffer &) = delete;
    AlignedBuffer &operator=(const AlignedBuffer &) = delete;
    char *data() const { return m_data; }

private:
    char *m_data;
};

ssize_t readSome(int fd, char *buffer, size_t size)
{
    for (;;) {
        const ssize_t n = ::read(fd, buffer, size);
        if (n >= 0 || errno != EINTR)
            return n;
    }
}

// Fills the buffer unless the file ends first: direct writes need whole blocks.
ssize_t readFull(int fd, char *buffer, size_t size)
{
    size_t got = 0;
    while (got < size) {
        const ssize_t n = readSome(fd, buffer + got, size - got);
        if (n < 0)
            return n;
        if (n == 0)
            break;
        got += static_cast<size_t>(n);
    }
    return static_cast<ssize_t>(got);
}

void stopDirect(int fd, bool &direct)
{
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_DIRECT);
    direct = false;
}

// Writes one piece; direct writes take whole blocks, so the file's last piece ends buffered.
// A file system that accepted O_DIRECT at open but refuses the write gets buffered writes.
Status writeChunk(int fd, const char *data, ssize_t size, bool &direct, const QString &path)
{
    for (ssize_t written = 0; written < size;) {
        if (direct && size - written < ssize_t(kBlock)) // the tail of the file
            stopDirect(fd, direct);
        const ssize_t want =
            direct ? (size - written) / ssize_t(kBlock) * ssize_t(kBlock) : size - written;
        const ssize_t w = ::write(fd, data + written, static_cast<size_t>(want));
        if (w < 0 && errno == EINTR)
            continue;
        if (w < 0 && errno == EINVAL && direct) {
            stopDirect(fd, direct);
            continue;
        }
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
                                   const std::function<void(qint64)> &copiedBytes, Flush flush)
{
    struct stat info {
    };
    Result<int> opened = openRegular(from, info);
    if (!opened)
        return opened.error();
    Fd in(*opened);
    ::posix_fadvise(in.get(), 0, 0, POSIX_FADV_SEQUENTIAL);
    // Written straight to the device where the file system allows it: buffered writes cost
    // three to four times the time here (the kernel's copy avoids them too), and the copy
    // then leaves no cached pages that its read-back could mistake for the device's bytes.
    const QByteArray target = QFile::encodeName(to);
    constexpr int kCreate = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC;
    int fd = ::open(target.constData(), kCreate | O_DIRECT, 0600);
    bool direct = fd >= 0;
    if (!direct && errno == EINVAL)
        fd = ::open(target.constData(), kCreate, 0600);
    Fd out(fd);
    if (out.get() < 0)
        return systemError(errno, to);

    // Reading the source through user space is what lets the bytes be hashed on their way.
    // Three steps overlap: while one buffer is hashed and written (each on its own thread,
    // both only reading it), the next is read into the other. A chunk then costs the slowest
    // of the three, not the read and the hash one after the other: hashing alone is slower
    // than a fast device.
    AlignedBuffer buffers[2] = {AlignedBuffer(kChunk), AlignedBuffer(kChunk)};
    Sha256 hash;
    std::future<Status> writing;
    std::future<void> hashing;
    const auto finishChunk = [&]() -> Status {
        if (hashing.valid())
            hashing.get();
        return writing.valid() ? writing.get() : Status(Done{});
    };
    for (int slot = 0;; slot ^= 1) {
        if (stop.stop_requested()) {
            finishChunk();
            return cancelled(to);
        }
        char *data = buffers[slot].data();
        const ssize_t n = readFull(in.get(), data, kChunk);
        if (n < 0) {
            const int code = errno;
            finishChunk();
            return unreadable(code, from);
        }
        if (const Status written = finishChunk(); !written)
            return written.error();
        if (n == 0)
            break;
        hashing = std::async(std::launch::async, [&hash, data, n] {
            hash.update(data, n);
            Sha256::releaseThreadState();
        });
        writing = std::async(std::launch::async, [&, data, n] {
            const Status written = writeChunk(out.get(), data, n, direct, to);
            if (written && copiedBytes)
                copiedBytes(n);
            return written;
        });
    }
    // The permission bits and the modification time travel with the copy: operators sort by
    // date. File systems without Unix modes (FAT and exFAT sticks) refuse the mode; that is
    // no reason to fail the copy.
    ::fchmod(out.get(), info.st_mode & 0777);
    const struct timespec times[2] = {info.st_atim, info.st_mtim};
    ::futimens(out.get(), times);
    // The operator may pull the drive as soon as the pack is reported saved.
    if (flush == Flush::now && ::fsync(out.get()) != 0)
        return systemError(errno, to);
    if (::close(out.release()) != 0)
        return systemError(errno, to);
    return finishDigest(hash);
}

Status flushFile(const QString &path)
{
    Fd fd(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC));
    if (fd.get() < 0 || ::fsync(fd.get()) != 0)
        return systemError(errno, path);
    return Done{};
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
    ::fsync(in.get());
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
