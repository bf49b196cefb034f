// HAP movies written by the converter, read back by ffprobe, by ffmpeg and by our own probe.
#include "convertfixtures.h"

#include "media/convert/mediaconverter.h"
#include "media/ffmpeg/ffmpegprobe.h"
#include "media/mediainspector.h"

#include <QTemporaryDir>

using namespace ConvertFixtures;

namespace {

ConvertResult convertTo(const QString &fixture, const QString &folder, ArenaConvertFormat format)
{
    const Snapshot before = Snapshot::of(path(fixture));
    ConvertResult result =
        MediaConverter::convertVideo(clipFor(path(fixture), QStringLiteral("01_clip")), folder,
                                     ConvertOptions{format, false, false}, {}, {});
    EXPECT_EQ(Snapshot::of(path(fixture)), before) << "the source changed";
    return result;
}

double number(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString().toDouble();
}

} // namespace

TEST(HapConversion, EachFormatWritesItsTagCroppedSizeRotationAndSound)
{
    const struct {
        ArenaConvertFormat format;
        const char *tag;
    } rows[] = {{ArenaConvertFormat::hap, "Hap1"},
                {ArenaConvertFormat::hapAlpha, "Hap5"},
                {ArenaConvertFormat::hapQ, "HapY"}};
    const QString source = QStringLiteral("turned_326x182.mov");
    const QJsonObject sourceVideo =
        streams(ffprobe(path(source)), QStringLiteral("video")).value(0);
    for (const auto &row : rows) {
        SCOPED_TRACE(row.tag);
        QTemporaryDir folder;
        const ConvertResult result = convertTo(source, folder.path(), row.format);
        ASSERT_TRUE(result) << result.error().description().toStdString();

        const QJsonObject report = ffprobe(*result);
        const QJsonObject video = streams(report, QStringLiteral("video")).value(0);
        EXPECT_EQ(video.value(QStringLiteral("codec_name")).toString(), QStringLiteral("hap"));
        EXPECT_EQ(video.value(QStringLiteral("codec_tag_string")).toString(),
                  QLatin1String(row.tag));
        // 326 × 182 loses two columns and two rows from the right and bottom edges.
        EXPECT_EQ(video.value(QStringLiteral("width")).toInt(), 324);
        EXPECT_EQ(video.value(QStringLiteral("height")).toInt(), 180);
        EXPECT_NEAR(number(video, "duration"), number(sourceVideo, "duration"), 1.0 / 25);
        EXPECT_EQ(video.value(QStringLiteral("side_data_list"))
                      .toArray()
                      .at(0)
                      .toObject()
                      .value(QStringLiteral("rotation"))
                      .toInt(),
                  -90);
        const QJsonObject audio = streams(report, QStringLiteral("audio")).value(0);
        EXPECT_EQ(audio.value(QStringLiteral("codec_name")).toString(),
                  QStringLiteral("pcm_s16le"));
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
        convertTo(QStringLiteral("tiny_3x3.mov"), folder.path(), ArenaConvertFormat::hap);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().kind(), MediaConverterError::Kind::exportFailed);
    EXPECT_EQ(result.error().description(),
              QStringLiteral("Invalid data found when processing input"));
    EXPECT_TRUE(entries(folder.path()).isEmpty())
        << entries(folder.path()).join(u' ').toStdString();
}
