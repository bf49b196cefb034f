// Stage traps (variable rate, interlacing, HDR) in clips made by the ffmpeg CLI: the product's
// probe finds each, and never in the clean clips of the other fixture set; converting takes the
// traps out: probed again, none is left, and the ffmpeg CLI, reading the movies independently,
// agrees with how they were fixed.
#include "media/convert/ffmpegconversion.h"
#include "media/convert/mediaconverter.h"
#include "media/ffmpeg/ffmpegprobe.h"
#include "media/mediafixtures.h"
#include "media/mediainspector.h"
#include "session/sessionfixture.h"
#include "support/clips.h"

#include <QCoroTask>
#include <QDirIterator>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>

using namespace MediaFixtures;

namespace {

QString trapFixture(const QString &name)
{
    return QDir(QStringLiteral(CUEBOX_STAGETRAP_FIXTURES)).filePath(name);
}

// Each trap clip with the one finding it gets, as traps() lists it.
const struct {
    const char *file;
    const char *trap;
} kTrapClips[] = {{"vfr.mp4", "variableFrameRate"},
                  {"vfr.mkv", "variableFrameRate"},
                  {"interlaced_h264.mp4", "interlaced"},
                  {"interlaced_mpeg2.mpg", "interlaced"},
                  {"pq_hevc.mp4", "hdr PQ"},
                  {"hlg_hevc.mp4", "hdr HLG"}};

// Means of the picture statistics ffmpeg's signalstats gives frame by frame (YAVG, YLOW,
// YHIGH), on 8-bit pictures, from one decode.
QHash<QString, double> lumaStats(const QString &file)
{
    const Run decoded =
        run("ffmpeg", {"-v", "error", "-nostdin", "-i", file, "-vf",
                       "format=yuv420p,signalstats,metadata=print:file=-", "-f", "null", "-"});
    const QRegularExpression line("lavfi\\.signalstats\\.(YAVG|YLOW|YHIGH)=([0-9.]+)");
    QHash<QString, double> sums;
    QHash<QString, int> counts;
    for (auto it = line.globalMatch(QString::fromUtf8(decoded.out + decoded.err)); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        sums[match.captured(1)] += match.captured(2).toDouble();
        ++counts[match.captured(1)];
    }
    for (auto it = sums.begin(); it != sums.end(); ++it)
        *it /= counts[it.key()];
    return sums;
}

// The findings among the three stage traps, with the HDR transfer beside its kind.
QStringList traps(const MediaClip &clip)
{
    QStringList out;
    for (const ClipIssue &issue : clip.issues) {
        if (issue.kind == IssueKind::variableFrameRate || issue.kind == IssueKind::interlaced ||
            issue.kind == IssueKind::hdr)
            out.append(rawValue(issue.kind) + (issue.textValue ? " " + *issue.textValue : ""));
    }
    return out;
}

// Frames divided by seconds, as ffprobe counts the video packets and times the track.
double ffprobeAverageRate(const QString &file)
{
    const QJsonArray packets =
        QJsonDocument::fromJson(
            run("ffprobe", {"-v", "error", "-select_streams", "v:0", "-show_entries",
                            "packet=pts_time,duration_time", "-of", "json", file})
                .out)["packets"]
            .toArray();
    double first = 1e300;
    double end = -1e300;
    for (const QJsonValue &p : packets) {
        const double pts = p["pts_time"].toString().toDouble();
        first = std::min(first, pts);
        end = std::max(end, pts + p["duration_time"].toString().toDouble());
    }
    return packets.isEmpty() ? 0 : packets.size() / (end - first);
}

} // namespace

TEST(StageTrapProbe, EachTrapClipGetsItsOwnFindingOnlyAndAVariableRateItsAverage)
{
    const FfmpegProbe probe;
    for (const auto &row : kTrapClips) {
        SCOPED_TRACE(row.file);
        const MediaClip clip = MediaInspector::inspect(trapFixture(row.file), {}, probe);
        EXPECT_EQ(traps(clip), QStringList{row.trap});
        // After the bit-rate finding and before the audio one.
        const QList<IssueKind> kinds = issueKinds(clip);
        const auto at = [&](IssueKind kind) { return kinds.indexOf(kind); };
        const qsizetype trap = std::max(
            {at(IssueKind::variableFrameRate), at(IssueKind::interlaced), at(IssueKind::hdr)});
        ASSERT_GE(trap, 0);
        for (qsizetype i = trap + 1; i < clip.issues.size(); ++i)
            EXPECT_EQ(clip.issues[i].kind, IssueKind::audio);
        if (clip.hasAudio) {
            EXPECT_EQ(at(IssueKind::audio), trap + 1);
        }
        if (row.trap == std::string("variableFrameRate")) { // and shows its average rate
            const double expected = ffprobeAverageRate(trapFixture(row.file));
            ASSERT_GT(expected, 20); // 50 pictures over 2 s, stated as 50 fps by the container
            ASSERT_TRUE(clip.frameRate);
            EXPECT_NEAR(*clip.frameRate, expected, expected * 0.02);
        }
    }
}

TEST(StageTrapProbe, NoCleanFixtureShowsATrap)
{
    const FfmpegProbe probe;
    QDirIterator it(QStringLiteral(CUEBOX_MEDIA_FIXTURES), QDir::Files | QDir::System);
    int probed = 0;
    while (it.hasNext()) {
        const QString file = it.next();
        SCOPED_TRACE(file.toStdString());
        EXPECT_EQ(traps(MediaInspector::inspect(file, {}, probe)), QStringList());
        ++probed;
    }
    EXPECT_GT(probed, 30);
}

TEST(StageTrapConvert, ProResAndH264CopiesHaveNoTrapLeft)
{
    QTemporaryDir out;
    const FfmpegProbe probe;
    for (ArenaConvertFormat format : {ArenaConvertFormat::proRes422, ArenaConvertFormat::h264}) {
        for (const auto &row : kTrapClips) {
            const QString name = QString::fromLatin1(row.file);
            SCOPED_TRACE((name + " as " + rawValue(format)).toStdString());
            MediaClip clip = MediaClip::forFile(trapFixture(name));
            clip.arenaName = QFileInfo(name).completeBaseName() + "_" + rawValue(format);
            const ConvertResult converted =
                MediaConverter::convertVideo(clip, out.path(), {format, false, false}, {}, {});
            ASSERT_TRUE(converted) << converted.error().description().toStdString();
            const QString movie = *converted;
            EXPECT_EQ(traps(MediaInspector::inspect(movie, {}, probe)), QStringList());

            const QJsonObject stream = streams(ffprobe(movie), u"video").value(0);
            if (name.startsWith("vfr")) {
                // 25 fps on average becomes a constant 25 fps: every frame 40 ms.
                const QList<double> times = packetTimes(movie, "v:0");
                ASSERT_GT(times.size(), 40);
                for (qsizetype i = 1; i < times.size(); ++i)
                    EXPECT_NEAR(times[i] - times[i - 1], 0.040, 0.0005) << "frame " << i;
                EXPECT_EQ(stream["avg_frame_rate"].toString(), "25/1");
                const QList<double> source = packetTimes(trapFixture(name), "v:0");
                const double sourceSpan = source.last() + 0.02 - source.first(); // last: 20 ms
                EXPECT_NEAR(times.last() + 0.040 - times.first(), sourceSpan, 0.0401);
            } else if (name.startsWith("interlaced")) {
                EXPECT_EQ(stream["field_order"].toString(), "progressive");
                EXPECT_EQ(packetTimes(movie, "v:0").size(), 25); // one frame out per frame in
            } else {
                EXPECT_EQ(stream["color_transfer"].toString(), "bt709");
                EXPECT_EQ(stream["color_primaries"].toString(), "bt709");
                // The SDR pattern behind the fixture has mean luma 123 and a 10-90 % spread of
                // 169 codes; the PQ signal read as SDR is a flat grey (spread 61).
                const QHash<QString, double> luma = lumaStats(movie);
                EXPECT_GT(luma["YAVG"], 90);
                EXPECT_LT(luma["YAVG"], 150);
                EXPECT_GT(luma["YHIGH"] - luma["YLOW"], 110);
            }
        }
    }
}

namespace {

// The session over the product's own probe and converter.
class PackOfTraps : public SessionTest
{
protected:
    std::shared_ptr<const MediaProbe> probeForSession() override
    {
        return std::make_shared<FfmpegProbe>();
    }
    std::shared_ptr<const MediaConversion> conversionForSession() override
    {
        return std::make_shared<FfmpegConversion>();
    }
};

} // namespace

TEST_F(PackOfTraps, AfterPackConversionNoVideoKeepsAFixableFinding)
{
    QList<QUrl> urls;
    for (const char *file : {"vfr.mkv", "interlaced_mpeg2.mpg", "pq_hevc.mp4"})
        urls.append(url(trapFixture(file)));
    urls.append(url(MediaFixtures::path("odd.mov")));
    QCoro::waitFor(vm().ingest(urls));
    ASSERT_EQ(vm().clips().size(), 4);
    for (const MediaClip &clip : vm().clips())
        EXPECT_EQ(clip.health(), ClipHealth::warn);
    vm().setStripAudioOnConvert(true);
    m_panels.folders.push_back(path("out"));
    QDir().mkpath(path("out"));
    QCoro::waitFor(vm().convertPack(false));
    ASSERT_EQ(vm().status().kind(), PackStatus::Kind::converted) << vm().statusText().toStdString();
    const QList<IssueKind> fixable{
        IssueKind::variableFrameRate, IssueKind::interlaced, IssueKind::hdr,  IssueKind::oddSize,
        IssueKind::heavyCodec,        IssueKind::weirdCodec, IssueKind::audio};
    for (const MediaClip &clip : vm().clips()) {
        SCOPED_TRACE(clip.sourcePath().toStdString());
        EXPECT_TRUE(clip.sourcePath().startsWith(path("out")));
        for (const ClipIssue &issue : clip.issues)
            EXPECT_FALSE(fixable.contains(issue.kind)) << rawValue(issue.kind).toStdString();
    }
}
