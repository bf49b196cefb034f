#include "filecopy.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <vector>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
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

constexpr size_t kChunk = 8u << 20; // large enough for throughput, small enough to cancel quickly

} // namespace

Status copyFileFast(const QString &from, const QString &to, std::stop_token stop,
                    const std::function<void(qint64)> &copiedBytes)
{
    Fd in(::open(QFile::encodeName(from).constData(), O_RDONLY | O_CLOEXEC));
    if (in.get() < 0)
        return systemError(errno, from);
    struct stat info {};
    if (::fstat(in.get(), &info) != 0)
        return systemError(errno, from);
    Fd out(::open(QFile::encodeName(to).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC,
                  0644));
    if (out.get() < 0)
        return systemError(errno, to);

    const auto report = [&](qint64 n) {
        if (copiedBytes && n > 0)
            copiedBytes(n);
    };

    bool done = false;
    if (::ioctl(out.get(), FICLONE, in.get()) == 0) {
        report(info.st_size);
        done = true;
    }
    if (!done) {
        // copy_file_range lets the kernel move the data (server-side on NFS, no user copy).
        bool rangeWorks = true;
        qint64 total = 0;
        while (!done) {
            if (stop.stop_requested())
                return Error{Error::Kind::Cancelled, QString(), to, 0};
            const ssize_t n = ::copy_file_range(in.get(), nullptr, out.get(), nullptr, kChunk, 0);
            if (n < 0) {
                if (errno == EINTR)
                    continue;
                if (total == 0 && (errno == EXDEV || errno == ENOSYS || errno == EOPNOTSUPP ||
                                   errno == EINVAL)) {
                    rangeWorks = false;
                    break;
                }
                return systemError(errno, to);
            }
            if (n == 0)
                done = true;
            total += n;
            report(n);
        }
        if (!rangeWorks) {
            std::vector<char> buffer(kChunk);
            for (;;) {
                if (stop.stop_requested())
                    return Error{Error::Kind::Cancelled, QString(), to, 0};
                const ssize_t n = ::read(in.get(), buffer.data(), buffer.size());
                if (n < 0 && errno == EINTR)
                    continue;
                if (n < 0)
                    return systemError(errno, from);
                if (n == 0)
                    break;
                for (ssize_t written = 0; written < n;) {
                    const ssize_t w = ::write(out.get(), buffer.data() + written,
                                              static_cast<size_t>(n - written));
                    if (w < 0 && errno == EINTR)
                        continue;
                    if (w < 0)
                        return systemError(errno, to);
                    written += w;
                }
                report(n);
            }
        }
    }
    // The operator may pull the drive as soon as the pack is reported saved.
    if (::fsync(out.get()) != 0)
        return systemError(errno, to);
    if (::close(out.release()) != 0)
        return systemError(errno, to);
    return Done{};
}
