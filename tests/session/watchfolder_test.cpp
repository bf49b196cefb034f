#include "sessionfixture.h"

#include "session/watchfoldermonitor.h"

#include <QElapsedTimer>

using WatchFolder = SessionTest;

TEST_F(WatchFolder, ABurstOfTenFilesStartsOneIngestThatAddsTen)
{
    touch("drop/first.mov");
    QStringList &statuses = recordStatuses();
    vm().startWatching(path("drop"));
    EXPECT_TRUE(vm().watchFolder().isWatching());
    ASSERT_TRUE(waitUntil([&] { return vm().clips().size() == 1 && !vm().isScanning(); }));
    // "Scanning…" shows through discovery: the watching status came before it, not over it.
    EXPECT_EQ(statuses, (QStringList{"Watching: drop", "Scanning…", "Checking 1/1: first.mov",
                                     "Watching: drop"}));

    int ingests = 0;
    QObject::connect(&vm(), &PackViewModel::statusChanged, [&] {
        if (vm().status() == PackStatus::scanning())
            ++ingests;
    });
    QElapsedTimer sinceLast;
    for (int i = 0; i < 10; ++i)
        touch(QStringLiteral("drop/clip%1.mov").arg(i));
    sinceLast.start();
    ASSERT_TRUE(waitUntil([&] { return vm().clips().size() == 11 && !vm().isScanning(); }));
    EXPECT_GE(sinceLast.elapsed(), WatchFolderMonitor::kDebounceMs - 50);
    EXPECT_EQ(ingests, 1);
    EXPECT_EQ(vm().statusText(), "Watching: drop");
}

TEST_F(WatchFolder, StoppingAndFailedOpen)
{
    vm().stopWatching();
    vm().stopWatching(); // twice is harmless
    EXPECT_EQ(vm().status(), PackStatus::idle());

    QStringList &statuses = recordStatuses();
    vm().startWatching(path("does-not-exist"));
    EXPECT_FALSE(vm().watchFolder().isWatching());
    EXPECT_EQ(vm().watchFolder().folder(), path("does-not-exist"));
    ASSERT_TRUE(waitUntil([&] { return !vm().isScanning(); }));
    EXPECT_EQ(statuses,
              (QStringList{"Watching: does-not-exist", "Scanning…", "No media files found"}));

    touch("one/a.mov");
    touch("two/b.mov");
    vm().startWatching(path("one"));
    vm().startWatching(path("two")); // the first watch ends
    ASSERT_TRUE(waitUntil([&] { return vm().clips().size() == 2 && !vm().isScanning(); }));
    touch("one/late.mov");
    waitUntil([] { return false; }, 1200); // past the debounce: nothing may join
    EXPECT_EQ(vm().clips().size(), 2);
    vm().stopWatching();
    EXPECT_FALSE(vm().watchFolder().folder());
    EXPECT_EQ(vm().status(), PackStatus::ready(2));
}

TEST_F(WatchFolder, TouchingAPackFileProbesItAgainAndEndsWatching)
{
    touch("drop/a.mov");
    watch("drop", 1);
    const QUuid id = vm().clips().front().id;
    // Dropping a file that is already there adds nothing and leaves the watch announced.
    ingest("drop/a.mov");
    EXPECT_EQ(vm().status(), PackStatus::watching("drop"));

    const QStringList &statuses = recordStatuses();
    QFile file(path("drop/a.mov"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.setFileTime(QDateTime::currentDateTime().addSecs(60), QFileDevice::FileModificationTime);
    file.close();
    ASSERT_TRUE(waitUntil([&] { return statuses.size() == 3 && !vm().isScanning(); }));
    EXPECT_EQ(statuses, (QStringList{"Waiting for 1 files to finish copying…", "Checking 1/1: 01_a",
                                     "Watching: drop"}));
    EXPECT_EQ(vm().clips().size(), 1);
    EXPECT_EQ(vm().clips().front().id, id);
}

TEST_F(WatchFolder, ARemovedFolderEndsTheWatchWithAnErrorAndKeepsItsClips)
{
    touch("drop/a.mov");
    watch("drop", 1);
    ASSERT_TRUE(QDir(path("drop")).removeRecursively());
    ASSERT_TRUE(waitUntil([&] { return !vm().watchFolder().isWatching() && !vm().isScanning(); }));
    EXPECT_EQ(vm().statusText(), "The watched folder is gone: drop");
    EXPECT_EQ(vm().clips().size(), 1);
}
