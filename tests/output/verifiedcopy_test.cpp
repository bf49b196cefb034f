// Checksummed, read-back copies: export and backup write a checksums.sha256 that coreutils
// accepts, keep the sources' times and modes, and stop on a copy that changed on its way.
#include "outputfixture.h"

#include "output/checksumfile.h"
#include "output/filecopy.h"
#include "output/packbackup.h"
#include "output/packexporter.h"

#include <QDir>
#include <QFile>
#include <QProcess>

namespace {

struct stat statOf(const QString &path)
{
    struct stat info {
    };
    ::stat(QFile::encodeName(path).constData(), &info);
    return info;
}

// `sha256sum -c` run in `folder`: its exit status and what it printed.
std::pair<int, QString> coreutilsCheck(const QString &folder)
{
    QProcess run;
    run.setWorkingDirectory(folder);
    run.start("sha256sum", {"-c", "--strict", "checksums.sha256"});
    run.waitForFinished();
    return {run.exitCode(), QString::fromUtf8(run.readAllStandardOutput())};
}

void expectSameTimeAndMode(const QString &copy, const QString &original)
{
    SCOPED_TRACE(copy.toStdString());
    EXPECT_EQ(statOf(copy).st_mtime, statOf(original).st_mtime);
    EXPECT_EQ(statOf(copy).st_mode & 0777, 0640u);
}

using VerifiedCopy = PackSources;

} // namespace

TEST_F(VerifiedCopy, ChecksumLinesAreThoseOfCoreutils)
{
    // Names that need coreutils' escaping, side by side with what sha256sum itself prints.
    const QStringList names{"plain.mov",      "with space.mov",       "back\\slash.mov",
                            "line\nfeed.mov", "carriage\rreturn.mov", "star*.mov"};
    QList<ChecksumFile::Entry> entries;
    for (const QString &name : names) {
        const Result<QByteArray> digest =
            hashFromDevice(source("esc/" + name, name.toUtf8()), {}, {});
        ASSERT_TRUE(digest.has_value());
        entries.append({name, *digest});
    }
    QProcess run; // one line per name, in the order given
    run.setWorkingDirectory(m_sources.filePath("esc"));
    run.start("sha256sum", QStringList{"--"} + names);
    run.waitForFinished();
    const QByteArray theirs = run.readAllStandardOutput();
    EXPECT_EQ(ChecksumFile::format(entries), theirs);
    const ChecksumFile::Parsed back = ChecksumFile::parse(theirs);
    ASSERT_EQ(back.entries.size(), names.size());
    for (qsizetype i = 0; i < names.size(); ++i) {
        EXPECT_EQ(back.entries[i].path, names[i]);
        EXPECT_EQ(back.entries[i].digest, entries[i].digest);
    }

    const QByteArray hex(64, 'a');
    const ChecksumFile::Parsed mixed = ChecksumFile::parse(
        hex + "  media/ok.mov\n" + "garbage\n" + hex.left(63) + "  short.mov\n" + hex +
        " *binary.mov\r\n" + hex + "  /etc/passwd\n" + hex + "  media/../../x\n" + "\\" + hex +
        "  bad\\escape\n" + hex + "\tmedia/tab.mov\n\n");
    EXPECT_EQ(mixed.malformedLines, (QList<qsizetype>{2, 3, 5, 6, 7, 8}));
    ASSERT_EQ(mixed.entries.size(), 2);
    EXPECT_EQ(mixed.entries[1].path, "binary.mov");
}

TEST_F(VerifiedCopy, ExportAndBackupPassCoreutilsAndKeepTimesAndModes)
{
    const QList<MediaClip> clips{clip("a/intro.mov", QByteArray(3 << 20, 'i'), "01_intro", 1),
                                 clip("b/intro.mov", "second intro", "02_intro_2", 2)};
    std::vector<PackExporter::Progress> reports;
    const Result<QString> pack = PackExporter::exportPack(
        clips, m_target.path(), {}, kNow, {},
        [&](const PackExporter::Progress &p) { reports.push_back(p); }, {});
    ASSERT_TRUE(pack.has_value()) << pack.error().message.toStdString();
    const auto [status, output] = coreutilsCheck(*pack);
    EXPECT_EQ(status, 0) << output.toStdString();
    EXPECT_EQ(output, "media/01_intro.mov: OK\nmedia/02_intro_2.mov: OK\nmanifest.json: OK\n"
                      "cues.csv: OK\nREADME.txt: OK\n");
    // Read-back counts in the progress: every byte is copied once and read back once.
    EXPECT_EQ(reports.back().bytesTotal, 2 * ((3 << 20) + 12));
    EXPECT_EQ(reports.back().bytesDone, reports.back().bytesTotal);

    const QString backup = m_target.filePath("ArenaBackup_x");
    const Result<QString> backedUp = PackBackup::backupFiles(
        {clips[0].sourcePath(), clips[1].sourcePath()}, backup, {}, ReadBack::on, {}, {});
    ASSERT_TRUE(backedUp.has_value());
    EXPECT_EQ(coreutilsCheck(backup),
              std::make_pair(0, QString("intro.mov: OK\nintro_1.mov: OK\n")));

    for (const auto &[copy, original] :
         {std::pair{*pack + "/media/01_intro.mov", clips[0].sourcePath()},
          std::pair{*pack + "/media/02_intro_2.mov", clips[1].sourcePath()},
          std::pair{backup + "/intro.mov", clips[0].sourcePath()},
          std::pair{backup + "/intro_1.mov", clips[1].sourcePath()}})
        expectSameTimeAndMode(copy, original);
    // The sources themselves: bytes, time and mode as they were.
    EXPECT_EQ(statOf(clips[0].sourcePath()).st_mtime, 1600000000);
    EXPECT_EQ(statOf(clips[1].sourcePath()).st_mtime, 1600000001);
    EXPECT_EQ(readFile(clips[1].sourcePath()), "second intro");
}

TEST_F(VerifiedCopy, ACopyChangedBeforeItsReadBackStopsTheExport)
{
    const QList<MediaClip> clips{clip("a.mov", "aaaa", "01_a", 1),
                                 clip("b.mov", "bbbb", "02_b", 2)};
    // The copy step writes the right bytes and reports the right digest; then, as a failing
    // stick or cable would, the bytes on the device change.
    const PackExporter::CopyFile flipAfterCopy =
        [](const QString &from, const QString &to, std::stop_token stop,
           const std::function<void(qint64)> &bytes) -> Result<QByteArray> {
        Result<QByteArray> digest = copyFileHashing(from, to, stop, bytes);
        if (from.endsWith("b.mov"))
            writeFile(to, "X", QIODevice::ReadWrite);
        return digest;
    };
    for (const bool verify : {true, false}) {
        SCOPED_TRACE(verify ? "read-back on" : "read-back off");
        QTemporaryDir target;
        PackExporter::Options options;
        options.verifyCopies = verify;
        const Result<QString> pack =
            PackExporter::exportPack(clips, target.path(), options, kNow, flipAfterCopy, {}, {});
        const QString media = target.filePath("Cuebox_2026-11-16T21-42-48Z/media");
        if (verify) {
            ASSERT_FALSE(pack.has_value());
            EXPECT_EQ(PackExporter::description(pack.error()),
                      "The copy differs from its source: " + media + "/02_b.mov");
            EXPECT_EQ(QDir(media).entryList(QDir::Files | QDir::Hidden), QStringList{"01_a.mov"});
            EXPECT_FALSE(QFile::exists(
                target.filePath("Cuebox_2026-11-16T21-42-48Z/" + ChecksumFile::kFileName)));
        } else {
            // Without read-back the export cannot know; the checksum file still tells.
            ASSERT_TRUE(pack.has_value());
            EXPECT_EQ(coreutilsCheck(*pack).first, 1);
        }
    }
}
