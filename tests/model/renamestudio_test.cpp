#include "model/renamestudio.h"

#include <gtest/gtest.h>

namespace {

QList<MediaClip> pack(const QStringList &paths)
{
    QList<MediaClip> clips;
    for (const QString &p : paths) {
        MediaClip clip = MediaClip::forFile(p);
        clip.arenaName = "custom_" + clip.arenaName; // names that opening must not keep
        clip.cueIndex = 40 + clips.size();
        clips.append(clip);
    }
    return clips;
}

} // namespace

TEST(RenameStudio, OpeningRebuildsFromPrefixAndOriginalNames)
{
    const QList<MediaClip> clips = pack({"/s/clip.MOV", "/s/My Intro.mp4", "/s/noext"});
    RenameStudio studio;
    studio.open(clips, "show", true);
    ASSERT_EQ(studio.drafts().size(), 3);
    const RenameDraft &first = studio.drafts()[0];
    EXPECT_EQ(first.id, clips[0].id);
    EXPECT_EQ(first.cueIndex, 1);
    EXPECT_EQ(first.sourceExtension, "mov");
    EXPECT_EQ(first.stem, "clip");
    EXPECT_EQ(first.arenaName, "01_show_clip");
    EXPECT_EQ(first.previewFileName(), "01_show_clip.mov");
    EXPECT_EQ(studio.drafts()[1].arenaName, "02_show_my_intro");
    EXPECT_EQ(studio.drafts()[2].sourceExtension, "");
    EXPECT_EQ(studio.drafts()[2].previewFileName(), "03_show_noext");
    EXPECT_EQ(studio.localPrefix(), "show");
    EXPECT_TRUE(studio.localZeroPad());
}

TEST(RenameStudio, StemEditsCleanAndRecomputeOneRow)
{
    RenameStudio studio;
    studio.open(pack({"/s/a.mov", "/s/b.mov"}), "show", true);
    const QUuid second = studio.drafts()[1].id;
    studio.setStem(second, "My Intro!");
    EXPECT_EQ(studio.drafts()[1].stem, "my_intro");
    EXPECT_EQ(studio.drafts()[1].arenaName, "02_show_my_intro");
    EXPECT_EQ(studio.drafts()[0].arenaName, "01_show_a");

    studio.setStem(second, "");
    EXPECT_EQ(studio.drafts()[1].arenaName, "02_show_clip");
    studio.setStem(QUuid::createUuid(), "ignored");
    EXPECT_EQ(studio.drafts()[1].arenaName, "02_show_clip");

    studio.setLocalPrefix("");
    EXPECT_EQ(studio.drafts()[1].arenaName, "02_b"); // the edit is gone
    studio.setStem(second, "x");
    EXPECT_EQ(studio.drafts()[1].arenaName, "02_x");
    studio.setLocalZeroPad(false);
    EXPECT_EQ(studio.drafts()[1].arenaName, "2_b");
}

TEST(RenameStudio, PunctuationPrefixDiffersBetweenRebuildAndEdit)
{
    RenameStudio studio;
    studio.open(pack({"/s/a.mov", "/s/b.mov", "/s/intro.mov"}), "!!!", true);
    EXPECT_EQ(studio.drafts()[2].arenaName, "03__intro");
    studio.recomputeName(studio.drafts()[2].id);
    EXPECT_EQ(studio.drafts()[2].arenaName, "03_intro");
}

TEST(RenameStudio, ApplyWritesNamesByIdAndSkipsOrphans)
{
    QList<MediaClip> clips = pack({"/s/a.mov", "/s/b.mov", "/s/c.mov"});
    RenameStudio studio;
    studio.open(clips, "", true);
    studio.setStem(clips[2].id, "Finale");
    clips.removeAt(1); // removed while the sheet was open
    QString prefix = "old";
    bool zeroPad = false;
    studio.apply(clips, prefix, zeroPad);
    EXPECT_EQ(prefix, "");
    EXPECT_TRUE(zeroPad);
    ASSERT_EQ(clips.size(), 2);
    EXPECT_EQ(clips[0].arenaName, "01_a");
    EXPECT_EQ(clips[0].cueIndex, 1);
    EXPECT_EQ(clips[1].arenaName, "03_finale");
    EXPECT_EQ(clips[1].cueIndex, 3);
}

TEST(RenameStudio, EmptyPackChangesOnlyPrefixAndPadding)
{
    RenameStudio studio;
    studio.open({}, "gig", false);
    EXPECT_TRUE(studio.drafts().isEmpty());
    studio.rebuildAllFromTemplate();
    QList<MediaClip> none;
    QString prefix;
    bool zeroPad = true;
    studio.apply(none, prefix, zeroPad);
    EXPECT_EQ(prefix, "gig");
    EXPECT_FALSE(zeroPad);
}
