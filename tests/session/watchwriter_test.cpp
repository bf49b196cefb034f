// The watch folder against a real writer: a child process copying a movie in slowly, and the
// product's own media layer probing what arrives.
#include "sessionfixture.h"

#include "media/ffmpeg/ffmpegprobe.h"
#include "session/watchfoldermonitor.h"
#include "support/clips.h"

#include <QElapsedTimer>
#include <QProcess>

#include <cmath>

namespace {

const QString kMedia = QStringLiteral(CUEBOX_WATCH_MEDIA);

class WatchWriter : public SessionTest
{
protected:
    std::shared_ptr<const MediaProbe> probeForSession() override
    {
        return std::make_shared<FfmpegProbe>();
    }
    // Starts copying a fixture movie into `relative` at `mibPerSecond`.
    void write(const QString &movie, const QString &relative, int mibPerSecond = 20)
    {
        m_writer.start(QStringLiteral(CUEBOX_SLOW_WRITE),
                       {kMedia + u'/' + movie, path(relative), QString::number(mibPerSecond)});
        ASSERT_TRUE(m_writer.waitForStarted());
    }
    // Tenths of a second: enough to tell the movies apart, whatever the container rounds.
    static double seconds(const MediaClip &clip)
    {
        return std::round(clip.duration.value_or(-1) * 10) / 10;
    }
    QProcess m_writer;
};

} // namespace

TEST_F(WatchWriter, ASlowlyWrittenMovieJoinsOnceAfterItsLastByte)
{
    watch("drop", 0);
    const QStringList &statuses = recordStatuses();
    QElapsedTimer clock;
    clock.start();
    qint64 writerDoneMs = -1;
    qint64 addedMs = -1;
    QSet<qint64> sizesSeen; // every size a clip of the pack ever had
    QObject::connect(&m_writer, &QProcess::finished, [&] { writerDoneMs = clock.elapsed(); });
    QObject::connect(&vm(), &PackViewModel::clipsChanged, [&] {
        for (const MediaClip &clip : vm().clips())
            sizesSeen.insert(clip.fileSize);
        if (addedMs < 0 && !vm().clips().isEmpty())
            addedMs = clock.elapsed();
    });
    write("big.mov", "drop/big.mov");
    ASSERT_TRUE(waitUntil([&] { return vm().clips().size() == 1 && !vm().isScanning(); }, 90000));
    ASSERT_GE(writerDoneMs, 10000) << "the copy took less time than intended";
    EXPECT_EQ(m_writer.exitCode(), 0);
    EXPECT_GT(addedMs, writerDoneMs);
    EXPECT_TRUE(statuses.contains("Waiting for 1 files to finish copying…"));
    EXPECT_EQ(statuses.back(), "Watching: drop");

    const MediaClip clip = vm().clips().front();
    EXPECT_EQ(seconds(clip), 3.0);
    EXPECT_FALSE(issueKinds(clip).contains(IssueKind::readError));
    EXPECT_EQ(sizesSeen, QSet<qint64>{QFileInfo(kMedia + "/big.mov").size()});
    waitUntil([] { return false; }, 2500); // nothing more happens once it has joined
    ASSERT_EQ(vm().clips().size(), 1);
    EXPECT_EQ(vm().clips().front(), clip);
}

TEST_F(WatchWriter, AMovieWrittenTwoNewFoldersDownJoins)
{
    watch("drop", 0);
    write("one.mov", "drop/day1/cam a/one.mov");
    ASSERT_TRUE(waitUntil([&] { return vm().clips().size() == 1 && !vm().isScanning(); }));
    EXPECT_EQ(vm().clips().front().originalName, "one.mov");
    EXPECT_EQ(seconds(vm().clips().front()), 1.0);
    EXPECT_EQ(vm().watchFolder().watchedFolderCount(), 3);
}

TEST_F(WatchWriter, AReplacedMovieIsProbedAgainInPlace)
{
    QDir().mkpath(path("drop"));
    QFile::copy(kMedia + "/one.mov", path("drop/intro.mov"));
    touch("drop/logo.png");
    watch("drop", 2);
    const MediaClip before = vm().clips()[0];
    ASSERT_EQ(before.originalName, "intro.mov");
    ASSERT_EQ(seconds(before), 1.0);

    write("two.mov", "drop/intro.mov");
    ASSERT_TRUE(waitUntil([&] { return seconds(vm().clips()[0]) == 2.0 && !vm().isScanning(); }));
    const MediaClip after = vm().clips()[0];
    EXPECT_EQ(vm().clips().size(), 2);
    EXPECT_EQ(after.id, before.id);
    EXPECT_EQ(after.cueIndex, 1);
    EXPECT_EQ(after.arenaName, "01_intro");
    // The new movie has sound: one finding more than before, about that.
    ASSERT_EQ(after.issues.size(), before.issues.size() + 1);
    EXPECT_EQ(after.issues.back().kind, IssueKind::audio);
    EXPECT_NE(after.contentFingerprint, before.contentFingerprint);
    EXPECT_EQ(m_thumbnailRequests.count(after.sourcePath()), 2);
    EXPECT_EQ(vm().status(), PackStatus::watching("drop"));
}

TEST_F(WatchWriter, ADeletedMovieTurnsRedAndStays)
{
    QDir().mkpath(path("drop"));
    QFile::copy(kMedia + "/one.mov", path("drop/a.mov"));
    QFile::copy(kMedia + "/two.mov", path("drop/b.mov"));
    watch("drop", 2);
    const MediaClip kept = vm().clips()[1];
    ASSERT_TRUE(QFile::remove(path("drop/a.mov")));
    ASSERT_TRUE(waitUntil([&] { return vm().clips()[0].health() == ClipHealth::fail; }));
    EXPECT_TRUE(issueKinds(vm().clips()[0]).contains(IssueKind::readError));
    EXPECT_EQ(vm().clips().size(), 2);
    EXPECT_EQ(vm().clips()[0].arenaName, "01_a");
    EXPECT_EQ(vm().clips()[1], kept);
}
