#include "session/contentfingerprint.h"
#include "session/duplicates.h"
#include "support/clips.h"

#include <gtest/gtest.h>

namespace {

MediaClip clip(const QString &name, std::optional<QString> fingerprint, qint64 size,
               std::optional<double> duration)
{
    MediaClip c = MediaClip::forFile("/show/" + name);
    c.isInspected = true;
    c.contentFingerprint = fingerprint;
    c.fileSize = size;
    c.duration = duration;
    return c;
}

QStringList names(const QList<MediaClip> &clips)
{
    QStringList out;
    for (const MediaClip &c : clips)
        out.append(c.arenaName);
    return out;
}

} // namespace

TEST(Duplicates, IdenticalCopiesAreAllMarkedAndRemovalKeepsTheFirst)
{
    QList<MediaClip> clips{clip("a.mov", "f1", 2'000'000'000, 60.0),
                           clip("other.mov", "f2", 10, 5.0),
                           clip("a copy.mov", "f1", 2'000'000'000, 60.0)};
    EXPECT_EQ(Duplicates::markDuplicates(clips), 2);
    EXPECT_TRUE(clips[0].isDuplicate);
    EXPECT_FALSE(clips[1].isDuplicate);
    EXPECT_TRUE(clips[2].isDuplicate);
    EXPECT_EQ(issueKinds(clips[0]).count(IssueKind::duplicate), 1);

    std::optional<QUuid> selected = clips[2].id;
    EXPECT_EQ(Duplicates::removeDuplicatesKeepingFirst(clips, selected, "gig", true), 0);
    EXPECT_EQ(names(clips), (QStringList{"01_gig_a", "02_gig_other"}));
    EXPECT_EQ(selected, clips[0].id); // the selected copy left: the first clip is selected
    EXPECT_FALSE(clips[0].isDuplicate);
    EXPECT_EQ(issueKinds(clips[0]).count(IssueKind::duplicate), 0);
}

// Stills, blips and clips of unknown length share sizes by chance: only x and y match.
TEST(Duplicates, SoftRuleMarksSameSizeAndDurationButRemovalKeepsBoth)
{
    QList<MediaClip> clips{
        clip("x.mov", "f1", 5000, 12.34),      clip("y.mov", "f2", 5000, 12.31),
        clip("a.png", "p1", 2048, 0.0),        clip("b.png", "p2", 2048, 0.0),
        clip("c.mov", "m1", 99, 0.4),          clip("d.mov", "m2", 99, 0.4),
        clip("e.mov", "m3", 77, std::nullopt), clip("f.mov", "m4", 77, std::nullopt)};
    EXPECT_EQ(Duplicates::markDuplicates(clips), 2);
    std::optional<QUuid> selected;
    EXPECT_EQ(Duplicates::removeDuplicatesKeepingFirst(clips, selected, "", true), 2);
    EXPECT_EQ(clips.size(), 8);
    EXPECT_FALSE(selected);
}

TEST(Duplicates, ThreeIdenticalStillsAndClipsWithoutFingerprint)
{
    QList<MediaClip> clips{clip("a.png", "s", 10, 0.0), clip("b.png", "s", 10, 0.0),
                           clip("c.png", "s", 10, 0.0), clip("n1.mov", std::nullopt, 5, 3.0),
                           clip("n2.mov", std::nullopt, 5, 3.0)};
    EXPECT_EQ(Duplicates::markDuplicates(clips), 5);
    std::optional<QUuid> selected = clips[1].id;
    // Without a fingerprint the soft key groups: n2 goes too.
    EXPECT_EQ(Duplicates::removeDuplicatesKeepingFirst(clips, selected, "", false), 0);
    EXPECT_EQ(names(clips), (QStringList{"1_a", "2_n1"}));
    EXPECT_EQ(selected, clips[0].id);
}

TEST(Duplicates, MarkingTwiceLeavesOneFindingAndKeepsOthers)
{
    QList<MediaClip> clips{clip("a.mov", "f", 1, 2.0), clip("b.mov", "f", 1, 2.0)};
    clips[0].issues.append(ClipIssue::make(ClipHealth::warn, IssueKind::audio));
    Duplicates::markDuplicates(clips);
    const QUuid firstId = clips[0].issues.back().id;
    Duplicates::markDuplicates(clips);
    EXPECT_EQ(issueKinds(clips[0]).count(IssueKind::duplicate), 1);
    EXPECT_EQ(clips[0].issues.front().kind, IssueKind::audio);
    EXPECT_NE(clips[0].issues.back().id, firstId); // each pass makes a fresh finding
}

TEST(Duplicates, EmptyPack)
{
    QList<MediaClip> none;
    std::optional<QUuid> selected = QUuid::createUuid();
    EXPECT_EQ(Duplicates::removeDuplicatesKeepingFirst(none, selected, "", true), 0);
    EXPECT_FALSE(selected);
}
