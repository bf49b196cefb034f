// A conversion batch as one unit: busy and cancellable from its backup on, its settings read
// once at the start, its folders private where they must be, and every folder it cannot make
// reported with the system's reason.
#include "sessionfixture.h"

#include <QCoroTask>
#include <QSemaphore>
#include <QThreadPool>
#include <QtConcurrent>

#include <cstring>

#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString kStamp = QStringLiteral("2026-11-16T21-42-48Z");

QString systemText(int code)
{
    return QString::fromLocal8Bit(std::strerror(code));
}

int modeOf(const QString &path)
{
    struct stat info {
    };
    return ::lstat(QFile::encodeName(path).constData(), &info) == 0 ? int(info.st_mode & 0777) : -1;
}

class ConvertBatch : public SessionTest
{
protected:
    void SetUp() override
    {
        withAudio("loud.mov");
        m_probe->setImage("a.png", ImageFacts{true, true, 1921, 1081});
        m_probe->setImage("c.png", ImageFacts{true, true, 1921, 1081});
        for (const char *file : {"show/a.png", "show/b.mov", "show/c.png", "show/loud.mov"})
            touch(file);
        QCoro::waitFor(vm().ingest({url(path("show"))}));
        ASSERT_EQ(vm().clips().size(), 4);
        QDir().mkpath(path("out"));
        touch("file");
    }
    void TearDown() override { qputenv("XDG_CACHE_HOME", m_cache); }

    const QByteArray m_cache = qgetenv("XDG_CACHE_HOME"); // the test main's, put back after
};

} // namespace

TEST_F(ConvertBatch, SettingsAreReadOnceWhenTheBatchStarts)
{
    m_preferences.setAutoBackupBeforeConvert(false);
    vm().setForceEvenDimensions(true);
    vm().setConvertFormat(ArenaConvertFormat::h264);
    m_conversion->setDelay(std::chrono::milliseconds(200));
    m_panels.folders.push_back(path("out"));
    auto running = vm().convertPack(false);
    ASSERT_TRUE(waitUntil([&] { return m_conversion->calls() == 1; }));
    vm().setForceEvenDimensions(false);
    vm().setConvertFormat(ArenaConvertFormat::proRes422LT);
    QCoro::waitFor(std::move(running));
    EXPECT_EQ(vm().status(), PackStatus::converted(4));
    EXPECT_EQ(m_conversion->forceEvenArguments(), (QList<bool>{true, true}));
    ASSERT_EQ(m_conversion->options().size(), 2);
    for (const ConvertOptions &options : m_conversion->options())
        EXPECT_EQ(options.format, ArenaConvertFormat::h264);
}

TEST_F(ConvertBatch, BackupIsPartOfTheBusyAndCancellableBatch)
{
    // The backup runs on the shared pool; with the pool held, it waits there for the test.
    QThreadPool *pool = QThreadPool::globalInstance();
    const int threads = pool->maxThreadCount();
    pool->setMaxThreadCount(1);
    QSemaphore release;
    QFuture<void> holder = QtConcurrent::run([&release] { release.acquire(); });
    m_panels.folders.push_back(path("out"));
    m_panels.folders.push_back(path("out"));
    auto running = vm().convertPack(false);
    EXPECT_TRUE(vm().isConverting());
    auto second = vm().convertPack(false); // refused: no second chooser
    EXPECT_EQ(m_panels.folders.size(), 1);
    vm().cancelConversion();
    release.release();
    holder.waitForFinished();
    QCoro::waitFor(std::move(running));
    QCoro::waitFor(std::move(second));
    pool->setMaxThreadCount(threads);
    EXPECT_EQ(vm().status(), PackStatus::error("Cancelled"));
    EXPECT_FALSE(vm().isConverting());
    EXPECT_EQ(m_conversion->calls(), 0);
    EXPECT_FALSE(vm().lastBackupURL());
}

TEST_F(ConvertBatch, FoldersThatCannotBeMadeSayWhy)
{
    const QString notADir =
        QStringLiteral("Could not create the folder (%1): ").arg(systemText(ENOTDIR));
    touch("out/ArenaBackup_" + kStamp);
    qputenv("XDG_CACHE_HOME", QFile::encodeName(path("file")));
    struct Row {
        const char *name;
        std::function<QCoro::Task<>()> run;
        QString status;
    };
    const Row rows[] = {
        {"export", [&] { return vm().exportPack(path("file")); },
         notADir + path("file/Cuebox_" + kStamp + "/media")},
        {"convert", [&] { return vm().convertPack(false); },
         notADir + path("file/ArenaReady_" + kStamp)},
        {"backup", [&] { return vm().convertPack(false); },
         notADir + path("out/ArenaBackup_" + kStamp)},
        {"strip", [&] { return vm().stripAudioFromAll(); }, notADir + path("file")},
    };
    m_panels.folders = {path("file"), path("file"), path("out")};
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        QCoro::waitFor(row.run());
        EXPECT_EQ(vm().statusText(), row.status);
        EXPECT_FALSE(vm().isConverting());
    }
    EXPECT_EQ(m_conversion->calls(), 0);
}

TEST_F(ConvertBatch, StrippedClipsGoToAPrivateFolderOfTheUser)
{
    const QString cache = path("cache");
    qputenv("XDG_CACHE_HOME", QFile::encodeName(cache));
    const QString folder = cache + "/Cuebox/StripAudio";
    withAudio("04_loud.mov"); // stays loud, so each row strips it again
    struct Row {
        const char *name;
        std::function<void()> prepare;
        QString status; // empty: the strip succeeds
    };
    const Row rows[] = {
        {"made private", [] {}, {}},
        {"too open", [&] { QFile::setPermissions(folder, QFileDevice::Permissions(0x7755)); }, {}},
        {"a link",
         [&] {
             QDir(folder).removeRecursively();
             QFile::link(path("out"), folder);
         },
         "The working folder is not a folder of its own: " + folder},
        {"someone else's",
         [&] {
             QFile::remove(folder);
             QDir().mkpath(folder);
             ASSERT_EQ(::chown(QFile::encodeName(folder).constData(), 65534, 65534), 0);
         },
         "The working folder belongs to another user: " + folder},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        if (std::strcmp(row.name, "someone else's") == 0 && ::geteuid() != 0)
            continue; // only root can give a folder away
        row.prepare();
        const MediaClip before = vm().clips()[3];
        QCoro::waitFor(vm().stripAudioFromAll());
        if (row.status.isEmpty()) {
            EXPECT_EQ(vm().status(), PackStatus::converted(1));
            EXPECT_EQ(vm().clips()[3].sourcePath(), folder + "/04_loud.mov");
            EXPECT_EQ(modeOf(cache + "/Cuebox"), 0700);
            EXPECT_EQ(modeOf(folder), 0700);
        } else {
            EXPECT_EQ(vm().statusText(), row.status);
            EXPECT_EQ(vm().clips()[3].sourcePath(), before.sourcePath());
        }
    }
}
