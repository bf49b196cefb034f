#include "sessionfixture.h"

#include "session/watchfoldermonitor.h"

#include <QCoroTask>
#include <QElapsedTimer>

using WatchFolder = SessionTest;

TEST_F(WatchFolder, ABurstOfTenFilesStartsOneIngestThatAddsTen)
{
    touch("drop/first.mov");
    vm().startWatching(path("drop"));
    EXPECT_TRUE(vm().watchFolder().isWatching());
    ASSERT_TRUE(waitUntil([&] { return vm().clips().size() == 1 && !vm().isScanning(); }));
    EXPECT_EQ(vm().status(), PackStatus::watching("drop"));

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
    EXPECT_EQ(vm().status(), PackStatus::watching("drop"));
    EXPECT_EQ(vm().statusText(), "Watching: drop");
}

TEST_F(WatchFolder, StoppingAndFailedOpen)
{
    vm().stopWatching();
    vm().stopWatching(); // twice is harmless
    EXPECT_EQ(vm().status(), PackStatus::idle());

    vm().startWatching(path("does-not-exist"));
    EXPECT_FALSE(vm().watchFolder().isWatching());
    EXPECT_EQ(vm().watchFolder().folder(), path("does-not-exist"));
    EXPECT_EQ(vm().status(), PackStatus::watching("does-not-exist"));
    ASSERT_TRUE(waitUntil([&] { return !vm().isScanning(); }));

    touch("one/a.mov");
    touch("two/b.mov");
    vm().startWatching(path("one"));
    vm().startWatching(path("two")); // the first watch ends
    ASSERT_TRUE(waitUntil([&] { return vm().clips().size() == 2 && !vm().isScanning(); }));
    touch("one/late.mov");
    QElapsedTimer wait;
    wait.start();
    waitUntil([&] { return wait.elapsed() > 1200; });
    EXPECT_EQ(vm().clips().size(), 2);
    vm().stopWatching();
    EXPECT_FALSE(vm().watchFolder().folder());
    EXPECT_EQ(vm().status(), PackStatus::ready(2));
}
