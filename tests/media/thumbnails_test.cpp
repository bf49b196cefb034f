// Real thumbnails and posters made from the fixture media.
#include "mediafixtures.h"

#include "media/thumbnails.h"

#include <QTemporaryDir>

namespace {

using MediaFixtures::dominant;
using MediaFixtures::path;

// Stills fit into 120 × 120 with their aspect, never enlarged; video frames into 160 × 90,
// posters into 640 × 360. Each is turned upright as its EXIF orientation or display matrix
// says, and shows the picture of its time.
TEST(Thumbnails, PicturesFitWithTheirAspectTurnedAndFromTheirTimes)
{
    QImage tiny(40, 30, QImage::Format_RGB32);
    tiny.fill(Qt::green);
    QTemporaryDir dir;
    ASSERT_TRUE(tiny.save(dir.filePath("tiny.png")));
    using Make = QImage (*)(const QString &, std::stop_token);
    struct Spot {
        int x;
        int y;
        char colour; // as dominant() names it
    };
    const struct {
        QString file;
        Make make;
        QSize size;
        std::vector<Spot> spots = {};
    } rows[] = {
        {path("still.png"), Thumbnails::forFile, {120, 68}},
        {path("still_1921.png"), Thumbnails::forFile, {120, 67}},
        {path("still.jpg"), Thumbnails::forFile, {120, 90}},
        {path("still.tiff"), Thumbnails::forFile, {120, 80}},
        {path("still.heic"), Thumbnails::forFile, {120, 90}},
        {path("h264.mov"), Thumbnails::forFile, {120, 90}},
        {path("odd.mov"), Thumbnails::forFile, {160, 90}},
        {dir.filePath("tiny.png"), Thumbnails::still, {40, 30}, {{20, 15, 'g'}}},
        // Stored 200 × 100, red left and blue right, with "turn 90° clockwise to view".
        {path("exif_rotated.jpg"), Thumbnails::still, {60, 120}, {{30, 20, 'r'}, {30, 100, 'b'}}},
        // One of each decoding path: long-GOP, intra 4:4:4 with alpha, GPU texture, MXF.
        {path("h264.mp4"), Thumbnails::video, {120, 90}},
        {path("prores_4444.mov"), Thumbnails::video, {120, 90}},
        {path("hap1.mov"), Thumbnails::video, {120, 90}},
        {path("mpeg2.mxf"), Thumbnails::video, {113, 90}}, // 720 × 576: 112.5 rounds up
        // Stored 1920 × 1080 blue above red, shown turned 90° clockwise: red left, blue right.
        {path("phone_rotated.mov"), Thumbnails::video, {51, 90}, {{10, 45, 'r'}, {40, 45, 'b'}}},
        {path("phone_rotated.mov"),
         Thumbnails::generatePoster,
         {203, 360},
         {{40, 180, 'r'}, {160, 180, 'b'}}},
        // Red until 0.44 s, then blue; a single keyframe at the start.
        {path("timeline.mov"), Thumbnails::generatePoster, {320, 240}, {{160, 120, 'r'}}},
        {path("timeline.mov"), Thumbnails::video, {120, 90}, {{60, 45, 'b'}}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.file.toStdString());
        const QImage image = row.make(row.file, {});
        EXPECT_EQ(image.size(), row.size);
        if (image.size() != row.size)
            continue;
        for (const Spot &spot : row.spots)
            EXPECT_EQ(dominant(image, spot.x, spot.y), spot.colour) << spot.x << "," << spot.y;
    }
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
