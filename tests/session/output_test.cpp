#include "sessionfixture.h"

#include "output/packproject.h"

using SessionOutput = SessionTest;

TEST_F(SessionOutput, ExportWritesKnownFilesAndRemembersTheFolder)
{
    touch("show/Intro.MOV");
    touch("show/b roll.mp4");
    m_probe->setVideo("b roll.mp4", [] {
        VideoFacts f = FakeProbe::defaultVideo();
        f.naturalWidth = 1440; // 4:3 on a 16:9 stage
        f.duration = 62.4;
        return f;
    }());
    ingest("show");
    vm().setShowPrefix("Gig");
    vm().renameAll();
    const auto before = folderSnapshot(path("show"));
    QDir().mkpath(path("out"));
    m_panels.folders.push_back(path("out"));
    QStringList &statuses = recordStatuses();

    QCoro::waitFor(vm().exportPack());
    const QString pack = path("out/Cuebox_gig_2026-11-16T21-42-48Z");
    EXPECT_EQ(vm().status(), PackStatus::saved("Cuebox_gig_2026-11-16T21-42-48Z"));
    EXPECT_EQ(statuses.first(), "Exporting 1/2: 01_gig_b_roll.mp4");
    EXPECT_EQ(statuses.last(), "Pack saved: Cuebox_gig_2026-11-16T21-42-48Z");
    EXPECT_EQ(vm().lastExportURL(), url(pack));
    EXPECT_EQ(m_desktop.revealed, QStringList{pack});
    EXPECT_EQ(m_preferences.exportFolderHistory(), QStringList{path("out")});
    EXPECT_EQ(m_panels.messages.last(), "Where should the Arena pack go?");

    EXPECT_EQ(
        QString::fromUtf8(readFile(pack + "/cues.csv")),
        QString::fromUtf8("cue,arena_name,original_name,health,resolution,duration,codec,issues\n"
                          "1,01_gig_b_roll,b roll.mp4,warn,1440×1080,1:02,avc1,aspect\n"
                          "2,02_gig_intro,Intro.MOV,ok,1920×1080,0:10,avc1,"));
    const QByteArray manifest = readFile(pack + "/manifest.json");
    EXPECT_TRUE(manifest.contains("\"showPrefix\" : \"Gig\""));
    EXPECT_TRUE(manifest.contains("\"duration\" : 62.4"));
    EXPECT_TRUE(QFile::exists(pack + "/media/02_gig_intro.MOV"));
    EXPECT_EQ(folderSnapshot(path("show")), before);
}

TEST_F(SessionOutput, ExportRefusalsAndFailures)
{
    vm().saveProject();
    EXPECT_EQ(vm().status(), PackStatus::addFirst());
    vm().clear(); // back to idle
    QCoro::waitFor(vm().exportPack());
    EXPECT_EQ(vm().status(), PackStatus::addFirst());
    EXPECT_TRUE(m_panels.messages.isEmpty()); // no chooser for an empty pack

    ingestNew("show", {"a.mov"});
    const PackStatus ready = vm().status();
    m_panels.folders.push_back(std::nullopt); // cancelled
    QCoro::waitFor(vm().exportPack());
    EXPECT_EQ(vm().status(), ready);
    EXPECT_FALSE(vm().lastExportURL());

    m_copyFile = [](const QString &, const QString &, std::stop_token,
                    const std::function<void(qint64)> &) -> Result<QByteArray> {
        return Error{Error::Kind::WriteFailed, "No space left on device", "/x/01_a.mov", 0};
    };
    m_vm.reset(); // rebuild the session with the failing copier
    ingest("show");
    QDir().mkpath(path("out"));
    m_panels.folders.push_back(path("out"));
    QCoro::waitFor(vm().exportPack(path("out")));
    EXPECT_EQ(m_panels.lastStartFolder, path("out"));
    EXPECT_EQ(vm().status().kind(), PackStatus::Kind::error);
    EXPECT_EQ(vm().statusText(), "No space left on device: /x/01_a.mov");
    EXPECT_FALSE(vm().lastExportURL());
    EXPECT_EQ(m_preferences.exportFolderHistory(), QStringList{path("out")}); // remembered anyway
}

TEST_F(SessionOutput, ProjectRoundTripWithEverySettingChanged)
{
    ingestNew("show", {"a.mov", "b.mov", "c.mov"});
    vm().setShowPrefix("Main Show");
    vm().setZeroPad(false);
    vm().setPreferredWidth(2560);
    vm().setWarnOnEmbeddedAudio(false);
    vm().setWarnOnHEVC(false);
    vm().setConvertFormat(ArenaConvertFormat::h264);
    vm().setStripAudioOnConvert(false);
    vm().setForceEvenDimensions(false);
    vm().renameAll();
    const QList<MediaClip> saved = vm().clips();

    m_panels.files.push_back(path("Show.cuebox.json"));
    vm().saveProject();
    EXPECT_EQ(m_panels.lastProposedName, "main_show.cuebox.json");
    EXPECT_EQ(vm().status(), PackStatus::projectSaved("Show.cuebox.json"));
    EXPECT_EQ(m_panels.messages.last(), "Save this show pack so you can reopen it later.");

    m_vm.reset(); // a new run starts from the defaults
    QCoro::waitFor(vm().loadProject(path("Show.cuebox.json")));
    EXPECT_EQ(vm().status(), PackStatus::ready(3));
    EXPECT_EQ(vm().showPrefix(), "Main Show");
    EXPECT_FALSE(vm().zeroPad());
    EXPECT_EQ(vm().preferredWidth(), 2560);
    EXPECT_FALSE(vm().warnOnEmbeddedAudio());
    EXPECT_FALSE(vm().warnOnHEVC());
    EXPECT_EQ(vm().convertFormat(), ArenaConvertFormat::h264);
    EXPECT_FALSE(vm().stripAudioOnConvert());
    EXPECT_FALSE(vm().forceEvenDimensions());
    ASSERT_EQ(vm().clips().size(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(vm().clips()[i].id, saved[i].id);
        EXPECT_EQ(vm().clips()[i].arenaName, saved[i].arenaName);
        EXPECT_EQ(vm().clips()[i].cueIndex, saved[i].cueIndex);
    }
    EXPECT_EQ(vm().selectedClipID(), saved[0].id);
    EXPECT_EQ(vm().projectURL(), url(path("Show.cuebox.json")));

    // A second save proposes the opened file in its folder.
    m_panels.files.push_back(std::nullopt);
    vm().saveProject();
    EXPECT_EQ(m_panels.lastProposedName, "Show.cuebox.json");
    EXPECT_EQ(m_panels.lastStartFolder, m_dir.path());
}

TEST_F(SessionOutput, MissingFilesReorderedCuesAndUnreadableFiles)
{
    ingestNew("show", {"a.mov", "b.mov", "c.mov"});
    PackProjectFile file;
    file.createdAt = QDateTime::currentDateTimeUtc();
    file.convertFormat = "dxv";
    const qint64 cues[] = {3, 1, 2};
    for (int i = 0; i < 3; ++i) {
        const MediaClip &c = vm().clips()[i];
        file.clips.append(
            {c.id, c.sourcePath(), std::nullopt, c.originalName, c.arenaName, cues[i]});
    }
    ASSERT_TRUE(PackProject::write(file, path("p.json")).has_value());
    QCoro::waitFor(vm().loadProject(path("p.json")));
    EXPECT_EQ(originalNames(), (QStringList{"b.mov", "c.mov", "a.mov"}));
    EXPECT_EQ(vm().convertFormat(), ArenaConvertFormat::proRes422); // unknown text ignored

    QFile::remove(path("show/c.mov"));
    QCoro::waitFor(vm().loadProject(path("p.json")));
    EXPECT_EQ(vm().statusText(), "Loaded 2 clips (1 missing)");

    const QList<MediaClip> before = vm().clips();
    const QByteArray full = readFile(path("p.json"));
    touch("half.json", full.left(full.size() / 2));
    QCoro::waitFor(vm().loadProject(path("half.json")));
    EXPECT_EQ(vm().statusText(), "Could not read this project file");
    EXPECT_EQ(vm().clips(), before);
    EXPECT_EQ(readFile(path("p.json")), full);

    for (const char *gone : {"show/a.mov", "show/b.mov"})
        QFile::remove(path(gone));
    QCoro::waitFor(vm().loadProject(path("p.json")));
    EXPECT_EQ(vm().status(), PackStatus::empty());
    EXPECT_TRUE(vm().clips().isEmpty());
    EXPECT_EQ(vm().projectURL(), url(path("p.json")));
}
