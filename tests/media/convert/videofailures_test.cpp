// Conversions that must not produce a movie: cancelled, unsupported or broken sources, unsafe
// targets. Each ends with a clear error, quickly, and leaves the folder as it was.
#include "convertfixtures.h"

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
    ConvertResult convert(const QString &source, std::stop_token stop,
                          ArenaConvertFormat format = ArenaConvertFormat::proRes422,
                          bool dropAudio = false)
    {
        return convertVideo(source, m_folder.path(), {format, dropAudio, false}, "02_broken", {},
                            stop);
    }

    QTemporaryDir m_folder;
};

} // namespace

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
    const ConvertResult result = convert(path("long.mov"), stop.get_token());
    const qint64 endedAt = clock.elapsed();
    canceller.join();
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), MediaConverterError::cancelled());
    EXPECT_EQ(result.error().description(), "Cancelled");
    EXPECT_LT(endedAt - requestedAt, 500);
    EXPECT_EQ(entries(m_folder.path()), QStringList());
}

// Sources that cannot become a movie end with their error, quickly, and leave nothing behind.
TEST_F(VideoFailure, BrokenSourcesFailWithTheirReason)
{
    const QString invalid = "Invalid data found when processing input";
    std::stop_source stopped;
    stopped.request_stop();
    const struct {
        QString source;
        bool dropAudio;
        MediaConverterError error;
        std::stop_token stop = {};
    } rows[] = {
        {path("av.mov"), false, MediaConverterError::cancelled(), stopped.get_token()},
        {path("audio_only.m4a"), false, MediaConverterError::unsupported()},
        {path("garbage.mov"), false, MediaConverterError::unsupported()},
        {path("empty.mp4"), false, MediaConverterError::unsupported()},
        {path("headless.mov"), false, MediaConverterError::unsupported()},
        {path("truncated.mp4"), false, MediaConverterError::exportFailed(invalid)},
        {path("damaged.mp4"), false, MediaConverterError::exportFailed(invalid)},
        {path("damaged.mp4"), true, MediaConverterError::exportFailed(invalid)},
        {m_folder.filePath("gone.mov"), false,
         MediaConverterError::exportFailed("No such file or directory")},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.source.toStdString() + (row.dropAudio ? " video only" : ""));
        QElapsedTimer clock;
        clock.start();
        const ConvertResult result =
            convert(row.source, row.stop, ArenaConvertFormat::h264, row.dropAudio);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error(), row.error);
        EXPECT_LT(clock.elapsed(), 10'000);
        EXPECT_EQ(entries(m_folder.path()), QStringList());
    }
    EXPECT_EQ(MediaConverterError::unsupported().description(), "Unsupported media");
}

TEST_F(VideoFailure, MissingTargetFolderAndNamesThatAreNotPlainFileNamesAreRefused)
{
    const struct {
        QString folder;
        const char *name;
        const char *error;
    } rows[] = {{m_folder.filePath("not/there"), "x", "No such file or directory"},
                {m_folder.path(), "", "Invalid output name"},
                {m_folder.path(), "../escape", "Invalid output name"},
                {m_folder.path(), "a/b", "Invalid output name"},
                {m_folder.path(), "..", "Invalid output name"}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        const ConvertResult result = MediaConverter::convertVideo(
            clipFor(path("av.mov"), QLatin1String(row.name)), row.folder, ConvertOptions{}, {}, {});
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error(), MediaConverterError::exportFailed(row.error));
    }
    EXPECT_EQ(entries(m_folder.path()), QStringList());
}
