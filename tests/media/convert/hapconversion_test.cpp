// HAP movies written by the converter, read back by ffprobe, by ffmpeg and by our own probe.
#include "convertfixtures.h"

#include "media/ffmpeg/ffmpegprobe.h"
#include "media/mediainspector.h"

#include <QSize>
#include <QTemporaryDir>

using namespace ConvertFixtures;

TEST(HapConversion, EachFormatWritesItsTagCroppedSizeRotationAndSound)
{
    const struct {
        ArenaConvertFormat format;
        const char *tag;
    } rows[] = {{ArenaConvertFormat::hap, "Hap1"},
                {ArenaConvertFormat::hapAlpha, "Hap5"},
                {ArenaConvertFormat::hapQ, "HapY"}};
    const QString source = "turned_326x182.mov";
    const QJsonObject sourceVideo = streams(ffprobe(path(source)), u"video").value(0);
    for (const auto &row : rows) {
        SCOPED_TRACE(row.tag);
        QTemporaryDir folder;
        const ConvertResult result =
            convertVideo(path(source), folder.path(), {row.format, false, false});
        ASSERT_TRUE(result) << result.error().description().toStdString();

        const QJsonObject report = ffprobe(*result);
        const QJsonObject video = streams(report, u"video").value(0);
        EXPECT_EQ(video[u"codec_name"].toString(), "hap");
        EXPECT_EQ(video[u"codec_tag_string"].toString(), QLatin1String(row.tag));
        // 326 × 182 loses two columns and two rows from the right and bottom edges.
        EXPECT_EQ(QSize(video[u"width"].toInt(), video[u"height"].toInt()), QSize(324, 180));
        EXPECT_NEAR(number(video, "duration"), number(sourceVideo, "duration"), 1.0 / 25);
        EXPECT_EQ(video[u"side_data_list"][0][u"rotation"].toInt(), -90);
        const QJsonObject audio = streams(report, u"audio").value(0);
        EXPECT_EQ(audio[u"codec_name"].toString(), "pcm_s16le");
        EXPECT_TRUE(decodesCleanly(*result));

        const MediaClip probed = MediaInspector::inspect(
            *result, InspectionRules::make(ScreenProfile::landscape169, false, true), FfmpegProbe(),
            {});
        EXPECT_EQ(probed.videoCodec, QLatin1String(row.tag));
        EXPECT_EQ(probed.width, 180); // shown upright
        EXPECT_EQ(probed.height, 324);
        EXPECT_EQ(probed.hasAlpha, row.format == ArenaConvertFormat::hapAlpha);
    }
}

TEST(HapConversion, PictureSmallerThanOneBlockFailsWithFfmpegsTextAndLeavesNothing)
{
    QTemporaryDir folder;
    const ConvertResult result =
        convertVideo(path("tiny_3x3.mov"), folder.path(), {ArenaConvertFormat::hap, false, false});
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().kind(), MediaConverterError::Kind::exportFailed);
    EXPECT_EQ(result.error().description(), "Invalid data found when processing input");
    EXPECT_TRUE(entries(folder.path()).isEmpty())
        << entries(folder.path()).join(u' ').toStdString();
}
