// Room first: an export or a conversion that cannot fit says so before anything is written.
#include "sessionfixture.h"

TEST_F(SessionTest, TooLittleRoomStopsExportAndConversionBeforeAnyWrite)
{
    qint64 freeBytes = 0;
    m_freeSpace = [&freeBytes](const QString &) { return std::optional<qint64>(freeBytes); };
    ingestNew("show", {"a.mov", "b.mov"});
    ASSERT_EQ(vm().clips().size(), 2);
    QDir().mkpath(path("out"));

    // What copying needs: sizes in whole blocks, an entry each, and the text files.
    const qint64 copying = RoomCheck::copyBytes({path("show/a.mov"), path("show/b.mov")});
    EXPECT_EQ(copying, (1 << 20) + 2 * (4096 + 4096));
    freeBytes = 500'000;
    QCoro::waitFor(vm().exportPackInto(path("out")));
    EXPECT_EQ(vm().statusText(),
              "Not enough space on " + path("out") + ": needs 1.1 MB, 500.0 kB free");
    EXPECT_TRUE(vm().status().isFailure());
    EXPECT_FALSE(vm().isExporting());
    EXPECT_TRUE(QDir(path("out")).isEmpty());

    // Room for the backup alone is not room for backup and conversion.
    freeBytes = copying;
    m_panels.folders.push_back(path("out"));
    QCoro::waitFor(vm().convertPack(false));
    EXPECT_EQ(vm().status().kind(), PackStatus::Kind::noRoom);
    EXPECT_GT(vm().status().index(), copying);
    EXPECT_EQ(m_conversion->calls(), 0);
    EXPECT_TRUE(QDir(path("out")).isEmpty());

    freeBytes = copying;
    QCoro::waitFor(vm().exportPackInto(path("out")));
    EXPECT_EQ(vm().status().kind(), PackStatus::Kind::saved);
}
