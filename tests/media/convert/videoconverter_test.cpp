// Real conversions of small movies, each output checked by ffprobe and decoded by ffmpeg.
#include "convertfixtures.h"

#include "media/convert/mediaconverter.h"
#include "media/ffmpeg/ffmpegprobe.h"
#include "media/mediainspector.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace ConvertFixtures;

namespace {

class VideoConversion : public ::testing::Test
{
protected:
    // Converts a fixture into the test's own folder; the source must come out untouched.
    ConvertResult convert(const QString &fixture, ArenaConvertFormat format, bool dropAudio = false,
                          QList<double> *progress = nullptr)
    {
        const QString source = path(fixture);
        const Snapshot before = Snapshot::of(source);
        EXPECT_GT(before.size, 0) << "fixture missing: " << source.toStdString();
        ConvertResult result =
            MediaConverter::convertVideo(clipFor(source, QStringLiteral("01_clip")),
                                         m_folder.path(), ConvertOptions{format, dropAudio, false},
                                         [progress](double fraction) {
                                             if (progress)
                                                 progress->append(fraction);
                                         },
                                         {});
        EXPECT_EQ(Snapshot::of(source), before) << "the source changed";
        return result;
    }

    QString output() const { return m_folder.filePath(QStringLiteral("01_clip.mov")); }

    QTemporaryDir m_folder;
};

double number(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString().toDouble();
}

// The first frame as ffmpeg decodes it to raw pixels, after `filter`.
QByteArray firstFrame(const QString &file, const QString &filter, const QString &pixelFormat)
{
    return run(QStringLiteral("ffmpeg"),
               {"-nostdin", "-v", "error", "-i", file, "-frames:v", "1", "-vf", filter, "-f",
                "rawvideo", "-pix_fmt", pixelFormat, "-"})
        .out;
}

double meanDifference(const QByteArray &a, const QByteArray &b)
{
    qint64 total = 0;
    for (qsizetype i = 0; i < a.size(); ++i)
        total += std::abs(int(quint8(a[i])) - int(quint8(b[i])));
    return double(total) / double(a.size());
}

struct FormatCase {
    const char *name;
    ArenaConvertFormat format;
    const char *videoTag;
    const char *profile;
    const char *pixelFormat;
    const char *audioCodec;
    const char *audioTag;
};

const FormatCase kFormatCases[] = {
    {"ProRes 422", ArenaConvertFormat::proRes422, "apcn", "Standard", "yuv422p10le", "pcm_s16le",
     "sowt"},
    {"ProRes 422 LT", ArenaConvertFormat::proRes422LT, "apcs", "LT", "yuv422p10le", "pcm_s16le",
     "sowt"},
    {"H.264", ArenaConvertFormat::h264, "avc1", "High", "yuv420p", "aac", "mp4a"},
};

} // namespace

TEST_F(VideoConversion, EachFormatWritesItsCodecSizeDurationAndAudio)
{
    const QJsonObject source = ffprobe(path(QStringLiteral("av.mov")));
    const QJsonObject sourceVideo = streams(source, QStringLiteral("video")).value(0);
    const double frame = 1.0 / 25;
    for (const FormatCase &row : kFormatCases) {
        SCOPED_TRACE(row.name);
        QFile old(output()); // an older conversion of the same name is replaced
        ASSERT_TRUE(old.open(QIODevice::WriteOnly));
        old.write("an older conversion");
        old.close();
        const ConvertResult result = convert(QStringLiteral("av.mov"), row.format);
        ASSERT_TRUE(result) << result.error().description().toStdString();
        EXPECT_EQ(*result, output());
        EXPECT_EQ(entries(m_folder.path()), QStringList{QStringLiteral("01_clip.mov")});

        const QJsonObject report = ffprobe(*result);
        EXPECT_EQ(report.value(QStringLiteral("format"))
                      .toObject()
                      .value(QStringLiteral("format_name"))
                      .toString(),
                  QStringLiteral("mov,mp4,m4a,3gp,3g2,mj2"));
        const QList<QJsonObject> video = streams(report, QStringLiteral("video"));
        ASSERT_EQ(video.size(), 1);
        EXPECT_EQ(video[0].value(QStringLiteral("codec_tag_string")).toString(),
                  QLatin1String(row.videoTag));
        EXPECT_EQ(video[0].value(QStringLiteral("profile")).toString(), QLatin1String(row.profile));
        EXPECT_EQ(video[0].value(QStringLiteral("pix_fmt")).toString(),
                  QLatin1String(row.pixelFormat));
        EXPECT_EQ(video[0].value(QStringLiteral("width")).toInt(), 320);
        EXPECT_EQ(video[0].value(QStringLiteral("height")).toInt(), 180);
        EXPECT_EQ(video[0].value(QStringLiteral("nb_frames")).toString(),
                  sourceVideo.value(QStringLiteral("nb_frames")).toString());
        EXPECT_NEAR(number(video[0], "duration"), number(sourceVideo, "duration"), frame);
        EXPECT_EQ(video[0].value(QStringLiteral("avg_frame_rate")).toString(),
                  QStringLiteral("25/1"));

        const QList<QJsonObject> audio = streams(report, QStringLiteral("audio"));
        ASSERT_EQ(audio.size(), 1);
        EXPECT_EQ(audio[0].value(QStringLiteral("codec_name")).toString(),
                  QLatin1String(row.audioCodec));
        EXPECT_EQ(audio[0].value(QStringLiteral("codec_tag_string")).toString(),
                  QLatin1String(row.audioTag));
        EXPECT_EQ(audio[0].value(QStringLiteral("channels")).toInt(), 2);
        EXPECT_EQ(audio[0].value(QStringLiteral("sample_rate")).toString(),
                  QStringLiteral("48000"));
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
        ASSERT_TRUE(facts.duration);
        EXPECT_NEAR(*facts.duration, number(sourceVideo, "duration"), frame);
        EXPECT_FLOAT_EQ(facts.nominalFrameRate, 25.0f);
        EXPECT_EQ(facts.videoTrackCount, 1);
        EXPECT_EQ(facts.audioTrackCount, 1);
    }
}

TEST_F(VideoConversion, ProResLtIsLighterThanProRes422)
{
    qint64 sizes[2] = {};
    const ArenaConvertFormat formats[] = {ArenaConvertFormat::proRes422,
                                          ArenaConvertFormat::proRes422LT};
    for (int i = 0; i < 2; ++i) {
        const ConvertResult result = convert(QStringLiteral("av.mov"), formats[i], true);
        ASSERT_TRUE(result) << result.error().description().toStdString();
        sizes[i] = QFileInfo(*result).size();
    }
    EXPECT_LT(sizes[1], sizes[0] * 9 / 10);
    EXPECT_GT(sizes[1], sizes[0] / 2);
}

// The movie header ahead of the media data lets players start without seeking to the end.
TEST_F(VideoConversion, H264PutsTheMovieHeaderFirst)
{
    const ConvertResult result = convert(QStringLiteral("silent.mp4"), ArenaConvertFormat::h264);
    ASSERT_TRUE(result) << result.error().description().toStdString();
    QFile file(*result);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QStringList topLevel;
    for (qsizetype at = 0; at + 8 <= bytes.size();) {
        const quint32 size = (quint8(bytes[at]) << 24) | (quint8(bytes[at + 1]) << 16) |
                             (quint8(bytes[at + 2]) << 8) | quint8(bytes[at + 3]);
        topLevel.append(QString::fromLatin1(bytes.mid(at + 4, 4)));
        if (size < 8)
            break;
        at += size;
    }
    ASSERT_TRUE(topLevel.contains(QStringLiteral("moov"))) << topLevel.join(u' ').toStdString();
    ASSERT_TRUE(topLevel.contains(QStringLiteral("mdat")));
    EXPECT_LT(topLevel.indexOf(QStringLiteral("moov")), topLevel.indexOf(QStringLiteral("mdat")));
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
        EXPECT_EQ(streams(report, QStringLiteral("video")).size(), 1);
        const QList<QJsonObject> audio = streams(report, QStringLiteral("audio"));
        ASSERT_EQ(audio.size(), row.channels > 0 ? 1 : 0);
        if (row.channels > 0) {
            EXPECT_EQ(audio[0].value(QStringLiteral("channels")).toInt(), row.channels);
        }
        EXPECT_TRUE(decodesCleanly(*result));
        const VideoFacts facts = FfmpegProbe().probeVideo(*result, {});
        EXPECT_EQ(facts.audioTrackCount, row.channels > 0 ? 1 : 0);
        EXPECT_EQ(facts.audioCodecCode.has_value(), row.channels > 0);
    }
}

TEST_F(VideoConversion, DisplayMatrixIsCarriedOverAndPixelsStayStored)
{
    for (const FormatCase &row : kFormatCases) {
        SCOPED_TRACE(row.name);
        const ConvertResult result = convert(QStringLiteral("rotated.mov"), row.format);
        ASSERT_TRUE(result) << result.error().description().toStdString();
        const QJsonObject video = streams(ffprobe(*result), QStringLiteral("video")).value(0);
        EXPECT_EQ(video.value(QStringLiteral("width")).toInt(), 320);
        EXPECT_EQ(video.value(QStringLiteral("height")).toInt(), 180);
        const QJsonArray sideData = video.value(QStringLiteral("side_data_list")).toArray();
        ASSERT_EQ(sideData.size(), 1);
        EXPECT_EQ(sideData[0].toObject().value(QStringLiteral("rotation")).toInt(), -90);
        EXPECT_TRUE(decodesCleanly(*result));

        const std::optional<DisplayMatrix> sourceMatrix =
            FfmpegProbe().probeVideo(path(QStringLiteral("rotated.mov")), {}).transform;
        ASSERT_TRUE(sourceMatrix);
        ASSERT_NE(*sourceMatrix, DisplayMatrix{});
        EXPECT_EQ(FfmpegProbe().probeVideo(*result, {}).transform, sourceMatrix);
    }
}

TEST_F(VideoConversion, OddSidesLoseTheirLastColumnOrRowInEveryFormat)
{
    struct Row {
        const char *name;
        ArenaConvertFormat format;
        int width;
        int height;
    };
    // 4:2:2 could carry an odd height, but an odd side is a finding: every format crops it.
    const Row rows[] = {{"ProRes 422", ArenaConvertFormat::proRes422, 320, 180},
                        {"ProRes 422 LT", ArenaConvertFormat::proRes422LT, 320, 180},
                        {"H.264", ArenaConvertFormat::h264, 320, 180}};
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        const ConvertResult result = convert(QStringLiteral("odd.mov"), row.format);
        ASSERT_TRUE(result) << result.error().description().toStdString();
        const QJsonObject video = streams(ffprobe(*result), QStringLiteral("video")).value(0);
        EXPECT_EQ(video.value(QStringLiteral("width")).toInt(), row.width);
        EXPECT_EQ(video.value(QStringLiteral("height")).toInt(), row.height);
        EXPECT_TRUE(decodesCleanly(*result));
    }
}

TEST_F(VideoConversion, CropKeepsTheTopLeftPixels)
{
    const ConvertResult result = convert(QStringLiteral("odd.mov"), ArenaConvertFormat::h264);
    ASSERT_TRUE(result) << result.error().description().toStdString();
    // Both first frames as 320×180 grey, the source cropped by ffmpeg.
    const QByteArray expected = firstFrame(path("odd.mov"), "crop=320:180:0:0", "gray");
    const QByteArray got = firstFrame(*result, "null", "gray");
    ASSERT_EQ(expected.size(), 320 * 180);
    ASSERT_EQ(got.size(), expected.size());
    // Luma survives CRF 17 within a few levels; a shifted or scaled picture would not.
    EXPECT_LT(meanDifference(got, expected), 2.0);
}

// Levels and colours survive the trip into limited-range YUV: ffmpeg shows the first frame of
// source and movie as RGB, and they agree within what the encoders lose.
TEST_F(VideoConversion, SourcesOfEveryLayoutKeepTheirColours)
{
    for (const char *name : {"fullrange.mov", "rgb.mov", "prores10.mov"}) {
        for (const FormatCase &row : kFormatCases) {
            SCOPED_TRACE(std::string(name) + ", " + row.name);
            const ConvertResult result = convert(QLatin1String(name), row.format);
            ASSERT_TRUE(result) << result.error().description().toStdString();
            const QJsonObject video = streams(ffprobe(*result), QStringLiteral("video")).value(0);
            // H.264 states nothing when the source stated no colours; limited is its default.
            EXPECT_NE(video.value(QStringLiteral("color_range")).toString(), QStringLiteral("pc"));
            const QByteArray expected = firstFrame(path(QLatin1String(name)), "null", "rgb24");
            const QByteArray got = firstFrame(*result, "null", "rgb24");
            ASSERT_EQ(expected.size(), 320 * 180 * 3);
            ASSERT_EQ(got.size(), expected.size());
            // Wrong levels or a wrong matrix shift every pixel by far more than this.
            EXPECT_LT(meanDifference(got, expected), 4.0);
        }
    }
}

TEST_F(VideoConversion, VariableFrameRateBecomesTheNearestCommonConstantRate)
{
    // 30 frames over 2.32 s (12.9 fps on average): the nearest common rate is 23.976.
    const double frame = 1001.0 / 24000.0;
    for (const FormatCase &row : kFormatCases) {
        SCOPED_TRACE(row.name);
        const ConvertResult result = convert(QStringLiteral("vfr.mov"), row.format);
        ASSERT_TRUE(result) << result.error().description().toStdString();
        QList<double> written = packetTimes(*result, QStringLiteral("v"));
        std::sort(written.begin(), written.end());
        ASSERT_GT(written.size(), 50);
        for (qsizetype i = 1; i < written.size(); ++i)
            EXPECT_NEAR(written[i] - written[i - 1], frame, 0.0005) << "frame " << i;
        const QJsonObject video = streams(ffprobe(*result), QStringLiteral("video")).value(0);
        EXPECT_NEAR(number(video, "duration"), 2.32, frame);
    }
}

TEST_F(VideoConversion, ProgressRisesAndEndsWithExactlyOne)
{
    QList<double> progress;
    const ConvertResult result =
        convert(QStringLiteral("long.mov"), ArenaConvertFormat::proRes422LT, false, &progress);
    ASSERT_TRUE(result) << result.error().description().toStdString();
    ASSERT_GE(progress.size(), 3); // several seconds of work, reported every 120 ms
    for (qsizetype i = 1; i < progress.size(); ++i)
        EXPECT_LE(progress[i - 1], progress[i]) << "at " << i;
    EXPECT_EQ(progress.front(), 0.0);
    EXPECT_EQ(progress.back(), 1.0);
    EXPECT_GT(progress[progress.size() - 2], 0.5); // the last sample before the end is late
}
