#include "session/preshowchecklist.h"

#include <gtest/gtest.h>

namespace {

MediaClip video(const QString &codec, ClipHealth severity = ClipHealth::ok, bool audio = false)
{
    MediaClip c = MediaClip::forFile("/show/v.mov");
    c.isInspected = true;
    c.videoCodec = codec;
    c.hasAudio = audio;
    if (severity != ClipHealth::ok)
        c.issues.append(ClipIssue::make(severity, IssueKind::lowRes));
    return c;
}

MediaClip still()
{
    MediaClip c = MediaClip::forFile("/show/s.png");
    c.isInspected = true;
    c.videoCodec = "PNG";
    c.hasAudio = true; // stills never count as audio, whatever the probe said
    return c;
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
    QList<MediaClip> clips{video("avc1", ClipHealth::fail, true), video("avc1", ClipHealth::warn),
                           video("avc1", ClipHealth::warn), still()};
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

// Upper- and lower-case DXV and HAP codes are judged in gpufamily_test.
TEST(PreShowChecklist, StillsAreNeitherVideosNorAudio)
{
    const PreShowChecklist stills = PreShowChecklist::build({still(), still()}, kNone, kNone);
    EXPECT_EQ(stills.items[2].detailKey, "checklist.dxv.none");
    EXPECT_EQ(stills.items[2].count, 0);
    EXPECT_TRUE(stills.items[1].ok);
}
