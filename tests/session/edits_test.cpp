#include "sessionfixture.h"

namespace {

class Edits : public SessionTest
{
protected:
    void SetUp() override
    {
        ingestNew("s", {"a.mov", "b.mov", "c.mov"});
        ASSERT_EQ(vm().clips().size(), 3);
    }
    QUuid id(int i) { return vm().clips()[i].id; }
};

} // namespace

TEST_F(Edits, MovesRenumberAndEdgesChangeNothing)
{
    const QUuid a = id(0);
    const QUuid c = id(2);
    const PackStatus before = vm().status();
    vm().moveUp(a);
    vm().moveDown(c);
    EXPECT_EQ(vm().status(), before);
    EXPECT_EQ(arenaNames(), (QStringList{"01_a", "02_b", "03_c"}));

    vm().moveDown(a);
    EXPECT_EQ(arenaNames(), (QStringList{"01_b", "02_a", "03_c"}));
    EXPECT_EQ(vm().status(), PackStatus::renamed());
    vm().moveClip(2, 0); // drag c to the top
    EXPECT_EQ(arenaNames(), (QStringList{"01_c", "02_b", "03_a"}));
}

TEST_F(Edits, RemovingTheSelectedClipSelectsTheFirst)
{
    vm().remove(QUuid::createUuid()); // an unknown id removes nothing but still renames
    EXPECT_EQ(vm().status(), PackStatus::renamed());
    vm().setSelectedClipID(id(1));
    vm().remove(id(1));
    EXPECT_EQ(arenaNames(), (QStringList{"01_a", "02_c"}));
    EXPECT_EQ(vm().selectedClipID(), id(0));
    vm().remove(id(0));
    vm().remove(id(0));
    EXPECT_TRUE(vm().clips().isEmpty());
    EXPECT_FALSE(vm().selectedClipID());
}

TEST_F(Edits, PrefixTemplatesAndInlineNames)
{
    vm().applyPrefixTemplate(PrefixTemplate::festival);
    EXPECT_EQ(vm().showPrefix(), "festival");
    EXPECT_EQ(arenaNames(), (QStringList{"01_festival_a", "02_festival_b", "03_festival_c"}));
    vm().applyPrefixTemplate(PrefixTemplate::clear);
    EXPECT_EQ(arenaNames(), (QStringList{"01_a", "02_b", "03_c"}));

    vm().setArenaName(id(1), "  Big Finale!! ");
    EXPECT_EQ(vm().clips()[1].arenaName, "big_finale");
    vm().setArenaName(QUuid::createUuid(), "ignored");
    EXPECT_EQ(arenaNames(), (QStringList{"01_a", "big_finale", "03_c"}));
}

TEST_F(Edits, ClearResetsThePackButNotTheSettings)
{
    vm().setShowPrefix("gig");
    vm().clear();
    EXPECT_TRUE(vm().clips().isEmpty());
    EXPECT_FALSE(vm().selectedClipID());
    EXPECT_EQ(vm().status(), PackStatus::idle());
    EXPECT_EQ(vm().statusText(), "");
    EXPECT_EQ(vm().duplicateCount(), 0);
    EXPECT_EQ(vm().showPrefix(), "gig");
}

TEST_F(Edits, DuplicatesAreMarkedAtIngestAndRemovedKeepingTheFirst)
{
    touch("dup/x.mov", "the same bytes in two files");
    touch("dup/y.mov", "the same bytes in two files");
    ingest("dup");
    EXPECT_EQ(vm().duplicateCount(), 2);
    const QUuid x = vm().clips()[3].id;
    vm().remove(vm().clips()[4].id);
    EXPECT_EQ(vm().duplicateCount(), 2); // marks are a snapshot until the next pass
    EXPECT_TRUE(vm().clips()[3].isDuplicate);

    ingest("dup"); // y comes back; marking runs again
    EXPECT_EQ(vm().duplicateCount(), 2);
    vm().removeDuplicatesKeepingFirst();
    EXPECT_EQ(vm().duplicateCount(), 0);
    EXPECT_EQ(vm().clips().size(), 4);
    EXPECT_EQ(vm().clips()[3].id, x);
    EXPECT_EQ(vm().status(), PackStatus::renamed());
}

TEST_F(Edits, DerivedCountsAndChecklist)
{
    withAudio("loud.mov");
    ingestNew("more", {"loud.mov", "still.png"});
    EXPECT_EQ(vm().clipsWithAudioCount(), 1);
    EXPECT_EQ(vm().problemClipsCount(), 1); // the audio warning
    EXPECT_EQ(vm().checklist().items[1].count, 1);
    vm().setSelectedClipID(vm().clips()[3].id);
    EXPECT_EQ(vm().selectedClip()->originalName, "loud.mov");
    vm().setSelectedClipID(QUuid::createUuid());
    EXPECT_FALSE(vm().selectedClip());
}
