#pragma once
// What several benchmarks share: a folder of distinct short movies and the bare header-open
// floor they are measured against.
#include "media/ffmpeg/avhandles.h"
#include "media/ffmpeg/vectorstate.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStringList>

namespace BenchMedia {

// One short clip made by the ffmpeg CLI, then copied with a changed tail byte so that every
// file is distinct (no duplicates skew the fingerprints).
inline QStringList makeFiles(const QString &folder, int count)
{
    QDir().mkpath(folder);
    const QString seed = QDir(folder).filePath(QStringLiteral(".seed.mov"));
    if (!QFile::exists(seed)) {
        QProcess::execute(QStringLiteral("ffmpeg"),
                          {"-v", "error", "-y", "-f", "lavfi", "-i",
                           "testsrc=size=320x180:rate=25:duration=1", "-c:v", "libx264", "-pix_fmt",
                           "yuv420p", seed});
    }
    QFile seedFile(seed);
    seedFile.open(QIODevice::ReadOnly);
    const QByteArray bytes = seedFile.readAll();
    QStringList paths;
    for (int i = 0; i < count; ++i) {
        const QString path =
            QDir(folder).filePath(QStringLiteral("clip%1.mov").arg(i, 4, 10, QChar(u'0')));
        if (!QFile::exists(path)) {
            QFile file(path);
            file.open(QIODevice::WriteOnly);
            file.write(bytes);
            file.write(QByteArray::number(i)); // trailing bytes after the movie: ignored by readers
        }
        paths.append(path);
    }
    // A folder kept from a run with more files holds exactly `count` again: the benchmarks
    // ingest the whole folder.
    for (const QString &name : QDir(folder).entryList({QStringLiteral("clip*.mov")}, QDir::Files)) {
        if (!paths.contains(QDir(folder).filePath(name)))
            QFile::remove(QDir(folder).filePath(name));
    }
    return paths;
}

inline double headerOpenFloor(const QStringList &paths)
{
    QElapsedTimer timer;
    timer.start();
    for (const QString &path : paths) {
        AVFormatContext *raw = nullptr;
        const QByteArray local = QFile::encodeName(path);
        // The best any reader pays: Qt's string work just before can leave the vector state
        // dirty, which slows the demuxer's plain C code (the product clears it the same way).
        clearUpperVectorState();
        if (avformat_open_input(&raw, local.constData(), nullptr, nullptr) == 0)
            avformat_close_input(&raw);
    }
    return timer.nsecsElapsed() / 1e9;
}

} // namespace BenchMedia
