// The pre-show checklist's lines, and the count of clips a conversion would rob of their
// transparency.
#include "session/preshowchecklist.h"
#include "session/transparencyloss.h"

#include <gtest/gtest.h>

namespace {

// A probed clip: a still for "PNG", else a video.
MediaClip clip(const QString &codec, ClipHealth severity = ClipHealth::ok, bool audio = false,
               bool alpha = false)
{
    MediaClip c = MediaClip::forFile(codec == u"PNG" ? "/show/s.png" : "/show/v.mov");
    c.isInspected = true;
    c.videoCodec = codec;
    c.hasAudio = audio;
    c.hasAlpha = alpha;
    if (severity != ClipHealth::ok)
        c.issues.append(ClipIssue::make(severity, IssueKind::lowRes));
    return c;
}

// Stills never count as audio, whatever the probe said.
MediaClip still()
{
    return clip("PNG", ClipHealth::ok, true);
}

struct Line {
    bool ok;
    const char *detail;
    std::optional<qint64> count;
};

void expectLines(const PreShowChecklist &list, const std::vector<Line> &lines)
{
    const QStringList ids{"health", "audio", "dxv", "backup", "duplicates"};
    ASSERT_EQ(list.items.size(), 5);
    for (int i = 0; i < 5; ++i) {
        SCOPED_TRACE(ids[i].toStdString());
        EXPECT_EQ(list.items[i].id, ids[i]);
        EXPECT_EQ(list.items[i].titleKey, "checklist." + ids[i]);
        EXPECT_EQ(list.items[i].ok, lines[i].ok);
        EXPECT_EQ(list.items[i].detailKey, QString::fromLatin1(lines[i].detail));
        EXPECT_EQ(list.items[i].count, lines[i].count);
    }
}

const std::optional<QUrl> kNone;
const std::optional<QUrl> kFolder = QUrl::fromLocalFile("/out/pack");

} // namespace

TEST(PreShowChecklist, EmptyPack)
{
    const PreShowChecklist list = PreShowChecklist::build({}, kNone, kNone);
    expectLines(list, {{false, "checklist.health.bad", 0},
                       {true, "checklist.audio.ok", 0},
                       {true, "checklist.dxv.none", 0},
                       {false, "checklist.backup.bad", std::nullopt},
                       {true, "checklist.duplicates.ok", 0}});
    EXPECT_EQ(list.readyCount(), 3);
    EXPECT_EQ(PreShowChecklist::build({}, kNone, kFolder).readyCount(), 4);
}

TEST(PreShowChecklist, MixedPackBeforeAndAfterExport)
{
    QList<MediaClip> clips{clip("avc1", ClipHealth::fail, true), clip("avc1", ClipHealth::warn),
                           clip("avc1", ClipHealth::warn), still()};
    clips[1].isDuplicate = true;
    clips[2].isDuplicate = true;
    expectLines(PreShowChecklist::build(clips, kNone, kNone),
                {{false, "checklist.health.bad", 3},
                 {false, "checklist.audio.bad", 1},
                 {false, "checklist.dxv.bad", 0},
                 {false, "checklist.backup.bad", std::nullopt},
                 {false, "checklist.duplicates.bad", 2}});
    const PreShowChecklist after = PreShowChecklist::build(clips, kFolder, kNone);
    EXPECT_EQ(after.items[2].detailKey, "checklist.dxv.exported");
    EXPECT_TRUE(after.items[2].ok);
    EXPECT_TRUE(after.items[3].ok);
    EXPECT_EQ(after.readyCount(), 2);

    clips.removeFirst();
    const PreShowChecklist warnOnly = PreShowChecklist::build(clips, kNone, kFolder);
    EXPECT_TRUE(warnOnly.items[0].ok);
    EXPECT_EQ(warnOnly.items[0].count, 2);
    EXPECT_EQ(warnOnly.items[0].detailKey, "checklist.health.ok");
    EXPECT_FALSE(warnOnly.items[2].ok); // a backup alone does not make videos Arena-ready
}

TEST(GpuFamilyChecklist, DxvLineCountsHapInAnyCase)
{
    const struct {
        const char *name;
        QStringList codecs;
        std::optional<QUrl> exportFolder;
        bool ok;
        const char *detail;
        qint64 count;
    } rows[] = {
        {"all HAP", {"Hap1", "Hap5", "HapY", "HapM", "HapA"}, kNone, true, "checklist.dxv.gpu", 5},
        {"lower case", {"hap1", "hApy"}, kNone, true, "checklist.dxv.gpu", 2},
        {"HAP and DXV", {"Hap1", "DXV3"}, kNone, true, "checklist.dxv.gpu", 2},
        {"DXV only", {"DXV3", "dxd3"}, kNone, true, "checklist.dxv.ok", 2},
        {"HAP and H.264", {"Hap1", "avc1"}, kNone, false, "checklist.dxv.bad", 1},
        {"HAP and H.264 exported", {"Hap1", "avc1"}, kFolder, true, "checklist.dxv.exported", 1},
        {"near miss", {"Hap7", "HAPPY"}, kNone, false, "checklist.dxv.bad", 0},
        {"stills are no videos", {}, kNone, true, "checklist.dxv.none", 0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        QList<MediaClip> clips;
        for (const QString &codec : row.codecs)
            clips.append(clip(codec));
        clips.append(clip("PNG"));
        const ChecklistItem dxv = PreShowChecklist::build(clips, row.exportFolder, kNone).items[2];
        EXPECT_EQ(dxv.ok, row.ok);
        EXPECT_EQ(dxv.detailKey, QLatin1String(row.detail));
        EXPECT_EQ(dxv.count, row.count);
    }
}

TEST(TransparencyLoss, CountsTransparentVideosOfTheBatchGoingToH264)
{
    const QList<MediaClip> clips{
        clip("ap4h", ClipHealth::ok, false, true),
        clip("ap4h", ClipHealth::warn, false, true),
        clip("avc1", ClipHealth::fail),
        clip("PNG", ClipHealth::warn, false, true),
    };
    EXPECT_EQ(clipsLosingTransparency(clips, ArenaConvertFormat::h264, false), 2);
    EXPECT_EQ(clipsLosingTransparency(clips, ArenaConvertFormat::h264, true), 1);
    for (ArenaConvertFormat format : kAllConvertFormats) {
        SCOPED_TRACE(rawValue(format).toStdString());
        const qint64 expected = format == ArenaConvertFormat::h264 ? 2 : 0;
        EXPECT_EQ(clipsLosingTransparency(clips, format, false), expected);
    }
}
