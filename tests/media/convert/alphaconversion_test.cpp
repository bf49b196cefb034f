// Transparency through conversion: a source whose left half is clear and right half solid.
#include "convertfixtures.h"

#include "media/convert/mediaconverter.h"
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
    const Run decoded = run(QStringLiteral("ffmpeg"),
                            {QStringLiteral("-nostdin"), QStringLiteral("-v"),
                             QStringLiteral("error"), QStringLiteral("-i"), file,
                             QStringLiteral("-vf"), QStringLiteral("alphaextract,format=gray"),
                             QStringLiteral("-frames:v"), QStringLiteral("1"), QStringLiteral("-f"),
                             QStringLiteral("rawvideo"), QStringLiteral("-")});
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

TEST(AlphaConversion, ProResAndHapBecomeTheirTransparentKind)
{
    const struct {
        ArenaConvertFormat chosen;
        const char *tag;
        const char *pixelFormat;
    } rows[] = {{ArenaConvertFormat::proRes422, "ap4h", "yuva444p12le"},
                {ArenaConvertFormat::proRes422LT, "ap4h", "yuva444p12le"},
                {ArenaConvertFormat::hap, "Hap5", "rgba"},
                {ArenaConvertFormat::hapQ, "Hap5", "rgba"}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.tag + (u' ' + rawValue(row.chosen)).toStdString());
        QTemporaryDir folder;
        const ConvertResult result = MediaConverter::convertVideo(
            clipFor(path(QStringLiteral("alpha_prores.mov")), QStringLiteral("logo")),
            folder.path(), ConvertOptions{row.chosen, false, false}, {}, {});
        ASSERT_TRUE(result) << result.error().description().toStdString();
        const QJsonObject video = streams(ffprobe(*result), QStringLiteral("video")).value(0);
        EXPECT_EQ(video.value(QStringLiteral("codec_tag_string")).toString(),
                  QLatin1String(row.tag));
        EXPECT_EQ(video.value(QStringLiteral("pix_fmt")).toString(),
                  QLatin1String(row.pixelFormat));
        EXPECT_TRUE(leftClearRightSolid(alphaPlane(*result)));
        EXPECT_TRUE(decodesCleanly(*result));
        EXPECT_TRUE(FfmpegProbe().probeVideo(*result, {}).hasAlpha); // still "Transparent"
    }
}

TEST(AlphaConversion, OpaqueSourceStaysProRes422AndH264DropsAlpha)
{
    const struct {
        const char *source;
        ArenaConvertFormat chosen;
        const char *tag;
    } rows[] = {{"opaque4444.mov", ArenaConvertFormat::proRes422, "apcn"},
                {"alpha_prores.mov", ArenaConvertFormat::h264, "avc1"}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.source);
        QTemporaryDir folder;
        const ConvertResult result = MediaConverter::convertVideo(
            clipFor(path(QLatin1String(row.source)), QStringLiteral("clip")), folder.path(),
            ConvertOptions{row.chosen, false, false}, {}, {});
        ASSERT_TRUE(result) << result.error().description().toStdString();
        EXPECT_EQ(streams(ffprobe(*result), QStringLiteral("video"))
                      .value(0)
                      .value(QStringLiteral("codec_tag_string"))
                      .toString(),
                  QLatin1String(row.tag));
    }
}

TEST(AlphaConversion, PngWithAlphaStaysRgbaWithTheSameAlpha)
{
    QTemporaryDir folder;
    const QString source = path(QStringLiteral("alpha.png"));
    const ConvertResult result = MediaConverter::convertImage(
        clipFor(source, QStringLiteral("logo")), folder.path(), true, {});
    ASSERT_TRUE(result) << result.error().description().toStdString();
    EXPECT_EQ(streams(ffprobe(*result), QStringLiteral("video"))
                  .value(0)
                  .value(QStringLiteral("pix_fmt"))
                  .toString(),
              QStringLiteral("rgba"));
    const QImage before = QImage(source).convertToFormat(QImage::Format_Alpha8);
    const QImage after = QImage(*result).convertToFormat(QImage::Format_Alpha8);
    ASSERT_EQ(after.size(), before.size());
    EXPECT_EQ(after, before);
    EXPECT_EQ(qAlpha(QImage(*result).pixel(0, 0)), 0);
    EXPECT_EQ(qAlpha(QImage(*result).pixel(kWidth - 1, 0)), 255);
}
