#include "sessionfixture.h"

#include <QTest>
#include <QTimer>

#include <unistd.h>

using Ingest = SessionTest;

namespace {

// Too wide for a 16:9 stage, fine on an LED wall.
VideoFacts wideVideo()
{
    VideoFacts wide = FakeProbe::defaultVideo();
    wide.naturalWidth = 5000;
    wide.naturalHeight = 2812;
    return wide;
}

} // namespace

TEST_F(Ingest, NewFilesAreProbedNamedInFileBrowserOrderAndSelected)
{
    QStringList &statuses = recordStatuses();
    ingestNew("show", {"clip10.mov", "clip2.mov", "Clip1.mov", "notes.txt"});
    EXPECT_EQ(originalNames(), (QStringList{"Clip1.mov", "clip2.mov", "clip10.mov"}));
    EXPECT_EQ(arenaNames(), (QStringList{"01_clip1", "02_clip2", "03_clip10"}));
    EXPECT_EQ(statuses,
              (QStringList{"Scanning…", "Checking 1/3: Clip1.mov", "Checking 2/3: clip2.mov",
                           "Checking 3/3: clip10.mov", "Ready: 3 clips"}));
    EXPECT_EQ(vm().selectedClipID(), vm().clips().front().id);
    EXPECT_EQ(m_thumbnailRequests.size(), 3);
    for (const MediaClip &clip : vm().clips())
        EXPECT_EQ(clip.contentFingerprint->size(), 64);
}

TEST_F(Ingest, RepeatsAndLinksAddNothingNew)
{
    touch("real/a.mov");
    touch("real/b.png");
    ASSERT_EQ(::symlink(QFile::encodeName(path("real")).constData(),
                        QFile::encodeName(path("alias")).constData()),
              0);
    QCoro::waitFor(vm().ingest({url(path("real")), url(path("alias/a.mov"))}));
    ASSERT_EQ(vm().clips().size(), 2);
    const QUuid first = vm().clips()[0].id;
    ingest("alias");
    EXPECT_EQ(vm().clips().size(), 2);
    EXPECT_EQ(vm().clips()[0].id, first);
    EXPECT_EQ(vm().status(), PackStatus::ready(2));
}

TEST_F(Ingest, NewFilesAreNumberedAfterTheExistingOnes)
{
    ingestNew("a", {"1.mov", "2.mov", "3.mov"});
    const QList<MediaClip> before = vm().clips();
    ingestNew("b", {"x.mov", "y.mov"});
    EXPECT_EQ(arenaNames(), (QStringList{"01_1", "02_2", "03_3", "04_x", "05_y"}));
    EXPECT_EQ(vm().clips().mid(0, 3), before);
    EXPECT_EQ(vm().selectedClipID(), before.front().id); // the selection stays
}

TEST_F(Ingest, EmptyDropsAndNonMedia)
{
    QStringList &statuses = recordStatuses();
    QCoro::waitFor(vm().ingest({}));
    EXPECT_TRUE(statuses.isEmpty());
    EXPECT_EQ(vm().status(), PackStatus::idle());

    ingestNew("junk", {"readme.txt"});
    EXPECT_EQ(vm().status(), PackStatus::empty());
    EXPECT_EQ(vm().statusText(), "No media files found");

    // Only local files count from a drop.
    touch("d/a.mov");
    EXPECT_TRUE(vm().handleDrop({QUrl("https://example.com/a.mov"), url(path("d/a.mov"))}));
    EXPECT_TRUE(waitUntil([&] { return vm().clips().size() == 1 && !vm().isScanning(); }));
}

TEST_F(Ingest, UnreadableFilesBecomeFailingClipsAndTheRestContinues)
{
    m_probe->fail("b.mov", VideoFacts::Stage::open, "Invalid data found when processing input");
    ingestNew("s", {"a.mov", "b.mov", "c.mov"});
    ASSERT_EQ(vm().clips().size(), 3);
    EXPECT_EQ(vm().clips()[1].health(), ClipHealth::fail);
    EXPECT_EQ(vm().clips()[1].issues.front().kind, IssueKind::readError);
    EXPECT_EQ(vm().clips()[2].health(), ClipHealth::ok);
}

TEST_F(Ingest, TheEventLoopRunsWhileProbing)
{
    for (int i = 0; i < 4; ++i)
        touch(QStringLiteral("s/%1.mov").arg(i));
    m_probe->setDelay(std::chrono::milliseconds(60));
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
    timer.start(10);
    ingest("s");
    EXPECT_EQ(vm().clips().size(), 4);
    EXPECT_GE(ticks, 10); // 240 ms of probing: the GUI thread kept ticking
}

TEST_F(Ingest, ProfileChangeReprobesAndKeepsIdentity)
{
    m_probe->setVideo("wide.mov", wideVideo());
    ingestNew("s", {"wide.mov", "b.mov"});
    vm().setShowPrefix("gig");
    vm().setArenaName(vm().clips()[0].id, "Opening Act");
    const QList<MediaClip> before = vm().clips();
    EXPECT_EQ(before[1].issues.size(), 1); // tooWide on a 16:9 stage
    const int calls = m_probe->calls();
    QStringList &statuses = recordStatuses();

    vm().setScreenProfile(ScreenProfile::ledWall);
    EXPECT_EQ(vm().preferredWidth(), 3840);
    EXPECT_TRUE(waitUntil([&] { return !vm().isScanning(); }));
    EXPECT_EQ(m_probe->calls(), calls + 2);
    // Re-inspection names each clip by its Arena name, not its file name.
    EXPECT_EQ(statuses, (QStringList{"Checking 1/2: opening_act", "Checking 2/2: 02_wide",
                                     "Ready: 2 clips"}));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(vm().clips()[i].id, before[i].id);
        EXPECT_EQ(vm().clips()[i].cueIndex, before[i].cueIndex);
        EXPECT_EQ(vm().clips()[i].arenaName, before[i].arenaName);
    }
    EXPECT_TRUE(vm().clips()[1].issues.isEmpty()); // 5000 px is fine on an LED wall
    EXPECT_EQ(vm().status(), PackStatus::ready(2));
}

TEST_F(Ingest, RulesChangedDuringAScanApplyFromTheNextFile)
{
    for (int i = 1; i <= 4; ++i) {
        touch(QStringLiteral("s/%1.mov").arg(i));
        m_probe->setVideo(QStringLiteral("%1.mov").arg(i), wideVideo());
    }
    m_probe->setDelay(std::chrono::milliseconds(40));
    // Switching to an LED wall while the second file is announced: the probe of that file may
    // already run, but the last one certainly reads the new rules.
    QObject::connect(&vm(), &PackViewModel::statusChanged, [this] {
        if (vm().status() == PackStatus::checking(2, 4, QStringLiteral("2.mov")))
            vm().setScreenProfile(ScreenProfile::ledWall);
    });
    ingest("s");
    ASSERT_EQ(vm().clips().size(), 4);
    EXPECT_EQ(vm().clips()[0].issues.size(), 1); // too wide for the 16:9 stage it was probed for
    EXPECT_TRUE(vm().clips()[3].issues.isEmpty());
}

TEST_F(Ingest, SessionDestroyedDuringAScanStopsTheWorker)
{
    for (int i = 0; i < 20; ++i)
        touch(QStringLiteral("s/%1.mov").arg(i));
    m_probe->setDelay(std::chrono::milliseconds(20));
    vm().ingest({url(path("s"))});
    ASSERT_TRUE(waitUntil([this] { return m_probe->calls() >= 2; }));
    m_vm.reset(); // waits for the probe in flight, then nothing reports into the dead session
    const int calls = m_probe->calls();
    QTest::qWait(100);
    QCoreApplication::processEvents();
    EXPECT_LE(calls, 4);
    EXPECT_EQ(m_probe->calls(), calls);
}
