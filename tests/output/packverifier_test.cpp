// Verifying a pack against its checksums.sha256: what a damaged, incomplete or padded pack
// reports, and that a checksum file with bad lines or an unreadable file never passes.
#include "output/packexporter.h"
#include "output/packverifier.h"
#include "support/files.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <functional>

#include <sys/stat.h>

namespace {

using PackVerifier::Finding;
using PackVerifier::Problem;

} // namespace

TEST(PackVerifierTest, ReportsEveryDamageAndOnlyPassesAnIntactPack)
{
    struct Case {
        const char *name;
        std::function<void(const QString &pack)> damage;
        QList<Finding> expected;
    };
    const QList<Case> cases{
        {"intact", [](const QString &) {}, {}},
        {"one byte flipped",
         [](const QString &pack) {
             QFile file(pack + "/media/02_b.mov");
             file.open(QIODevice::ReadWrite);
             file.seek(70000);
             file.write("B");
         },
         {{Problem::differs, "media/02_b.mov"}}},
        {"deleted",
         [](const QString &pack) { QFile::remove(pack + "/media/01_a.mov"); },
         {{Problem::missing, "media/01_a.mov"}}},
        {"extra file and a leftover partial",
         [](const QString &pack) {
             writeFile(pack + "/media/03_new.mov", "new");
             writeFile(pack + "/media/.01_a.mov.partial", "half");
         },
         {{Problem::extra, "media/.01_a.mov.partial"}, {Problem::extra, "media/03_new.mov"}}},
        {"malformed lines, the rest still checked",
         [](const QString &pack) {
             writeFile(pack + "/checksums.sha256", "not a checksum\n", QIODevice::Append);
             QFile::remove(pack + "/cues.csv");
         },
         {{Problem::missing, "cues.csv"}, {Problem::malformed, "checksums.sha256:6"}}},
        {"unreadable: a folder and a FIFO in place of files",
         [](const QString &pack) {
             QFile::remove(pack + "/media/01_a.mov");
             QDir().mkdir(pack + "/media/01_a.mov");
             QFile::remove(pack + "/README.txt");
             ::mkfifo(QFile::encodeName(pack + "/README.txt").constData(), 0600);
         },
         {{Problem::unreadable, "media/01_a.mov"}, {Problem::unreadable, "README.txt"}}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        QTemporaryDir sources;
        QTemporaryDir target;
        QList<MediaClip> clips;
        for (const auto &[name, arena, size] :
             {std::tuple{"a.mov", "01_a", 5000}, std::tuple{"b.mov", "02_b", 200000}}) {
            MediaClip clip =
                MediaClip::forFile(writeFile(sources.filePath(name), QByteArray(size, name[0])));
            clip.arenaName = arena;
            clips.append(clip);
        }
        const Result<QString> pack = PackExporter::exportPack(
            clips, target.path(), {}, QDateTime(QDate(2026, 1, 1), QTime(), QTimeZone::utc()), {},
            {}, {});
        ASSERT_TRUE(pack.has_value());
        c.damage(*pack);
        PackVerifier::Progress last;
        const Result<PackVerifier::Report> report = PackVerifier::verify(
            *pack, [&](const PackVerifier::Progress &p) { last = p; }, {}, 2);
        ASSERT_TRUE(report.has_value());
        EXPECT_EQ(report->checked, 5);
        EXPECT_EQ(report->findings, c.expected);
        EXPECT_EQ(report->passed(), c.expected.isEmpty());
        EXPECT_EQ(last.filesDone, 5);
    }

    QTemporaryDir bare;
    const Result<PackVerifier::Report> none = PackVerifier::verify(bare.path(), {}, {});
    ASSERT_FALSE(none.has_value());
    EXPECT_EQ(none.error().kind, Error::Kind::Invalid);
}
