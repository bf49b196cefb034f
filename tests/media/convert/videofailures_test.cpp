// Conversions that must not produce a movie: cancelled, unsupported or broken sources, unsafe
// targets. Each ends with a clear error, quickly, and leaves the folder as it was.
#include "convertfixtures.h"

#include "media/convert/mediaconverter.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

using namespace ConvertFixtures;

namespace {

class VideoFailure : public ::testing::Test
{
protected:
    ConvertResult convert(const QString &source, std::stop_token stop = {},
                          std::function<void(double)> progress = {})
    {
        const Snapshot before = Snapshot::of(source);
        ConvertResult result = MediaConverter::convertVideo(
            clipFor(source, QStringLiteral("02_broken")), m_folder.path(),
            ConvertOptions{ArenaConvertFormat::proRes422, false, false}, std::move(progress), stop);
        EXPECT_EQ(Snapshot::of(source), before) << "the source changed";
        return result;
    }

    QTemporaryDir m_folder;
};

} // namespace

TEST_F(VideoFailure, CancelledMidwayEndsQuicklyAndLeavesNothing)
{
    std::stop_source stop;
    QElapsedTimer sinceRequest;
    double lastProgress = 0;
    const ConvertResult result =
        convert(path(QStringLiteral("long.mov")), stop.get_token(), [&](double fraction) {
            lastProgress = fraction;
            if (fraction > 0.1 && !stop.stop_requested()) {
                sinceRequest.start();
                stop.request_stop();
            }
        });
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), MediaConverterError::cancelled());
    EXPECT_EQ(result.error().description(), QStringLiteral("Cancelled"));
    ASSERT_TRUE(sinceRequest.isValid()) << "no progress reached 10 %";
    EXPECT_LT(sinceRequest.elapsed(), 500);
    EXPECT_LT(lastProgress, 1.0);
    EXPECT_EQ(entries(m_folder.path()), QStringList());
}

TEST_F(VideoFailure, CancelledFromAnotherThread)
{
    std::stop_source stop;
    std::atomic<qint64> requestedAt{0};
    QElapsedTimer clock;
    clock.start();
    std::thread canceller([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        requestedAt = clock.elapsed();
        stop.request_stop();
    });
    const ConvertResult result = convert(path(QStringLiteral("long.mov")), stop.get_token());
    const qint64 endedAt = clock.elapsed();
    canceller.join();
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), MediaConverterError::cancelled());
    EXPECT_LT(endedAt - requestedAt, 500);
    EXPECT_EQ(entries(m_folder.path()), QStringList());
}

TEST_F(VideoFailure, StoppedBeforeStartIsCancelled)
{
    std::stop_source stop;
    stop.request_stop();
    const ConvertResult result = convert(path(QStringLiteral("av.mov")), stop.get_token());
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), MediaConverterError::cancelled());
    EXPECT_EQ(entries(m_folder.path()), QStringList());
}

TEST_F(VideoFailure, UnreadableSourcesAreUnsupported)
{
    const char *const names[] = {"audio_only.m4a", "garbage.mov", "empty.mp4", "headless.mov"};
    for (const char *name : names) {
        SCOPED_TRACE(name);
        const ConvertResult result = convert(path(QLatin1String(name)));
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error(), MediaConverterError::unsupported());
        EXPECT_EQ(result.error().description(), QStringLiteral("Unsupported media"));
        EXPECT_EQ(entries(m_folder.path()), QStringList());
    }
}

TEST_F(VideoFailure, TruncatedSourceFailsWithFfmpegsTextAndLeavesNothing)
{
    QElapsedTimer clock;
    clock.start();
    const ConvertResult result = convert(path(QStringLiteral("truncated.mp4")));
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), MediaConverterError::exportFailed(
                                  QStringLiteral("Invalid data found when processing input")));
    EXPECT_LT(clock.elapsed(), 10'000);
    EXPECT_EQ(entries(m_folder.path()), QStringList());
}

TEST_F(VideoFailure, DamagedSamplesFailWithFfmpegsText)
{
    for (const bool dropAudio : {false, true}) {
        SCOPED_TRACE(dropAudio ? "video only" : "video and audio");
        const QString source = path(QStringLiteral("damaged.mp4"));
        const Snapshot before = Snapshot::of(source);
        const ConvertResult result = MediaConverter::convertVideo(
            clipFor(source, QStringLiteral("02_broken")), m_folder.path(),
            ConvertOptions{ArenaConvertFormat::h264, dropAudio, false}, {}, {});
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error(), MediaConverterError::exportFailed(
                                      QStringLiteral("Invalid data found when processing input")));
        EXPECT_EQ(Snapshot::of(source), before);
        EXPECT_EQ(entries(m_folder.path()), QStringList());
    }
}

TEST_F(VideoFailure, VanishedSourceSaysSo)
{
    const ConvertResult result = convert(m_folder.filePath(QStringLiteral("gone.mov")));
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(),
              MediaConverterError::exportFailed(QStringLiteral("No such file or directory")));
    EXPECT_EQ(entries(m_folder.path()), QStringList());
}

TEST_F(VideoFailure, MissingTargetFolderFails)
{
    const ConvertResult result = MediaConverter::convertVideo(
        clipFor(path(QStringLiteral("av.mov")), QStringLiteral("x")),
        m_folder.filePath(QStringLiteral("not/there")), ConvertOptions{}, {}, {});
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().kind(), MediaConverterError::Kind::exportFailed);
    EXPECT_EQ(result.error().description(), QStringLiteral("No such file or directory"));
}

TEST_F(VideoFailure, NameThatIsNotAPlainFileNameIsRefused)
{
    const char *const names[] = {"", "../escape", "a/b", ".."};
    for (const char *name : names) {
        SCOPED_TRACE(name);
        const ConvertResult result = MediaConverter::convertVideo(
            clipFor(path(QStringLiteral("av.mov")), QLatin1String(name)), m_folder.path(),
            ConvertOptions{}, {}, {});
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error(),
                  MediaConverterError::exportFailed(QStringLiteral("Invalid output name")));
    }
    EXPECT_EQ(entries(m_folder.path()), QStringList());
}
