// `cuebox verify FOLDER`: its exit status and the lines it prints for a pack on disk.
#include "output/packexporter.h"
#include "support/files.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <functional>

TEST(VerifyCommand, ExitStatusAndOneLinePerProblem)
{
    struct Case {
        const char *name;
        std::function<void(const QString &pack)> damage;
        int exitCode;
        QString stdoutText;
    };
    const QList<Case> cases{
        {"intact", [](const QString &) {}, 0, "5 files checked, 0 problems\n"},
        {"one byte flipped",
         [](const QString &pack) {
             QFile file(pack + "/media/01_a.mov");
             file.open(QIODevice::ReadWrite);
             file.write("X");
         },
         1, "media/01_a.mov differs from its checksum\n5 files checked, 1 problems\n"},
        {"deleted and an extra file",
         [](const QString &pack) {
             QFile::rename(pack + "/media/02_b.mov", pack + "/media/02_b_old.mov");
         },
         1,
         "media/02_b.mov is missing\nmedia/02_b_old.mov is not in the checksum list\n"
         "5 files checked, 2 problems\n"},
        {"no checksum file", [](const QString &pack) { QFile::remove(pack + "/checksums.sha256"); },
         2, ""},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        QTemporaryDir dir;
        QList<MediaClip> clips;
        for (const auto &[name, arena] : {std::pair{"a.mov", "01_a"}, std::pair{"b.mov", "02_b"}}) {
            MediaClip clip =
                MediaClip::forFile(writeFile(dir.filePath(name), QByteArray(1000, name[0])));
            clip.arenaName = arena;
            clips.append(clip);
        }
        QDir().mkpath(dir.filePath("out"));
        const Result<QString> pack = PackExporter::exportPack(
            clips, dir.filePath("out"), {}, QDateTime(QDate(2026, 1, 1), QTime(), QTimeZone::utc()),
            {}, {}, {});
        ASSERT_TRUE(pack.has_value());
        c.damage(*pack);
        QProcess run;
        run.start(CUEBOX_BINARY, {"verify", *pack});
        ASSERT_TRUE(run.waitForFinished(30000));
        EXPECT_EQ(run.exitCode(), c.exitCode);
        EXPECT_EQ(QString::fromUtf8(run.readAllStandardOutput()), c.stdoutText);
        if (c.exitCode == 2) { // after any progress lines
            EXPECT_TRUE(QString::fromUtf8(run.readAllStandardError())
                            .endsWith("cuebox: No checksums.sha256 in " + *pack + "\n"));
        }
    }
}
