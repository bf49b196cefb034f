// Pipes, sockets and device nodes that carry a media name. Opening a pipe for reading waits
// for a writer that never comes, so probing, fingerprinting and thumbnails must answer
// without opening any of them. A helper writer frees a reader that got stuck anyway, so a
// fault fails the test in seconds instead of hanging it.
#include "media/ffmpeg/ffmpegprobe.h"
#include "media/mediainspector.h"
#include "media/thumbnails.h"
#include "session/contentfingerprint.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <thread>

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

bool makeSocket(const QString &path)
{
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray local = QFile::encodeName(path);
    if (fd < 0 || size_t(local.size()) >= sizeof(address.sun_path))
        return false;
    std::copy(local.begin(), local.end(), address.sun_path);
    const bool bound = ::bind(fd, reinterpret_cast<sockaddr *>(&address), sizeof(address)) == 0;
    ::close(fd); // the node stays on disk
    return bound;
}

// After a grace period, opens every pipe for writing and closes it again, which ends any read
// that is waiting on it.
class PipeReleaser
{
public:
    explicit PipeReleaser(QStringList pipes)
        : m_thread([pipes = std::move(pipes)](std::stop_token stop) {
            for (int tick = 0; !stop.stop_requested(); ++tick) {
                std::this_thread::sleep_for(20ms);
                for (const QString &pipe : pipes) {
                    if (tick < 100) // two seconds of grace
                        continue;
                    const int fd = ::open(QFile::encodeName(pipe).constData(),
                                          O_WRONLY | O_NONBLOCK | O_CLOEXEC);
                    if (fd >= 0)
                        ::close(fd);
                }
            }
        })
    {}

private:
    std::jthread m_thread;
};

} // namespace

TEST(SpecialFiles, AreReadErrorsWithoutThumbnailOrContentAndNeverWait)
{
    QTemporaryDir dir;
    const auto at = [&](const char *name) { return dir.filePath(QString::fromLatin1(name)); };
    ASSERT_EQ(::mkfifo(QFile::encodeName(at("pipe.mov")).constData(), 0600), 0);
    ASSERT_EQ(::mkfifo(QFile::encodeName(at("pipe.png")).constData(), 0600), 0);
    ASSERT_TRUE(makeSocket(at("socket.mov")));
    ASSERT_TRUE(makeSocket(at("socket.jpg")));
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), at("zero.png")));
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/null"), at("null.mov")));
    const PipeReleaser releaser({at("pipe.mov"), at("pipe.png")});
    // What a file that cannot be opened at all hashes to: its size and duration alone.
    const QString nameOnly = ContentFingerprint::make(at("missing.mov"), std::nullopt, 0);

    for (const char *name :
         {"pipe.mov", "pipe.png", "socket.mov", "socket.jpg", "zero.png", "null.mov"}) {
        SCOPED_TRACE(name);
        QElapsedTimer timer;
        timer.start();
        const MediaClip clip = MediaInspector::inspect(at(name), InspectionRules{}, FfmpegProbe{});
        ASSERT_EQ(clip.issues.size(), 1);
        EXPECT_EQ(clip.issues[0].kind, IssueKind::readError);
        EXPECT_EQ(clip.issues[0].textValue, QStringLiteral("Not a regular file"));
        EXPECT_TRUE(Thumbnails::forFile(at(name)).isNull());
        EXPECT_TRUE(Thumbnails::generatePoster(at(name)).isNull());
        EXPECT_EQ(ContentFingerprint::make(at(name), std::nullopt, 0), nameOnly);
        EXPECT_LT(timer.elapsed(), 1000);
    }
}
