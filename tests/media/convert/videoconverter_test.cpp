// Real conversions of small movies, each output checked by ffprobe and decoded by ffmpeg.
#include "convertfixtures.h"

#include "media/ffmpeg/ffmpegprobe.h"
#include "media/mediainspector.h"

#include <QSize>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace ConvertFixtures;

namespace {

class VideoConversion : public ::testing::Test
{
protected:
    ConvertResult convert(const QString &fixture, ArenaConvertFormat format, bool dropAudio = false,
                          std::function<void(double)> progress = {})
    {
        return convertVideo(path(fixture), m_folder.path(), {format, dropAudio, false}, "01_clip",
                            std::move(progress));
    }

    QString output() const { return m_folder.filePath("01_clip.mov"); }

    QTemporaryDir m_folder;
};

// The first frame as ffmpeg decodes it to raw pixels, after `filter`, in `out`; ffmpeg decodes
// the rest of the file too, in the same run, and any complaint comes back in `err`.
Run firstFrame(const QString &file, const QString &filter, const QString &pixelFormat)
{
    return run("ffmpeg", {"-nostdin",  "-v", "error", "-i",   file, "-map",     "0:v:0",
                          "-frames:v", "1",  "-vf",   filter, "-f", "rawvideo", "-pix_fmt",
                          pixelFormat, "-",  "-map",  "0",    "-f", "null",     "-"});
}

// The types of a file's top-level boxes, in their order.
QStringList topLevelBoxes(const QString &file)
{
    const QByteArray bytes = readFile(file);
    QStringList boxes;
    for (qsizetype at = 0; at + 8 <= bytes.size();) {
        const quint32 size = (quint8(bytes[at]) << 24) | (quint8(bytes[at + 1]) << 16) |
                             (quint8(bytes[at + 2]) << 8) | quint8(bytes[at + 3]);
        boxes.append(QString::fromLatin1(bytes.mid(at + 4, 4)));
        if (size < 8)
            break;
        at += size;
    }
    return boxes;
}

struct FormatCase {
    const char *name;
    ArenaConvertFormat format;
    const char *videoTag;
    const char *profile;
    const char *pixelFormat;
    const char *audioCodec;
    const char *audioTag;
    // The movie header ahead of the media data lets players start without seeking to the end.
    bool headerFirst;
};

const FormatCase kFormatCases[] = {
    {"ProRes 422", ArenaConvertFormat::proRes422, "apcn", "Standard", "yuv422p10le", "pcm_s16le",
     "sowt", false},
    {"ProRes 422 LT", ArenaConvertFormat::proRes422LT, "apcs", "LT", "yuv422p10le", "pcm_s16le",
     "sowt", false},
    {"H.264", ArenaConvertFormat::h264, "avc1", "High", "yuv420p", "aac", "mp4a", true},
};

} // namespace

// The source is a phone held upright: its display matrix is carried over and the pixels stay
// stored as they were.
TEST_F(VideoConversion, EachFormatWritesItsCodecSizeDurationRotationAndAudio)
{
    const QJsonObject sourceVideo = streams(ffprobe(path("rotated.mov")), u"video").value(0);
    const std::optional<DisplayMatrix> sourceMatrix =
        FfmpegProbe().probeVideo(path("rotated.mov"), {}).transform;
    ASSERT_TRUE(sourceMatrix);
    ASSERT_NE(*sourceMatrix, DisplayMatrix{});
    const double frame = 1.0 / 25;
    QList<qint64> videoBitRates;
    for (const FormatCase &row : kFormatCases) {
        SCOPED_TRACE(row.name);
        writeFile(output(), "an older conversion"); // replaced by the new one
        const ConvertResult result = convert("rotated.mov", row.format);
        ASSERT_TRUE(result) << result.error().description().toStdString();
        EXPECT_EQ(*result, output());
        EXPECT_EQ(entries(m_folder.path()), QStringList{"01_clip.mov"});

        const QJsonObject report = ffprobe(*result);
        EXPECT_EQ(report[u"format"].toObject()[u"format_name"].toString(),
                  "mov,mp4,m4a,3gp,3g2,mj2");
        const QStringList boxes = topLevelBoxes(*result);
        ASSERT_TRUE(boxes.contains("moov") && boxes.contains("mdat"))
            << boxes.join(u' ').toStdString();
        if (row.headerFirst) {
            EXPECT_LT(boxes.indexOf("moov"), boxes.indexOf("mdat"));
        }
        const QList<QJsonObject> video = streams(report, u"video");
        ASSERT_EQ(video.size(), 1);
        EXPECT_EQ(video[0][u"codec_tag_string"].toString(), QLatin1String(row.videoTag));
        EXPECT_EQ(video[0][u"profile"].toString(), QLatin1String(row.profile));
        EXPECT_EQ(video[0][u"pix_fmt"].toString(), QLatin1String(row.pixelFormat));
        EXPECT_EQ(QSize(video[0][u"width"].toInt(), video[0][u"height"].toInt()), QSize(320, 180));
        const QJsonArray sideData = video[0][u"side_data_list"].toArray();
        ASSERT_EQ(sideData.size(), 1);
        EXPECT_EQ(sideData[0].toObject()[u"rotation"].toInt(), -90);
        EXPECT_EQ(video[0][u"nb_frames"].toString(), sourceVideo[u"nb_frames"].toString());
        EXPECT_NEAR(number(video[0], "duration"), number(sourceVideo, "duration"), frame);
        EXPECT_EQ(video[0][u"avg_frame_rate"].toString(), "25/1");
        videoBitRates.append(video[0][u"bit_rate"].toString().toLongLong());

        const QList<QJsonObject> audio = streams(report, u"audio");
        ASSERT_EQ(audio.size(), 1);
        EXPECT_EQ(audio[0][u"codec_name"].toString(), QLatin1String(row.audioCodec));
        EXPECT_EQ(audio[0][u"codec_tag_string"].toString(), QLatin1String(row.audioTag));
        EXPECT_EQ(audio[0][u"channels"].toInt(), 2);
        EXPECT_EQ(audio[0][u"sample_rate"].toString(), "48000");
        EXPECT_NEAR(number(audio[0], "duration"), 2.0, frame);
        EXPECT_NEAR(number(audio[0], "start_time"), 0.0, 0.001); // in step with the picture
        EXPECT_TRUE(decodesCleanly(*result));

        // Our own probe reads the same movie the same way, so the pack's re-inspection after a
        // conversion judges what ffprobe sees.
        const VideoFacts facts = FfmpegProbe().probeVideo(*result, {});
        EXPECT_EQ(facts.failedAt, VideoFacts::Stage::none) << facts.errorText.toStdString();
        ASSERT_TRUE(facts.videoCodecCode);
        EXPECT_EQ(MediaInspector::fourCC(*facts.videoCodecCode), QLatin1String(row.videoTag));
        EXPECT_EQ(facts.naturalWidth, 320.0);
        EXPECT_EQ(facts.naturalHeight, 180.0);
        EXPECT_EQ(facts.transform, sourceMatrix);
        ASSERT_TRUE(facts.duration);
        EXPECT_NEAR(*facts.duration, number(sourceVideo, "duration"), frame);
        EXPECT_FLOAT_EQ(facts.nominalFrameRate, 25.0f);
        EXPECT_EQ(facts.audioTrackCount, 1);
    }
    // ProRes 422 LT is lighter than ProRes 422, but not by half.
    EXPECT_LT(videoBitRates[1], videoBitRates[0] * 9 / 10);
    EXPECT_GT(videoBitRates[1], videoBitRates[0] / 2);
}

TEST_F(VideoConversion, AudioTracksOutNumberZeroOrTheFirstOfTheSource)
{
    const struct {
        const char *source;
        ArenaConvertFormat format;
        bool dropAudio;
        int channels; // of the one audio track written; 0: no audio track
    } rows[] = {{"av.mov", ArenaConvertFormat::proRes422, true, 0},
                {"two_audio.mov", ArenaConvertFormat::proRes422, false, 1}, // the mono first
                {"silent.mp4", ArenaConvertFormat::h264, false, 0}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.source);
        const ConvertResult result = convert(QLatin1String(row.source), row.format, row.dropAudio);
        ASSERT_TRUE(result) << result.error().description().toStdString();
        const QJsonObject report = ffprobe(*result);
        EXPECT_EQ(streams(report, u"video").size(), 1);
        const QList<QJsonObject> audio = streams(report, u"audio");
        ASSERT_EQ(audio.size(), row.channels > 0 ? 1 : 0);
        if (row.channels > 0) {
            EXPECT_EQ(audio[0][u"channels"].toInt(), row.channels);
        }
        EXPECT_TRUE(decodesCleanly(*result));
        const VideoFacts facts = FfmpegProbe().probeVideo(*result, {});
        EXPECT_EQ(facts.audioTrackCount, row.channels > 0 ? 1 : 0);
        EXPECT_EQ(facts.audioCodecCode.has_value(), row.channels > 0);
    }
}

// Every format keeps the stored picture, as ffmpeg decodes the first frame of source and
// movie: an odd side is a finding, so every format crops it (though 4:2:2 could carry an odd
// height) and keeps the top-left pixels; levels and colours survive the trip into
// limited-range YUV from full-range YUV, RGB and the ProRes layout itself.
TEST_F(VideoConversion, EveryFormatKeepsThePictureItsLevelsAndColours)
{
    const struct {
        const char *source;
        const char *sourceFilter; // what of the source's frame the movie shows
        const char *pixelFormat;  // compared as
        int channels;             // of that pixel format
        double most;              // mean difference the encoders may lose
    } rows[] = {
        // Luma survives CRF 17 within a few levels; a shifted or scaled picture would not.
        {"odd.mov", "crop=320:180:0:0", "gray", 1, 2.0},
        // Wrong levels or a wrong matrix shift every pixel by far more than this.
        {"fullrange.mov", "null", "rgb24", 3, 4.0},
        {"rgb.mov", "null", "rgb24", 3, 4.0},
        {"prores10.mov", "null", "rgb24", 3, 4.0},
    };
    for (const auto &source : rows) {
        const QByteArray expected =
            firstFrame(path(QLatin1String(source.source)), source.sourceFilter, source.pixelFormat)
                .out;
        ASSERT_EQ(expected.size(), 320 * 180 * source.channels) << source.source;
        for (const FormatCase &row : kFormatCases) {
            SCOPED_TRACE(std::string(source.source) + ", " + row.name);
            const ConvertResult result = convert(QLatin1String(source.source), row.format);
            ASSERT_TRUE(result) << result.error().description().toStdString();
            const QJsonObject video = streams(ffprobe(*result), u"video").value(0);
            // H.264 states nothing when the source stated no colours; limited is its default.
            EXPECT_NE(video[u"color_range"].toString(), "pc");
            const MediaFixtures::Run got = firstFrame(*result, "null", source.pixelFormat);
            EXPECT_TRUE(got.exitCode == 0 && got.err.isEmpty()) << got.err.toStdString();
            ASSERT_EQ(got.out.size(), expected.size());
            EXPECT_LT(meanDifference(got.out, expected), source.most);
        }
    }
}

TEST_F(VideoConversion, VariableFrameRateBecomesTheNearestCommonConstantRate)
{
    // 30 frames over 2.32 s (12.9 fps on average): the nearest common rate is 23.976.
    const double frame = 1001.0 / 24000.0;
    for (const FormatCase &row : kFormatCases) {
        SCOPED_TRACE(row.name);
        const ConvertResult result = convert("vfr.mov", row.format);
        ASSERT_TRUE(result) << result.error().description().toStdString();
        const QList<double> written = packetTimes(*result, "v");
        ASSERT_GT(written.size(), 50);
        for (qsizetype i = 1; i < written.size(); ++i)
            EXPECT_NEAR(written[i] - written[i - 1], frame, 0.0005) << "frame " << i;
        const QJsonObject video = streams(ffprobe(*result), u"video").value(0);
        EXPECT_NEAR(number(video, "duration"), 2.32, frame);
    }
}

TEST_F(VideoConversion, ProgressRisesAndEndsWithExactlyOne)
{
    QList<double> progress;
    const ConvertResult result =
        convert("long.mov", ArenaConvertFormat::proRes422LT, false,
                [&progress](double fraction) { progress.append(fraction); });
    ASSERT_TRUE(result) << result.error().description().toStdString();
    ASSERT_GE(progress.size(), 3); // several seconds of work, reported every 120 ms
    for (qsizetype i = 1; i < progress.size(); ++i)
        EXPECT_LE(progress[i - 1], progress[i]) << "at " << i;
    EXPECT_EQ(progress.front(), 0.0);
    EXPECT_EQ(progress.back(), 1.0);
    EXPECT_GT(progress[progress.size() - 2], 0.5); // the last sample before the end is late
}
