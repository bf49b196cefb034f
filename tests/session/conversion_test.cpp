// Converting a pack for Arena at the session: which clips go, where the results and the backup
// land, and the batch as one unit -- busy and cancellable from its backup on, its settings read
// once at the start, its folders private where they must be, and every folder it cannot make
// reported with the system's reason.
#include "sessionfixture.h"
#include "support/clips.h"

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

// A pack of a clean movie, a movie with sound and a still of an odd width.
class Conversion : public SessionTest
{
protected:
    void SetUp() override
    {
        withAudio("loud.mov");
        m_probe->setImage("odd.png", ImageFacts{true, true, 1921, 1080});
        // What the converter writes probes clean: audio gone, sizes even.
        m_probe->setImage("03_odd.png", ImageFacts{true, true, 1920, 1080});
        ingestNew("show", {"fine.mov", "loud.mov", "odd.png"});
        ASSERT_EQ(vm().clips().size(), 3);
        QDir().mkpath(path("out"));
        m_before = sources();
    }
    void TearDown() override { qputenv("XDG_CACHE_HOME", m_cache); }
    // The original files: a conversion never touches them.
    QMap<QString, QPair<QByteArray, QDateTime>> sources() { return folderSnapshot(path("show")); }
    QStringList folderNames(const QString &relative)
    {
        return QDir(path(relative)).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    }
    QMap<QString, QPair<QByteArray, QDateTime>> m_before;
    const QByteArray m_cache = qgetenv("XDG_CACHE_HOME"); // the test main's, put back after
};

using ConvertBatch = Conversion;

} // namespace

TEST_F(Conversion, OnlyProblemsConvertsWarnAndFailClipsWithBackup)
{
    const QList<MediaClip> before = vm().clips();
    m_panels.folders.push_back(path("out"));
    QCoro::waitFor(vm().convertPack(true));

    EXPECT_EQ(vm().status(), PackStatus::converted(2));
    EXPECT_EQ(m_conversion->calls(), 2);
    EXPECT_EQ(folderNames("out"),
              (QStringList{"ArenaBackup_2026-11-16T21-42-48Z", "ArenaReady_2026-11-16T21-42-48Z"}));
    EXPECT_EQ(QDir(path("out/ArenaBackup_2026-11-16T21-42-48Z")).entryList(QDir::Files),
              (QStringList{"checksums.sha256", "loud.mov", "odd.png"}));
    EXPECT_EQ(vm().lastBackupURL(), url(path("out/ArenaBackup_2026-11-16T21-42-48Z")));
    EXPECT_EQ(vm().lastExportURL(), url(m_desktop.revealed.last()));
    EXPECT_EQ(m_desktop.revealed.last(), path("out/ArenaReady_2026-11-16T21-42-48Z"));
    EXPECT_EQ(m_panels.messages.last(), "Where should the Arena-ready folder go?");

    const MediaClip &loud = vm().clips()[1];
    const MediaClip &odd = vm().clips()[2];
    EXPECT_EQ(vm().clips()[0], before[0]); // ok clips keep their source
    EXPECT_EQ(loud.originalName, "02_loud.mov");
    EXPECT_EQ(loud.arenaName, before[1].arenaName);
    EXPECT_EQ(loud.cueIndex, before[1].cueIndex);
    EXPECT_EQ(loud.id, before[1].id);
    EXPECT_EQ(loud.contentFingerprint, before[1].contentFingerprint);
    EXPECT_TRUE(loud.sourcePath().endsWith("ArenaReady_2026-11-16T21-42-48Z/02_loud.mov"));
    EXPECT_EQ(odd.originalName, "03_odd.png");
    EXPECT_TRUE(odd.issues.isEmpty()); // the even crop cleared the odd-size finding
    EXPECT_EQ(m_conversion->options().front().format, ArenaConvertFormat::proRes422);
    EXPECT_TRUE(m_conversion->options().front().dropAudio);
    EXPECT_EQ(sources(), m_before);
}

TEST_F(Conversion, ProgressOfThreeClipsAndBackupNamesThatCollide)
{
    ingestNew("other", {"loud.mov"}); // a second loud.mov from another folder
    QList<double> progress{vm().convertProgress()};
    QObject::connect(&vm(), &PackViewModel::convertProgressChanged,
                     [&] { progress.append(vm().convertProgress()); });
    m_panels.folders.push_back(path("out"));
    QCoro::waitFor(vm().convertPack(std::nullopt)); // the switch says all clips
    EXPECT_EQ(vm().status(), PackStatus::converted(4));
    EXPECT_EQ(QDir(path("out/ArenaBackup_2026-11-16T21-42-48Z")).entryList(QDir::Files),
              (QStringList{"checksums.sha256", "fine.mov", "loud.mov", "loud_1.mov", "odd.png"}));
    QList<double> milestones;
    for (double p : progress) {
        if (std::fmod(p * 4, 1.0) == 0.0 && (milestones.isEmpty() || milestones.back() != p))
            milestones.append(p);
    }
    EXPECT_EQ(milestones, (QList<double>{0.0, 0.25, 0.5, 0.75, 1.0}));
    EXPECT_TRUE(std::is_sorted(progress.begin(), progress.end()));
    EXPECT_EQ(sources(), m_before);
}

TEST_F(Conversion, RefusalsAndChoices)
{
    vm().clear();
    QCoro::waitFor(vm().convertPack(std::nullopt));
    EXPECT_EQ(vm().status(), PackStatus::addFirst());
    ingestNew("clean", {"a.mov"});
    QCoro::waitFor(vm().convertPack(true));
    EXPECT_EQ(vm().status(), PackStatus::noProblems());
    EXPECT_TRUE(m_panels.messages.isEmpty());

    m_panels.folders.push_back(std::nullopt); // cancelled chooser
    const PackStatus before = vm().status();
    QCoro::waitFor(vm().convertPack(false));
    EXPECT_EQ(vm().status(), before);
    EXPECT_TRUE(folderNames("out").isEmpty());

    m_preferences.setAutoBackupBeforeConvert(false);
    vm().setShowPrefix("Main Show");
    m_panels.folders.push_back(path("out"));
    QCoro::waitFor(vm().convertPack(false));
    EXPECT_EQ(folderNames("out"), QStringList{"ArenaReady_main_show_2026-11-16T21-42-48Z"});
    EXPECT_FALSE(vm().lastBackupURL());
}

TEST_F(Conversion, AFailureStopsTheBatchAndKeepsEarlierClips)
{
    m_conversion->failFor("03_odd", "PNG writer failed");
    m_panels.folders.push_back(path("out"));
    QCoro::waitFor(vm().convertPack(true));
    EXPECT_EQ(vm().status(), PackStatus::error("PNG writer failed"));
    EXPECT_EQ(vm().clips()[1].originalName, "02_loud.mov"); // converted before the failure
    EXPECT_EQ(vm().clips()[2].originalName, "odd.png");
    EXPECT_FALSE(vm().isConverting());
    EXPECT_FALSE(vm().lastExportURL());
    EXPECT_DOUBLE_EQ(vm().convertProgress(), 0.5);
}

TEST_F(Conversion, CancelStopsAtOnceAndASecondStartIsRefused)
{
    m_conversion->setDelay(std::chrono::milliseconds(5000));
    m_panels.folders.push_back(path("out"));
    m_panels.folders.push_back(path("out"));
    auto running = vm().convertPack(false);
    // Past the backup (its cancel is ConvertBatch's): the first clip is in the converter.
    ASSERT_TRUE(waitUntil([&] { return m_conversion->calls() == 1; }));
    QCoro::waitFor(vm().convertPack(false)); // refused while one runs
    EXPECT_EQ(m_panels.folders.size(), 1);
    QElapsedTimer timer;
    timer.start();
    vm().cancelConversion();
    QCoro::waitFor(std::move(running));
    EXPECT_LT(timer.elapsed(), 1000);
    EXPECT_EQ(m_conversion->calls(), 1); // no clip after the cancelled one
    EXPECT_EQ(vm().status(), PackStatus::error("Cancelled"));
    EXPECT_FALSE(vm().isConverting());
    EXPECT_EQ(sources(), m_before);
}

TEST_F(Conversion, StrippingAudio)
{
    const QString arenaName = vm().clips()[1].arenaName;
    EXPECT_EQ(vm().clipsWithAudioCount(), 1);
    QCoro::waitFor(vm().stripAudio({vm().clips()[0].id})); // no audio: nothing happens
    EXPECT_EQ(m_conversion->calls(), 0);

    m_probe->setVideo("02_loud.mov", FakeProbe::defaultVideo()); // the stripped file is silent
    QCoro::waitFor(vm().stripAudioFromAll());
    EXPECT_EQ(vm().status(), PackStatus::converted(1));
    const MediaClip &loud = vm().clips()[1];
    EXPECT_FALSE(issueKinds(loud).contains(IssueKind::audio));
    // The tests' cache folder (see the test main), never the shared temporary folder.
    EXPECT_EQ(loud.sourcePath(),
              qEnvironmentVariable("XDG_CACHE_HOME") + "/Cuebox/StripAudio/02_loud.mov");
    EXPECT_EQ(loud.arenaName, arenaName);
    EXPECT_EQ(vm().clipsWithAudioCount(), 0);
    EXPECT_TRUE(m_conversion->options().back().dropAudio);
    EXPECT_FALSE(vm().lastExportURL()); // stripping is not an export
    EXPECT_EQ(sources(), m_before);

    QCoro::waitFor(vm().stripAudioFromAll());
    EXPECT_EQ(vm().status(), PackStatus::noAudioToStrip());
}

TEST_F(ConvertBatch, SettingsAreReadOnceWhenTheBatchStarts)
{
    m_preferences.setAutoBackupBeforeConvert(false);
    vm().setForceEvenDimensions(true);
    vm().setConvertFormat(ArenaConvertFormat::h264);
    m_conversion->setDelay(std::chrono::milliseconds(200));
    m_panels.folders.push_back(path("out"));
    auto running = vm().convertPack(false);
    ASSERT_TRUE(waitUntil([&] { return m_conversion->calls() == 1; })); // fine.mov is converting
    vm().setForceEvenDimensions(false);
    vm().setConvertFormat(ArenaConvertFormat::proRes422LT);
    QCoro::waitFor(std::move(running));
    EXPECT_EQ(vm().status(), PackStatus::converted(3));
    EXPECT_EQ(m_conversion->forceEvenArguments(), QList<bool>{true}); // odd.png, after the change
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
    touch("file");
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
    withAudio("02_loud.mov"); // stays loud, so each row strips it again
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
        const MediaClip before = vm().clips()[1];
        QCoro::waitFor(vm().stripAudioFromAll());
        if (row.status.isEmpty()) {
            EXPECT_EQ(vm().status(), PackStatus::converted(1));
            EXPECT_EQ(vm().clips()[1].sourcePath(), folder + "/02_loud.mov");
            EXPECT_EQ(modeOf(cache + "/Cuebox"), 0700);
            EXPECT_EQ(modeOf(folder), 0700);
        } else {
            EXPECT_EQ(vm().statusText(), row.status);
            EXPECT_EQ(vm().clips()[1].sourcePath(), before.sourcePath());
        }
    }
}
