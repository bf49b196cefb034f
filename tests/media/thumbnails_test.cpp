// Real thumbnails and posters made from the fixture media.
#include "mediafixtures.h"

#include "media/thumbnails.h"

#include <QFile>

namespace {

using MediaFixtures::dominant;
using MediaFixtures::path;

// Stills fit into 120 × 120 with their aspect, video frames into 160 × 90.
TEST(Thumbnails, PicturesFitWithTheirAspect)
{
    struct Row {
        const char *name;
        QSize size;
    };
    const Row rows[] = {{"still.png", {120, 68}},  {"still_1921.png", {120, 67}},
                        {"still.jpg", {120, 90}},  {"still.tiff", {120, 80}},
                        {"still.heic", {120, 90}}, {"h264.mov", {120, 90}},
                        {"odd.mov", {160, 90}}};
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Thumbnails::forFile(path(row.name)).size(), row.size);
    }
}

TEST(Thumbnails, ExifOrientationIsApplied)
{
    // Stored 200 × 100, red left and blue right, with "turn 90° clockwise to view".
    const QImage image = Thumbnails::still(path("exif_rotated.jpg"));
    ASSERT_EQ(image.size(), QSize(60, 120));
    EXPECT_EQ(dominant(image, 30, 20), 'r');
    EXPECT_EQ(dominant(image, 30, 100), 'b');
}

TEST(Thumbnails, SmallStillIsNotEnlarged)
{
    QImage tiny(40, 30, QImage::Format_RGB32);
    tiny.fill(Qt::green);
    const QString file = QDir::temp().filePath("cuebox_tiny_thumbnail.png");
    ASSERT_TRUE(tiny.save(file));
    const QImage image = Thumbnails::still(file);
    QFile::remove(file);
    EXPECT_EQ(image.size(), QSize(40, 30));
    EXPECT_EQ(dominant(image, 20, 15), 'g');
}

TEST(Thumbnails, EachKindOfCodecDecodes)
{
    // One of each decoding path: long-GOP, intra 4:4:4 with alpha, GPU texture, MXF wrapping.
    for (const char *name : {"h264.mp4", "prores_4444.mov", "hap1.mov", "mpeg2.mxf"}) {
        SCOPED_TRACE(name);
        const QImage image = Thumbnails::video(path(name));
        ASSERT_FALSE(image.isNull());
        EXPECT_EQ(image.height(), 90); // none is wider than 16:9
        EXPECT_LE(image.width(), 160);
    }
}

TEST(Thumbnails, DisplayRotationIsApplied)
{
    // Stored 1920 × 1080 blue above red, shown turned 90° clockwise: red left, blue right.
    const QImage thumb = Thumbnails::video(path("phone_rotated.mov"));
    ASSERT_EQ(thumb.size(), QSize(51, 90));
    EXPECT_EQ(dominant(thumb, 10, 45), 'r');
    EXPECT_EQ(dominant(thumb, 40, 45), 'b');

    const QImage poster = Thumbnails::generatePoster(path("phone_rotated.mov"));
    ASSERT_EQ(poster.size(), QSize(203, 360));
    EXPECT_EQ(dominant(poster, 40, 180), 'r');
    EXPECT_EQ(dominant(poster, 160, 180), 'b');
}

TEST(Thumbnails, FramesComeFromTheirTimes)
{
    // Red until 0.44 s, then blue; a single keyframe at the start.
    EXPECT_EQ(dominant(Thumbnails::generatePoster(path("timeline.mov")), 160, 120), 'r');
    EXPECT_EQ(dominant(Thumbnails::video(path("timeline.mov")), 60, 45), 'b');
    EXPECT_EQ(Thumbnails::generatePoster(path("timeline.mov")).size(), QSize(320, 240));
}

TEST(Thumbnails, BrokenFilesAndAStopGiveNoPicture)
{
    for (const char *name : {"text.mov", "empty.mp4", "truncated.mov", "dangling.mov",
                             "audio_only.mov", "never-made.mov"}) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(Thumbnails::video(path(name)).isNull());
        EXPECT_TRUE(Thumbnails::generatePoster(path(name)).isNull());
    }
    EXPECT_TRUE(Thumbnails::still(path("garbage.png")).isNull());
    EXPECT_TRUE(Thumbnails::still(path("never-made.png")).isNull());
    std::stop_source stopped;
    stopped.request_stop();
    EXPECT_TRUE(Thumbnails::video(path("h264.mov"), stopped.get_token()).isNull());
    EXPECT_TRUE(Thumbnails::still(path("still.png"), stopped.get_token()).isNull());
}

} // namespace
