// The real media layer against ffprobe, file by file, and against plain known values.
#include "mediafixtures.h"
#include "support/clips.h"

#include "media/ffmpeg/ffmpegprobe.h"
#include "media/mediainspector.h"

#include <QJsonArray>

#include <cmath>
#include <cstdlib>

namespace {

using MediaFixtures::path;

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

// Each fixture with the codes a QuickTime reader reports for its first video and audio track
// (nullptr: none): the stored sample entry in QuickTime and MP4, otherwise the entry a QuickTime
// writer would use; audio trimmed as fourCC() trims it.
struct Fixture {
    const char *name;
    const char *video;
    const char *audio;
};

const Fixture kFixtures[] = {
    {"h264.mov", "avc1", "aac"},        {"h264.mp4", "avc1", ".mp3"},
    {"h264.mkv", "avc1", "ac-3"},       {"hevc_hvc1.mp4", "hvc1", "ec-3"},
    {"hevc_hev1.mov", "hev1", "alac"},  {"prores_proxy.mov", "apco", "lpcm"},
    {"prores_hq.mov", "apch", "lpcm"},  {"prores_4444.mov", "ap4h", nullptr},
    {"prores_hq.mkv", "apch", nullptr}, {"hap1.mov", "Hap1", nullptr},
    {"vp9.webm", "vp09", "opus"},       {"mpeg2.mpg", "m2v1", ".mp2"},
    {"mjpeg.avi", "jpeg", "lpcm"},      {"mpeg2.mxf", "m2v1", "lpcm"},
    {"rate2997.mov", "avc1", "aac"},    {"rate23976.mkv", "avc1", "fLaC"},
    {"odd.mov", "avc1", nullptr},       {"two_audio.mov", "avc1", "aac"}, // the first track
    {"audio_only.mov", nullptr, "aac"}, {"phone_rotated.mov", "avc1", "aac"},
    {"timeline.mov", "avc1", nullptr},  {"mkv_named.mov", "avc1", "ac-3"},
    {"mpg_named.mp4", "m2v1", ".mp2"}};

// Whatever ffprobe reads from a fixture, MediaInspector over FfmpegProbe reports the same.
TEST(FfmpegProbe, AgreesWithFfprobeOnEveryFixture)
{
    for (const Fixture &row : kFixtures) {
        SCOPED_TRACE(row.name);
        const QString file = path(QString::fromLatin1(row.name));
        const QJsonObject report = MediaFixtures::ffprobe(file);
        ASSERT_FALSE(report.isEmpty()) << "ffprobe cannot read it";
        QJsonObject video; // the first that is no cover art
        for (const QJsonObject &stream : MediaFixtures::streams(report, u"video")) {
            if (stream[u"disposition"][u"attached_pic"].toInt() == 0 && video.isEmpty())
                video = stream;
        }
        const bool audio = !MediaFixtures::streams(report, u"audio").isEmpty();

        const MediaClip clip = MediaInspector::inspect(file, InspectionRules{}, FfmpegProbe{});
        for (const ClipIssue &issue : clip.issues)
            EXPECT_NE(issue.kind, IssueKind::readError)
                << issue.textValue.value_or("").toStdString();
        ASSERT_TRUE(clip.duration.has_value());
        EXPECT_NEAR(*clip.duration, report[u"format"][u"duration"].toString().toDouble(), 0.001);
        EXPECT_EQ(clip.hasAudio, audio);
        EXPECT_EQ(clip.audioCodec, row.audio ? std::optional<QString>(row.audio) : std::nullopt);
        EXPECT_EQ(clip.videoCodec, row.video ? std::optional<QString>(row.video) : std::nullopt);
        if (video.isEmpty()) {
            EXPECT_FALSE(clip.width || clip.height || clip.frameRate);
            EXPECT_EQ(issueKinds(clip).value(0), IssueKind::noVideo);
            continue;
        }
        const bool quarterTurn = std::abs(rotation(video)) % 180 == 90;
        const int width = video[u"width"].toInt();
        const int height = video[u"height"].toInt();
        EXPECT_EQ(clip.width, quarterTurn ? height : width);
        EXPECT_EQ(clip.height, quarterTurn ? width : height);
        const QString average = video[u"avg_frame_rate"].toString();
        const double fps =
            rate(average) > 0 ? rate(average) : rate(video[u"r_frame_rate"].toString());
        ASSERT_TRUE(clip.frameRate.has_value());
        EXPECT_NEAR(*clip.frameRate, fps, 1e-4);
    }
}

// Sizes, rates and durations as plain numbers, so that a fault shared with ffprobe cannot hide.
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
}

TEST(FfmpegProbe, StillsReportTheirStoredSize)
{
    struct Row {
        const char *name;
        qint64 width;
        qint64 height;
    };
    const Row rows[] = {{"still.png", 641, 361},  {"still_1921.png", 1921, 1080},
                        {"still.jpg", 640, 480},  {"still.tiff", 300, 200},
                        {"still.heic", 400, 300}, {"exif_rotated.jpg", 200, 100}};
    const FfmpegProbe probe;
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        const ImageFacts facts = probe.probeImage(path(row.name), {});
        EXPECT_TRUE(facts.hasProperties);
        EXPECT_EQ(facts.width, row.width);
        EXPECT_EQ(facts.height, row.height);
    }
}

} // namespace
