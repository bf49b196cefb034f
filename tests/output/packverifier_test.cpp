// Verifying a pack against its checksums.sha256: what a damaged, incomplete or padded pack
// reports, and that a checksum file with bad lines or an unreadable file never passes.
#include "outputfixture.h"

#include "output/packexporter.h"
#include "output/packverifier.h"

#include <QDir>
#include <QFile>

#include <functional>

#include <sys/stat.h>

namespace {

using PackVerifier::Finding;
using PackVerifier::Problem;
using PackVerifierTest = PackSources;

} // namespace

TEST_F(PackVerifierTest, ReportsEveryDamageAndOnlyPassesAnIntactPack)
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
    const QList<MediaClip> clips{clip("a.mov", QByteArray(5000, 'a'), "01_a", 1),
                                 clip("b.mov", QByteArray(200000, 'b'), "02_b", 2)};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        QTemporaryDir target;
        const Result<QString> pack =
            PackExporter::exportPack(clips, target.path(), {}, kNow, {}, {}, {});
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

    const Result<PackVerifier::Report> none = PackVerifier::verify(m_target.path(), {}, {});
    ASSERT_FALSE(none.has_value());
    EXPECT_EQ(none.error().kind, Error::Kind::Invalid);
}
