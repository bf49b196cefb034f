// The cache's bookkeeping with a counting generator, and once with the real one.
#include "mediafixtures.h"
#include "support/files.h"

#include "media/thumbnailcache.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>

namespace {

using namespace std::chrono_literals;

// Counts loads and can hold them until the test lets them finish (or the cache stops them).
struct CountingGenerator {
    struct State {
        std::atomic<int> calls{0};
        std::atomic<bool> open{true};
        std::atomic<bool> fail{false};
        QSize size{32, 32}; // set before the first request
    };
    std::shared_ptr<State> state = std::make_shared<State>();

    ThumbnailCache::Generator generator() const
    {
        return [state = state](const QString &, std::stop_token stop) {
            ++state->calls;
            while (!state->open && !stop.stop_requested())
                QThread::msleep(1);
            QImage image(state->size, QImage::Format_ARGB32);
            image.fill(Qt::green);
            return state->fail ? QImage() : image;
        };
    }
    void hold() { state->open = false; }
    void release() { state->open = true; }
};

bool settle(const ThumbnailCache &cache, const QStringList &keys)
{
    return QTest::qWaitFor(
        [&] {
            return std::none_of(keys.begin(), keys.end(),
                                [&](const QString &key) { return cache.isLoading(key); });
        },
        10'000);
}

bool setModified(const QString &file, const QDateTime &time)
{
    QFile f(file);
    return f.open(QIODevice::ReadWrite) && f.setFileTime(time, QFileDevice::FileModificationTime);
}

TEST(ThumbnailCache, KeyIsPathModificationTimeAndSize)
{
    QTemporaryDir dir;
    const QString file = writeFile(dir.filePath("a.mov"), QByteArray(1234, 'x'));
    ASSERT_TRUE(setModified(file, QDateTime::fromMSecsSinceEpoch(1'700'000'000'500, Qt::UTC)));
    EXPECT_EQ(ThumbnailCache::cacheKey(file), file + "|1700000000.5|1234");
    EXPECT_EQ(ThumbnailCache::cacheKey(dir.filePath("gone.mov")),
              dir.filePath("gone.mov") + "|0.0|0");
}

TEST(ThumbnailCache, TwoRequestsForOneFileMakeOneLoadAndATouchedFileANewOne)
{
    CountingGenerator counting;
    counting.hold();
    ThumbnailCache cache(counting.generator());
    QSignalSpy ready(&cache, &ThumbnailCache::thumbnailReady);
    QTemporaryDir dir;
    const QString file = writeFile(dir.filePath("clip.mov"), "movie");
    const QString key = ThumbnailCache::cacheKey(file);

    cache.request(file);
    cache.request(file); // a second row showing the same file while the first load runs
    EXPECT_TRUE(cache.isLoading(key));
    counting.release();
    ASSERT_TRUE(ready.wait(10'000));
    EXPECT_EQ(ready.count(), 1);
    EXPECT_EQ(ready.first().first().toString(), key);
    EXPECT_EQ(counting.state->calls, 1);
    EXPECT_EQ(cache.image(file).size(), QSize(32, 32));

    cache.request(file); // already in memory
    QTest::qWait(50);
    EXPECT_EQ(counting.state->calls, 1);

    ASSERT_TRUE(setModified(file, QDateTime::currentDateTimeUtc().addSecs(60)));
    const QString after = ThumbnailCache::cacheKey(file);
    EXPECT_TRUE(cache.image(file).isNull()); // the stored picture is of the old version
    cache.request(file);
    ASSERT_TRUE(ready.wait(10'000));
    EXPECT_EQ(counting.state->calls, 2);
    EXPECT_EQ(ready.last().first().toString(), after);
    EXPECT_FALSE(cache.image(file).isNull());
}

TEST(ThumbnailCache, FailedLoadIsTriedAgainOnlyOnTheNextRequest)
{
    CountingGenerator counting;
    counting.state->fail = true;
    ThumbnailCache cache(counting.generator());
    QSignalSpy ready(&cache, &ThumbnailCache::thumbnailReady);
    const QString file = QStringLiteral("/nowhere/clip.mov");
    const QString key = ThumbnailCache::cacheKey(file);

    cache.request(file);
    ASSERT_TRUE(settle(cache, {key}));
    QTest::qWait(50);
    EXPECT_EQ(counting.state->calls, 1);
    EXPECT_EQ(ready.count(), 0);
    EXPECT_TRUE(cache.image(file).isNull());

    counting.state->fail = false;
    cache.request(file);
    ASSERT_TRUE(ready.wait(10'000));
    EXPECT_EQ(counting.state->calls, 2);
}

TEST(ThumbnailCache, ThousandThumbnailsStayWithinTheBudget)
{
    CountingGenerator counting;
    counting.state->size = QSize(64, 64); // 16 KiB each
    constexpr qint64 kBudget = 1024 * 1024;
    ThumbnailCache cache(counting.generator(), kBudget);
    QSignalSpy ready(&cache, &ThumbnailCache::thumbnailReady);
    QStringList keys;
    for (int i = 0; i < 1000; ++i) {
        const QString file = QStringLiteral("/show/clip%1.mov").arg(i);
        keys.append(ThumbnailCache::cacheKey(file));
        cache.request(file);
    }
    ASSERT_TRUE(settle(cache, keys));
    QTest::qWait(20);
    EXPECT_EQ(counting.state->calls, 1000);
    EXPECT_EQ(ready.count(), 1000);
    EXPECT_LE(cache.usedBytes(), kBudget);
    EXPECT_EQ(cache.count(), 64); // 1 MiB of 16 KiB pictures; which go first is the next test's
}

TEST(ThumbnailCache, LeastRecentlyUsedGoesFirst)
{
    CountingGenerator counting;
    counting.state->size = QSize(64, 64);
    ThumbnailCache cache(counting.generator(), 3 * 64 * 64 * 4); // room for three
    QSignalSpy ready(&cache, &ThumbnailCache::thumbnailReady);
    const auto load = [&](const QString &file) {
        cache.request(file);
        return ready.wait(10'000);
    };
    ASSERT_TRUE(load("/a.mov"));
    ASSERT_TRUE(load("/b.mov"));
    ASSERT_TRUE(load("/c.mov"));
    EXPECT_FALSE(cache.image("/a.mov").isNull()); // a is used again: b is now the oldest
    ASSERT_TRUE(load("/d.mov"));
    EXPECT_FALSE(cache.image("/a.mov").isNull());
    EXPECT_TRUE(cache.image("/b.mov").isNull());
    // A dropped picture is made again on request.
    ASSERT_TRUE(load("/b.mov"));
    EXPECT_EQ(counting.state->calls, 5);
}

// Loads run on their own pool of kLoadThreads, below the window's priority.
TEST(ThumbnailCache, LoadsRunOnTheirOwnBoundedPoolBelowTheWindowsPriority)
{
    std::atomic<int> running{0};
    std::atomic<int> most{0};
    std::atomic<int> loaderNice{-100};
    ThumbnailCache cache([&](const QString &, std::stop_token) {
        const int now = ++running;
        int seen = most.load();
        while (now > seen && !most.compare_exchange_weak(seen, now)) {
        }
        loaderNice = getpriority(PRIO_PROCESS, static_cast<id_t>(gettid()));
        QThread::msleep(20);
        --running;
        return QImage(8, 8, QImage::Format_ARGB32);
    });
    const int mine = getpriority(PRIO_PROCESS, static_cast<id_t>(gettid()));
    QStringList keys;
    for (int i = 0; i < 12; ++i) {
        cache.request(QStringLiteral("/pool/%1.mov").arg(i));
        keys.append(ThumbnailCache::cacheKey(QStringLiteral("/pool/%1.mov").arg(i)));
    }
    ASSERT_TRUE(settle(cache, keys));
    EXPECT_EQ(most.load(), ThumbnailCache::kLoadThreads);
    EXPECT_EQ(loaderNice.load(), std::max(mine, ThumbnailCache::kLoaderNiceness));
    EXPECT_EQ(getpriority(PRIO_PROCESS, static_cast<id_t>(gettid())), mine); // ours unchanged
}

TEST(ThumbnailCache, WaitingLoadsRunNewestFirst)
{
    // Both pool threads are held on a and b while c, d and e wait in the queue; then a's thread
    // alone is let go and takes the waiting loads one by one.
    std::mutex lock;
    std::condition_variable_any changed;
    QStringList started;
    QSet<QString> held = {"/rows/a.mov", "/rows/b.mov"};
    ThumbnailCache cache([&](const QString &path, std::stop_token stop) {
        std::unique_lock guard(lock);
        started.append(path);
        changed.notify_all();
        changed.wait(guard, stop, [&] { return !held.contains(path); });
        return QImage(8, 8, QImage::Format_ARGB32);
    });
    const auto startedCount = [&] {
        std::lock_guard guard(lock);
        return started.size();
    };
    const auto release = [&](const QString &path) {
        std::lock_guard guard(lock);
        held.remove(path);
        changed.notify_all();
    };
    QStringList keys;
    for (const QString name : {"a", "b", "c", "d", "e"}) {
        const QString path = "/rows/" + name + ".mov";
        // The keyed request takes the caller's key as it is, without looking at the file.
        const QString key = path + "|1.0|7";
        cache.request(path, key);
        keys.append(key);
        if (keys.size() == 2) {
            ASSERT_TRUE(QTest::qWaitFor([&] { return startedCount() == 2; }, 5'000));
        }
    }
    release("/rows/a.mov");
    ASSERT_TRUE(QTest::qWaitFor([&] { return startedCount() == 5; }, 5'000));
    release("/rows/b.mov");
    ASSERT_TRUE(settle(cache, keys));
    EXPECT_EQ(QStringList(started.mid(2)),
              QStringList({"/rows/e.mov", "/rows/d.mov", "/rows/c.mov"}));
    EXPECT_FALSE(cache.imageForKey(keys.last()).isNull());
    EXPECT_TRUE(cache.image("/rows/e.mov").isNull()); // its real key differs: the file is gone
}

TEST(ThumbnailCache, GoingAwayDuringLoadsDoesNotWaitForThem)
{
    CountingGenerator counting;
    counting.hold(); // loads block until stopped
    auto cache = std::make_unique<ThumbnailCache>(counting.generator());
    for (int i = 0; i < 10; ++i)
        cache->request(QStringLiteral("/slow/%1.mov").arg(i));
    QTest::qWait(20);
    QElapsedTimer timer;
    timer.start();
    cache.reset();
    EXPECT_LT(timer.elapsed(), 2000);
    EXPECT_LE(counting.state->calls, 2); // the queued ones never started
    QTest::qWait(20); // results queued for the dead cache are dropped, not delivered
}

TEST(ThumbnailCache, SharedCacheMakesRealThumbnails)
{
    ThumbnailCache &cache = ThumbnailCache::shared();
    EXPECT_EQ(cache.budgetBytes(), ThumbnailCache::kDefaultBudgetBytes);
    QSignalSpy ready(&cache, &ThumbnailCache::thumbnailReady);
    const QString still = MediaFixtures::path("still.png");
    const QString movie = MediaFixtures::path("phone_rotated.mov");
    cache.request(still);
    cache.request(movie);
    ASSERT_TRUE(QTest::qWaitFor([&] { return ready.count() == 2; }, 10'000));
    EXPECT_EQ(cache.image(still).size(), QSize(120, 68));
    EXPECT_EQ(cache.image(movie).size(), QSize(51, 90));
}

} // namespace
