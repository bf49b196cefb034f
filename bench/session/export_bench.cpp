// Export of a 2 GB pack next to `cp -r` of the same files, measured in the same run.
// Both include flushing to disk, since the export flushes before it reports the pack saved.
//
//   bench_export [WORK_FOLDER] [TOTAL_MB]
#include "output/packexporter.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTextStream>

#include <cstdio>

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

void dropCaches()
{
    // Both sides start from the same cache state: the sources are in the page cache (they
    // were just written or read), the targets are fresh folders.
    QProcess::execute(QStringLiteral("sync"), {});
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QString work = argc > 1 ? QString::fromLocal8Bit(argv[1])
                                  : QDir::temp().filePath(QStringLiteral("cuebox-export-bench"));
    const qint64 totalMb = argc > 2 ? QString::fromLocal8Bit(argv[2]).toLongLong() : 2048;
    const QString sources = QDir(work).filePath(QStringLiteral("sources"));
    const QList<MediaClip> clips = makeSources(sources, totalMb);
    QTextStream out(stdout);

    double exportSeconds = 0;
    double copySeconds = 0;
    const int kRounds = 2;
    for (int round = 0; round < kRounds; ++round) {
        const QString exportTarget = QDir(work).filePath(QStringLiteral("export%1").arg(round));
        const QString copyTarget = QDir(work).filePath(QStringLiteral("copy%1").arg(round));
        QDir(exportTarget).removeRecursively();
        QDir(copyTarget).removeRecursively();
        QDir().mkpath(exportTarget);
        dropCaches();

        QElapsedTimer timer;
        timer.start();
        const Result<QString> pack = PackExporter::exportPack(
            clips, exportTarget, {}, QDateTime::currentDateTimeUtc(), {}, {}, {});
        exportSeconds += timer.nsecsElapsed() / 1e9;
        if (!pack) {
            out << "export failed: " << pack.error().message << "\n";
            return 1;
        }
        dropCaches();

        timer.restart();
        QProcess::execute(QStringLiteral("sh"),
                          {QStringLiteral("-c"),
                           QStringLiteral("cp -r '%1' '%2' && sync").arg(sources, copyTarget)});
        copySeconds += timer.nsecsElapsed() / 1e9;
        QDir(exportTarget).removeRecursively();
        QDir(copyTarget).removeRecursively();
    }
    exportSeconds /= kRounds;
    copySeconds /= kRounds;
    out << QStringLiteral("pack of %1 files, %2 MB\n").arg(clips.size()).arg(totalMb);
    out << QStringLiteral("cuebox export (with flush): %1 s\n").arg(exportSeconds, 0, 'f', 2);
    out << QStringLiteral("cp -r + sync:               %1 s\n").arg(copySeconds, 0, 'f', 2);
    out << QStringLiteral("ratio export / cp -r:       %1 (goal <= 1.10)\n")
               .arg(exportSeconds / copySeconds, 0, 'f', 3);
    return 0;
}
