// Stage traps found by the product's probe in clips made by the ffmpeg CLI, and never in the
// clean clips of the other fixture set.
#include "media/ffmpeg/ffmpegprobe.h"
#include "media/mediainspector.h"

#include <QDir>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

QString trapFixture(const QString &name)
{
    return QDir(QStringLiteral(CUEBOX_STAGETRAP_FIXTURES)).filePath(name);
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
    QProcess process;
    process.start("ffprobe", {"-v", "error", "-select_streams", "v:0", "-show_entries",
                              "packet=pts_time,duration_time", "-of", "json", file});
    process.waitForFinished(20'000);
    const QJsonArray packets =
        QJsonDocument::fromJson(process.readAllStandardOutput())["packets"].toArray();
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

TEST(StageTrapProbe, EachTrapClipGetsItsOwnFindingOnly)
{
    const FfmpegProbe probe;
    const struct {
        const char *file;
        QStringList traps;
    } rows[] = {
        {"vfr.mp4", {"variableFrameRate"}},
        {"vfr.mkv", {"variableFrameRate"}},
        {"interlaced_h264.mp4", {"interlaced"}},
        {"interlaced_mpeg2.mpg", {"interlaced"}},
        {"pq_hevc.mp4", {"hdr PQ"}},
        {"hlg_hevc.mp4", {"hdr HLG"}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.file);
        const MediaClip clip = MediaInspector::inspect(trapFixture(row.file), {}, probe);
        EXPECT_EQ(traps(clip), row.traps);
        // After the bit-rate finding and before the audio one.
        const auto at = [&](IssueKind kind) {
            for (qsizetype i = 0; i < clip.issues.size(); ++i) {
                if (clip.issues[i].kind == kind)
                    return i;
            }
            return qsizetype(-1);
        };
        const qsizetype trap = std::max(
            {at(IssueKind::variableFrameRate), at(IssueKind::interlaced), at(IssueKind::hdr)});
        ASSERT_GE(trap, 0);
        for (qsizetype i = trap + 1; i < clip.issues.size(); ++i)
            EXPECT_EQ(clip.issues[i].kind, IssueKind::audio);
        if (clip.hasAudio) {
            EXPECT_EQ(at(IssueKind::audio), trap + 1);
        }
    }
}

TEST(StageTrapProbe, VariableRateClipsShowTheirAverageRate)
{
    const FfmpegProbe probe;
    for (const char *file : {"vfr.mp4", "vfr.mkv"}) {
        SCOPED_TRACE(file);
        const MediaClip clip = MediaInspector::inspect(trapFixture(file), {}, probe);
        const double expected = ffprobeAverageRate(trapFixture(file));
        ASSERT_GT(expected, 20); // 50 pictures over 2 s, stated as 50 fps by the container
        ASSERT_TRUE(clip.frameRate);
        EXPECT_NEAR(*clip.frameRate, expected, expected * 0.02);
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
