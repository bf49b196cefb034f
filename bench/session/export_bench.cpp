// Export of a 2 GB pack next to doing the same by hand, measured side by side in one run:
//   export with read-back     vs  cp -r + sync + sha256sum of the copies after dropping their
//                                 cached pages (the same guarantee: every copy read back)
//   export without read-back  vs  cp -r + sync
//   verify of the pack        vs  sha256sum -c checksums.sha256 (both from the device)
// Every side starts with the sources in the page cache and the target flushed.
//
//   bench_export [WORK_FOLDER] [TOTAL_MB] [ROUNDS]
#include "output/packexporter.h"
#include "output/packverifier.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTextStream>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

QList<MediaClip> makeSources(const QString &folder, qint64 totalMb)
{
    QDir().mkpath(folder);
    constexpr qint64 kFileMb = 100;
    const qint64 files = qMax<qint64>(1, totalMb / kFileMb);
    QList<MediaClip> clips;
    QByteArray block(1 << 20, Qt::Uninitialized);
    for (qint64 i = 0; i < files; ++i) {
        const QString path = QDir(folder).filePath(QStringLiteral("clip%1.mov").arg(i));
        if (QFileInfo(path).size() != kFileMb << 20) {
            QFile file(path);
            file.open(QIODevice::WriteOnly);
            for (qint64 mb = 0; mb < kFileMb; ++mb) {
                QRandomGenerator::global()->fillRange(reinterpret_cast<quint32 *>(block.data()),
                                                      block.size() / 4);
                file.write(block);
            }
        }
        MediaClip clip = MediaClip::forFile(path);
        clip.cueIndex = i + 1;
        clip.arenaName = QStringLiteral("%1_clip").arg(i + 1, 2, 10, QChar(u'0'));
        clip.isInspected = true;
        clip.fileSize = kFileMb << 20;
        clips.append(clip);
    }
    return clips;
}

QStringList filesBelow(const QString &folder)
{
    QStringList files;
    QDirIterator it(folder, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files.append(it.next());
    files.sort();
    return files;
}

// What `dd iflag=nocache count=0` does per file, without a process per file.
void dropCachedPages(const QString &folder)
{
    for (const QString &file : filesBelow(folder)) {
        const int fd = ::open(QFile::encodeName(file).constData(), O_RDONLY | O_CLOEXEC);
        if (fd < 0)
            continue;
        ::fdatasync(fd);
        ::posix_fadvise(fd, 0, 0, POSIX_FADV_DONTNEED);
        ::close(fd);
    }
}

void warmSources(const QString &folder)
{
    // The sources were just written or read: both sides find them in the page cache.
    std::vector<char> buffer(8 << 20);
    for (const QString &file : filesBelow(folder)) {
        QFile in(file);
        in.open(QIODevice::ReadOnly);
        while (in.read(buffer.data(), qint64(buffer.size())) > 0) {
        }
    }
    QProcess::execute(QStringLiteral("sync"), {});
}

bool shell(const QString &command, const QString &folder = {})
{
    QProcess run;
    if (!folder.isEmpty())
        run.setWorkingDirectory(folder);
    run.setStandardOutputFile(QProcess::nullDevice());
    run.start(QStringLiteral("sh"), {QStringLiteral("-c"), command});
    run.waitForFinished(-1);
    return run.exitStatus() == QProcess::NormalExit && run.exitCode() == 0;
}

double seconds(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e9;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QString work = argc > 1 ? QString::fromLocal8Bit(argv[1])
                                  : QDir::temp().filePath(QStringLiteral("cuebox-export-bench"));
    const qint64 totalMb = argc > 2 ? QString::fromLocal8Bit(argv[2]).toLongLong() : 2048;
    const int rounds = argc > 3 ? QString::fromLocal8Bit(argv[3]).toInt() : 3;
    const QString sources = QDir(work).filePath(QStringLiteral("sources"));
    const QList<MediaClip> clips = makeSources(sources, totalMb);
    QTextStream out(stdout);
    const QDateTime now = QDateTime::currentDateTimeUtc();

    std::vector<double> verified, byHandVerified, plain, byHand, verify, sha256Check;
    bool ok = true;
    for (int round = 0; round < rounds && ok; ++round) {
        const QString target = QDir(work).filePath(QStringLiteral("target"));
        const auto fresh = [&] {
            QDir(target).removeRecursively();
            QDir().mkpath(target);
            warmSources(sources);
        };

        fresh();
        PackExporter::Options readBack;
        Result<QString> pack = QString();
        verified.push_back(seconds(
            [&] { pack = PackExporter::exportPack(clips, target, readBack, now, {}, {}, {}); }));
        ok = ok && pack.has_value();
        if (!ok)
            break;
        // Both checks of the pack start from the device.
        dropCachedPages(*pack);
        Result<PackVerifier::Report> report = PackVerifier::Report{};
        verify.push_back(seconds([&] { report = PackVerifier::verify(*pack, {}, {}); }));
        ok = ok && report.has_value() && report->passed();
        dropCachedPages(*pack);
        sha256Check.push_back(seconds([&] {
            ok = ok && shell(QStringLiteral("sha256sum -c --quiet checksums.sha256"), *pack);
        }));

        fresh();
        const QString copy = QDir(target).filePath(QStringLiteral("copy"));
        byHandVerified.push_back(seconds([&] {
            ok = ok && shell(QStringLiteral("cp -r '%1' '%2' && sync").arg(sources, copy));
            dropCachedPages(copy);
            ok = ok && shell(QStringLiteral("sha256sum '%1'/* > /dev/null").arg(copy));
        }));

        fresh();
        PackExporter::Options noReadBack;
        noReadBack.verifyCopies = false;
        plain.push_back(seconds([&] {
            ok = ok &&
                 PackExporter::exportPack(clips, target, noReadBack, now, {}, {}, {}).has_value();
        }));

        fresh();
        byHand.push_back(seconds([&] {
            ok = ok && shell(QStringLiteral("cp -r '%1' '%2' && sync").arg(sources, copy));
        }));
        out << QStringLiteral("round %1: %2 / %3 s, %4 / %5 s, %6 / %7 s\n")
                   .arg(round + 1)
                   .arg(verified.back(), 0, 'f', 2)
                   .arg(byHandVerified.back(), 0, 'f', 2)
                   .arg(plain.back(), 0, 'f', 2)
                   .arg(byHand.back(), 0, 'f', 2)
                   .arg(verify.back(), 0, 'f', 2)
                   .arg(sha256Check.back(), 0, 'f', 2);
        out.flush();
        QDir(target).removeRecursively();
    }
    if (!ok) {
        out << "a step failed\n";
        return 1;
    }
    const auto line = [&](const char *ours, const std::vector<double> &a, const char *peer,
                          const std::vector<double> &b, double goal) {
        out << QStringLiteral("%1 %2 s  |  %3 %4 s  |  ratio %5 (goal <= %6)\n")
                   .arg(QLatin1String(ours))
                   .arg(median(a), 6, 'f', 2)
                   .arg(QLatin1String(peer))
                   .arg(median(b), 6, 'f', 2)
                   .arg(median(a) / median(b), 0, 'f', 3)
                   .arg(goal, 0, 'f', 2);
    };
    out << QStringLiteral("pack of %1 files, %2 MB, %3 rounds, medians; %4 cores\n")
               .arg(clips.size())
               .arg(totalMb)
               .arg(rounds)
               .arg(QThread::idealThreadCount());
    line("export, read-back:   ", verified, "cp -r + sync + sha256sum:", byHandVerified, 0.9);
    line("export, no read-back:", plain, "cp -r + sync:            ", byHand, 1.1);
    line("verify:              ", verify, "sha256sum -c:            ", sha256Check, 0.7);
    return 0;
}
