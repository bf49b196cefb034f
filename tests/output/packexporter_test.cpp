#include "outputfixture.h"

#include "output/filecopy.h"
#include "output/packexporter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <limits>

#include <unistd.h>

using Export = PackSources;

TEST_F(Export, CueSheetQuotingAndLayout)
{
    MediaClip plain = clip("intro.MOV", "a", "01_intro", 1);
    plain.width = 1920;
    plain.height = 1080;
    plain.duration = 59.5;
    plain.videoCodec = "avc1";
    MediaClip odd = clip("b.mov", "b", "02_b", 2);
    odd.originalName = "Take \"2\", final\nv2.mov";
    odd.duration = 3725.0;
    odd.issues = {ClipIssue::make(ClipHealth::warn, IssueKind::oddSize),
                  ClipIssue::make(ClipHealth::fail, IssueKind::readError)};
    MediaClip semi = clip("c;d.png", "c", "03_c_d", 3);
    semi.isInspected = false;
    EXPECT_EQ(
        QString::fromUtf8(PackExporter::cuesCsv({plain, odd, semi})),
        QString::fromUtf8("cue,arena_name,original_name,health,resolution,duration,codec,issues\n"
                          "1,01_intro,intro.MOV,ok,1920×1080,1:00,avc1,\n"
                          "2,02_b,\"Take \"\"2\"\", final\nv2.mov\",fail,—,62:05,,"
                          "oddSize; readError\n"
                          "3,03_c_d,c;d.png,unknown,—,—,,"));
}

TEST_F(Export, FolderAndFileNames)
{
    EXPECT_EQ(PackExporter::folderName("", kNow), "Cuebox_2026-11-16T21-42-48Z");
    EXPECT_EQ(PackExporter::folderName("Main Show", kNow), "Cuebox_main_show_2026-11-16T21-42-48Z");
    EXPECT_EQ(PackExporter::folderName("!!!", kNow), "Cuebox__2026-11-16T21-42-48Z");
    MediaClip noExtension = MediaClip::forFile("/x/README");
    noExtension.arenaName = "05_readme";
    EXPECT_EQ(PackExporter::mediaFileName(noExtension), "05_readme");
    MediaClip capitals = MediaClip::forFile("/x/clip.MOV");
    capitals.arenaName = "01_clip";
    EXPECT_EQ(PackExporter::mediaFileName(capitals), "01_clip.MOV");
}

TEST_F(Export, WritesThePackAndLeavesSourcesAlone)
{
    const QList<MediaClip> clips{clip("intro.MOV", QByteArray(300000, 'i'), "01_show_intro", 1),
                                 clip("still.png", "png bytes", "02_show_still", 2)};
    const QDateTime sourceTime = QFileInfo(clips[0].sourcePath()).lastModified();
    QList<PackExporter::Progress> reports;
    const Result<QString> pack =
        PackExporter::exportPack(clips, m_target.path(), {true, true, true, "Show"}, kNow, {},
                                 [&](const PackExporter::Progress &p) { reports.append(p); }, {});
    ASSERT_TRUE(pack.has_value()) << pack.error().message.toStdString();
    EXPECT_EQ(*pack, m_target.filePath("Cuebox_show_2026-11-16T21-42-48Z"));
    EXPECT_EQ(readFile(*pack + "/media/01_show_intro.MOV"), QByteArray(300000, 'i'));
    EXPECT_EQ(readFile(*pack + "/media/02_show_still.png"), "png bytes");
    EXPECT_EQ(QDir(*pack + "/media").entryList(QDir::Files | QDir::Hidden).size(), 2);
    EXPECT_EQ(
        readFile(*pack + "/README.txt"),
        QString::fromUtf8("Cuebox pack\n=================\n"
                          "1. Открой папку media/ в Resolume Arena (File → Import или drag "
                          "into Composition).\n"
                          "2. Имена файлов уже в формате cue: 01_..., 02_...\n"
                          "3. cues.csv / manifest.json — шпаргалка для режиссёра и бэкапа.\n\n"
                          "Проверь жёлтые/красные клипы в отчёте до выезда.")
            .toUtf8());
    EXPECT_TRUE(readFile(*pack + "/cues.csv").startsWith("cue,arena_name,"));
    EXPECT_TRUE(
        readFile(*pack + "/manifest.json").contains("\"createdAt\" : \"2026-11-16T21:42:48Z\""));
    EXPECT_EQ(readFile(clips[0].sourcePath()), QByteArray(300000, 'i'));
    EXPECT_EQ(QFileInfo(clips[0].sourcePath()).lastModified(), sourceTime);
    ASSERT_FALSE(reports.isEmpty());
    EXPECT_EQ(reports.back().index, 2);
}

TEST_F(Export, FailuresStopAndKeepWhatWasThere)
{
    const Result<QString> empty =
        PackExporter::exportPack({}, m_target.path(), {}, kNow, {}, {}, {});
    EXPECT_EQ(empty.error().kind, Error::Kind::Empty);
    EXPECT_EQ(PackExporter::description(empty.error()),
              QString::fromUtf8("Нет клипов для экспорта"));
    EXPECT_TRUE(QDir(m_target.path()).isEmpty());
    MediaClip endless = clip("n.mov", "n", "01_n", 1);
    endless.duration = std::numeric_limits<double>::infinity(); // no manifest can encode it
    const Result<QString> unencodable =
        PackExporter::exportPack({endless}, m_target.filePath("inf"), {}, kNow, {}, {}, {});
    ASSERT_FALSE(unencodable.has_value());
    EXPECT_EQ(PackExporter::description(unencodable.error()),
              "A number cannot be written as JSON (not finite)");

    const QList<MediaClip> clips{clip("a.mov", "aaaa", "01_a", 1),
                                 clip("b.mov", "bbbb", "02_b", 2)};
    int calls = 0;
    const PackExporter::CopyFile failSecond =
        [&](const QString &from, const QString &to, std::stop_token stop,
            const std::function<void(qint64)> &bytes) -> Result<QByteArray> {
        if (++calls == 2) {
            writeFile(to, "half");
            return Error{Error::Kind::WriteFailed, "No space left on device", to, 0};
        }
        return copyFileHashing(from, to, stop, bytes);
    };
    const Result<QString> failed =
        PackExporter::exportPack(clips, m_target.path(), {}, kNow, failSecond, {}, {});
    ASSERT_FALSE(failed.has_value());
    EXPECT_TRUE(PackExporter::description(failed.error()).startsWith("No space left on device"));
    const QString media = m_target.filePath("Cuebox_2026-11-16T21-42-48Z/media");
    // No half-written file under a clip's name; nothing after the failure.
    EXPECT_EQ(QDir(media).entryList(QDir::Files | QDir::Hidden), QStringList{"01_a.mov"});
    EXPECT_FALSE(QFile::exists(m_target.filePath("Cuebox_2026-11-16T21-42-48Z/cues.csv")));
    EXPECT_EQ(readFile(clips[1].sourcePath()), "bbbb");

    if (::geteuid() != 0) {
        QFile::setPermissions(m_target.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        const Result<QString> readOnly =
            PackExporter::exportPack(clips, m_target.path() + "/ro", {}, kNow, {}, {}, {});
        EXPECT_FALSE(readOnly.has_value());
        QFile::setPermissions(m_target.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                                   QFileDevice::ExeOwner);
    }
    std::stop_source stop;
    stop.request_stop();
    const Result<QString> cancelled =
        PackExporter::exportPack(clips, m_target.path(), {}, kNow, {}, {}, stop.get_token());
    EXPECT_EQ(PackExporter::description(cancelled.error()), QString::fromUtf8("Отменено"));
}
