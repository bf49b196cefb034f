// The real media layer against ffprobe, file by file: whatever ffprobe reads from a fixture,
// MediaInspector over FfmpegProbe has to report the same, through the same code mappings.
#include "mediafixtures.h"

#include "media/ffmpeg/ffmpegprobe.h"
#include "media/mediainspector.h"

#include <QJsonArray>

#include <cmath>
#include <cstdlib>

namespace {

using MediaFixtures::path;

// What a QuickTime reader calls the first video track, restated from ffprobe's fields: the
// stored sample entry in QuickTime and MP4, otherwise the entry a QuickTime writer would use.
QString expectedVideoCode(const QJsonObject &format, const QJsonObject &stream)
{
    if (format[u"format_name"].toString().startsWith(u"mov,"))
        return stream[u"codec_tag_string"].toString();
    const QString codec = stream[u"codec_name"].toString();
    if (codec == u"prores") {
        static const QHash<QString, QString> byProfile{{"Proxy", "apco"},    {"LT", "apcs"},
                                                       {"Standard", "apcn"}, {"HQ", "apch"},
                                                       {"4444", "ap4h"},     {"XQ", "ap4x"}};
        return byProfile.value(stream[u"profile"].toString(), "?");
    }
    static const QHash<QString, QString> byCodec{{"h264", "avc1"},       {"hevc", "hvc1"},
                                                 {"vp9", "vp09"},        {"mjpeg", "jpeg"},
                                                 {"mpeg2video", "m2v1"}, {"hap", "Hap1"}};
    return byCodec.value(codec, "?");
}

// The audio format identifier, trimmed as fourCC() trims it.
QString expectedAudioCode(const QJsonObject &stream)
{
    const QString codec = stream[u"codec_name"].toString();
    if (codec.startsWith(u"pcm_") && codec != u"pcm_mulaw" && codec != u"pcm_alaw")
        return "lpcm";
    static const QHash<QString, QString> byCodec{
        {"aac", "aac"},   {"mp3", ".mp3"},  {"mp2", ".mp2"},  {"ac3", "ac-3"},
        {"eac3", "ec-3"}, {"alac", "alac"}, {"opus", "opus"}, {"flac", "fLaC"}};
    return byCodec.value(codec, "?");
}

double rate(const QString &fraction)
{
    const QStringList parts = fraction.split(u'/');
    if (parts.size() != 2 || parts[1].toDouble() == 0)
        return 0;
    return parts[0].toDouble() / parts[1].toDouble();
}

int rotation(const QJsonObject &stream)
{
    for (const QJsonValue &data : stream[u"side_data_list"].toArray()) {
        if (data.toObject().contains(u"rotation"))
            return data.toObject()[u"rotation"].toInt();
    }
    return 0;
}

class AgreesWithFfprobe : public ::testing::TestWithParam<const char *>
{
};

TEST_P(AgreesWithFfprobe, EveryField)
{
    const QString file = path(QString::fromLatin1(GetParam()));
    const QJsonObject report = MediaFixtures::ffprobe(file);
    ASSERT_FALSE(report.isEmpty()) << "ffprobe cannot read " << GetParam();
    const QJsonObject format = report[u"format"].toObject();
    QJsonObject video;
    QJsonObject audio;
    for (const QJsonValue &value : report[u"streams"].toArray()) {
        const QJsonObject stream = value.toObject();
        const QString type = stream[u"codec_type"].toString();
        const bool coverArt = stream[u"disposition"].toObject()[u"attached_pic"].toInt() != 0;
        if (type == u"video" && !coverArt && video.isEmpty())
            video = stream;
        if (type == u"audio" && audio.isEmpty())
            audio = stream;
    }

    const MediaClip clip = MediaInspector::inspect(file, InspectionRules{}, FfmpegProbe{});
    EXPECT_TRUE(clip.isInspected);
    for (const ClipIssue &issue : clip.issues)
        EXPECT_NE(issue.kind, IssueKind::readError) << issue.textValue.value_or("").toStdString();

    ASSERT_TRUE(clip.duration.has_value());
    EXPECT_NEAR(*clip.duration, format[u"duration"].toString().toDouble(), 0.001);
    EXPECT_EQ(clip.hasAudio, !audio.isEmpty());
    if (audio.isEmpty())
        EXPECT_FALSE(clip.audioCodec.has_value());
    else
        EXPECT_EQ(clip.audioCodec, expectedAudioCode(audio));

    if (video.isEmpty()) {
        EXPECT_FALSE(clip.width || clip.height || clip.frameRate || clip.videoCodec);
        return;
    }
    const bool quarterTurn = std::abs(rotation(video)) % 180 == 90;
    const int width = video[u"width"].toInt();
    const int height = video[u"height"].toInt();
    EXPECT_EQ(clip.width, quarterTurn ? height : width);
    EXPECT_EQ(clip.height, quarterTurn ? width : height);
    const QString average = video[u"avg_frame_rate"].toString();
    const double fps = rate(average) > 0 ? rate(average) : rate(video[u"r_frame_rate"].toString());
    ASSERT_TRUE(clip.frameRate.has_value());
    EXPECT_NEAR(*clip.frameRate, fps, 1e-4);
    EXPECT_EQ(clip.videoCodec, expectedVideoCode(format, video));
}

INSTANTIATE_TEST_SUITE_P(Fixtures, AgreesWithFfprobe,
                         ::testing::Values("h264.mov", "h264.mp4", "h264.mkv", "hevc_hvc1.mp4",
                                           "hevc_hev1.mov", "prores_proxy.mov", "prores_lt.mov",
                                           "prores_422.mov", "prores_hq.mov", "prores_4444.mov",
                                           "prores_hq.mkv", "hap1.mov", "hap5.mov", "hapy.mov",
                                           "vp9.webm", "mpeg2.mpg", "mjpeg.avi", "mpeg2.mxf",
                                           "rate2997.mov", "rate23976.mkv", "odd.mov",
                                           "two_audio.mov", "audio_only.mov", "phone_rotated.mov",
                                           "timeline.mov"),
                         [](const ::testing::TestParamInfo<const char *> &param) {
                             std::string name = param.param;
                             for (char &c : name)
                                 c = std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
                             return name;
                         });

// The same facts as plain numbers, so that a fault shared by ffprobe and the test's mapping
// cannot hide.
TEST(FfmpegProbe, KnownValues)
{
    const FfmpegProbe probe;
    const InspectionRules rules;
    const auto inspect = [&](const char *name) {
        return MediaInspector::inspect(path(name), rules, probe);
    };

    const MediaClip phone = inspect("phone_rotated.mov");
    EXPECT_EQ(phone.width, 1080);
    EXPECT_EQ(phone.height, 1920);
    EXPECT_EQ(phone.frameRate, 30.0);

    const MediaClip ntsc = inspect("rate2997.mov");
    EXPECT_EQ(ntsc.frameRate, static_cast<double>(30000.0f / 1001.0f));
    EXPECT_NEAR(*ntsc.duration, 2.002, 1e-9);
    EXPECT_NEAR(*inspect("rate23976.mkv").frameRate, 23.976, 1e-3);

    const MediaClip odd = inspect("odd.mov");
    EXPECT_EQ(odd.width, 641);
    EXPECT_EQ(odd.height, 361);
    EXPECT_TRUE(std::any_of(odd.issues.begin(), odd.issues.end(),
                            [](const ClipIssue &i) { return i.kind == IssueKind::oddSize; }));

    EXPECT_EQ(inspect("prores_proxy.mov").videoCodec, "apco");
    EXPECT_EQ(inspect("prores_hq.mkv").videoCodec, "apch");
    EXPECT_EQ(inspect("mpeg2.mxf").videoCodec, "m2v1");
    EXPECT_EQ(inspect("mjpeg.avi").videoCodec, "jpeg");
    EXPECT_EQ(inspect("vp9.webm").videoCodec, "vp09");
    EXPECT_EQ(inspect("h264.mkv").videoCodec, "avc1");
    EXPECT_EQ(inspect("hap5.mov").videoCodec, "Hap5");

    EXPECT_EQ(inspect("h264.mov").audioCodec, "aac");
    EXPECT_EQ(inspect("h264.mp4").audioCodec, ".mp3");
    EXPECT_EQ(inspect("prores_lt.mov").audioCodec, "lpcm");
    EXPECT_EQ(inspect("prores_hq.mov").audioCodec, "lpcm");
    EXPECT_EQ(inspect("mpeg2.mpg").audioCodec, ".mp2");
    EXPECT_EQ(inspect("rate23976.mkv").audioCodec, "fLaC");
    EXPECT_EQ(inspect("hevc_hvc1.mp4").audioCodec, "ec-3");

    const MediaClip twoTracks = inspect("two_audio.mov");
    EXPECT_TRUE(twoTracks.hasAudio);
    EXPECT_EQ(twoTracks.audioCodec, "aac"); // the first audio track
}

TEST(FfmpegProbe, StillsReportTheirStoredSize)
{
    struct Row {
        const char *name;
        qint64 width;
        qint64 height;
    };
    const Row rows[] = {
        {"still.png", 641, 361},  {"still_1921.png", 1921, 1080}, {"still.jpg", 640, 480},
        {"still.tiff", 300, 200}, {"still.gif", 300, 200},        {"still.bmp", 300, 200},
        {"still.webp", 300, 200}, {"still.heic", 400, 300},       {"exif_rotated.jpg", 200, 100}};
    const FfmpegProbe probe;
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        const ImageFacts facts = probe.probeImage(path(row.name), {});
        EXPECT_TRUE(facts.opened);
        EXPECT_TRUE(facts.hasProperties);
        EXPECT_EQ(facts.width, row.width);
        EXPECT_EQ(facts.height, row.height);
        const MediaClip clip = MediaInspector::inspect(path(row.name), InspectionRules{}, probe);
        EXPECT_EQ(clip.width, row.width);
        EXPECT_EQ(clip.duration, 0.0);
    }
    const MediaClip odd = MediaInspector::inspect(path("still_1921.png"), {}, probe);
    EXPECT_EQ(odd.videoCodec, "PNG");
    EXPECT_TRUE(std::any_of(odd.issues.begin(), odd.issues.end(),
                            [](const ClipIssue &i) { return i.kind == IssueKind::oddSize; }));
}

} // namespace
