#include "contentfingerprint.h"

#include "media/heldfiles.h"
#include "model/filesystem.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <unistd.h>

#include <array>
#include <cmath>
#include <memory>
#include <vector>

namespace ContentFingerprint {

namespace {

struct DigestFreer {
    void operator()(EVP_MD_CTX *context) const { EVP_MD_CTX_free(context); }
};

struct FileCloser {
    int fd = -1;
    ~FileCloser()
    {
        if (fd >= 0)
            ::close(fd);
    }
};

// Reads up to `want` bytes from `offset`, retrying short reads; stops quietly at an error or the
// end. pread, because a descriptor lent by a reader ahead shares its position with others.
qint64 readUpTo(int fd, char *buffer, qint64 want, qint64 offset)
{
    qint64 got = 0;
    while (got < want) {
        const ssize_t n = ::pread(fd, buffer + got, static_cast<size_t>(want - got),
                                  static_cast<off_t>(offset + got));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        got += n;
    }
    return got;
}

} // namespace

std::optional<qint64> tenths(std::optional<double> duration)
{
    if (!duration || !std::isfinite(*duration))
        return std::nullopt;
    const double scaled = std::round(*duration * 10.0);
    if (scaled >= 9.2e18 || scaled <= -9.2e18)
        return std::nullopt;
    return static_cast<qint64>(scaled);
}

QString softKey(std::optional<double> duration, qint64 fileSize)
{
    return QString::number(fileSize) + u'|' + QString::number(tenths(duration).value_or(-10));
}

QString make(const QString &path, std::optional<double> duration, qint64 fileSize)
{
    std::unique_ptr<EVP_MD_CTX, DigestFreer> context(EVP_MD_CTX_new());
    EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr);
    const QByteArray header =
        (QString::number(fileSize) + u'|' + QString::number(tenths(duration).value_or(0))).toUtf8();
    EVP_DigestUpdate(context.get(), header.constData(), static_cast<size_t>(header.size()));

    // A descriptor lent by the reader ahead is a regular file already; otherwise a pipe or a
    // device named like media is never opened: its name and size stand alone.
    FileCloser file{HeldFiles::borrow(path)};
    if (file.fd < 0)
        file.fd = FileSystem::openForReading(path);
    if (file.fd >= 0) {
        // Kept per thread: a fresh quarter megabyte cleared for every clip cost as much as
        // reading the samples from the page cache.
        thread_local std::vector<char> buffer(static_cast<size_t>(kSampleBytes));
        qint64 n = readUpTo(file.fd, buffer.data(), kSampleBytes, 0);
        if (n > 0)
            EVP_DigestUpdate(context.get(), buffer.data(), static_cast<size_t>(n));
        if (fileSize > kTailThreshold) {
            n = readUpTo(file.fd, buffer.data(), kSampleBytes, fileSize - kSampleBytes);
            if (n > 0)
                EVP_DigestUpdate(context.get(), buffer.data(), static_cast<size_t>(n));
        }
    }

    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned int length = 0;
    EVP_DigestFinal_ex(context.get(), digest.data(), &length);
    context.reset();
    // OpenSSL keeps per-thread state (its error queue) that it frees when the thread ends, but
    // only while its own exit handler has not run yet; pool threads can outlive that handler
    // and the state would be lost. Freeing it after each fingerprint costs a microsecond.
    OPENSSL_thread_stop();
    return QString::fromLatin1(
        QByteArray(reinterpret_cast<const char *>(digest.data()), static_cast<qsizetype>(length))
            .toHex());
}

} // namespace ContentFingerprint
