// Transparency through conversion: a source whose left half is clear and right half solid.
#include "convertfixtures.h"

#include "media/ffmpeg/ffmpegprobe.h"

#include <QImage>
#include <QTemporaryDir>

using namespace ConvertFixtures;

namespace {

constexpr int kWidth = 128;
constexpr int kHeight = 72;

// The first picture's alpha plane as ffmpeg decodes it, one byte a pixel.
QByteArray alphaPlane(const QString &file)
{
    const Run decoded =
        run("ffmpeg", {"-nostdin", "-v", "error", "-i", file, "-vf", "alphaextract,format=gray",
                       "-frames:v", "1", "-f", "rawvideo", "-"});
    EXPECT_TRUE(decoded.err.isEmpty()) << decoded.err.toStdString();
    return decoded.out;
}

// Clear left of the middle, solid right of it; the four columns at the edge may blend.
::testing::AssertionResult leftClearRightSolid(const QByteArray &plane)
{
    if (plane.size() != kWidth * kHeight)
        return ::testing::AssertionFailure() << "alpha plane of " << plane.size() << " bytes";
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const int a = quint8(plane[y * kWidth + x]);
            if ((x < kWidth / 2 - 2 && a > 2) || (x >= kWidth / 2 + 2 && a < 253))
                return ::testing::AssertionFailure() << "alpha " << a << " at " << x << "," << y;
        }
    }
    return ::testing::AssertionSuccess();
}

} // namespace

// ProRes and HAP become their transparent kind; an opaque source stays ProRes 422 and H.264
// drops the alpha.
TEST(AlphaConversion, ProResAndHapBecomeTheirTransparentKind)
{
    const struct {
        const char *source;
        ArenaConvertFormat chosen;
        const char *tag;
        const char *pixelFormat;
        bool alpha;
    } rows[] = {{"alpha_prores.mov", ArenaConvertFormat::proRes422, "ap4h", "yuva444p12le", true},
                {"alpha_prores.mov", ArenaConvertFormat::hap, "Hap5", "rgba", true},
                {"opaque4444.mov", ArenaConvertFormat::proRes422, "apcn", "yuv422p10le", false},
                {"alpha_prores.mov", ArenaConvertFormat::h264, "avc1", "yuv420p", false}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.source + (u' ' + rawValue(row.chosen)).toStdString());
        QTemporaryDir folder;
        const ConvertResult result =
            convertVideo(path(row.source), folder.path(), {row.chosen, false, false}, "logo");
        ASSERT_TRUE(result) << result.error().description().toStdString();
        const QJsonObject video = streams(ffprobe(*result), u"video").value(0);
        EXPECT_EQ(video[u"codec_tag_string"].toString(), row.tag);
        EXPECT_EQ(video[u"pix_fmt"].toString(), row.pixelFormat);
        if (row.alpha) {
            EXPECT_TRUE(leftClearRightSolid(alphaPlane(*result)));
        }
        EXPECT_TRUE(decodesCleanly(*result));
        // Still "Transparent", or not.
        EXPECT_EQ(FfmpegProbe().probeVideo(*result, {}).hasAlpha, row.alpha);
    }
}

TEST(AlphaConversion, PngWithAlphaStaysRgbaWithTheSameAlpha)
{
    QTemporaryDir folder;
    const QString source = path("alpha.png");
    const ConvertResult result =
        MediaConverter::convertImage(clipFor(source, "logo"), folder.path(), true, {});
    ASSERT_TRUE(result) << result.error().description().toStdString();
    EXPECT_EQ(streams(ffprobe(*result), u"video").value(0)[u"pix_fmt"].toString(), "rgba");
    const QImage before = QImage(source).convertToFormat(QImage::Format_Alpha8);
    const QImage after = QImage(*result).convertToFormat(QImage::Format_Alpha8);
    ASSERT_EQ(after.size(), before.size());
    EXPECT_EQ(after, before);
    EXPECT_EQ(qAlpha(QImage(*result).pixel(0, 0)), 0);
    EXPECT_EQ(qAlpha(QImage(*result).pixel(kWidth - 1, 0)), 255);
}
