#pragma once

#include "model/mediaclip.h"
#include "model/result.h"
#include "verifiedcopy.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

#include <functional>
#include <stop_token>

// The exported pack folder: media/ with every clip under its Arena name, cues.csv,
// manifest.json and README.txt. Runs on a worker thread; knows nothing of the session.
namespace PackExporter {

struct Options {
    bool copyMedia = true;
    bool includeCSV = true;
    bool includeManifest = true;
    QString showPrefix;
    // Read every copy back from the device and compare it with its source.
    bool verifyCopies = true;
};

// Fixed texts of the export's own failures (the file system's texts pass through unchanged).
inline const QString kEmptyText = QString::fromUtf8("Нет клипов для экспорта");
inline const QString kCancelledText = QString::fromUtf8("Отменено");
QString description(const Error &error);

struct Progress {
    qint64 index = 0; // 1-based clip being copied
    qint64 total = 0;
    QString fileName;
    qint64 bytesDone = 0;  // copied plus read back
    qint64 bytesTotal = 0; // twice the media's size when the copies are read back
};

using CopyFile = ::CopyFile;

// "Cuebox_" [sanitized prefix "_"] stamp.
QString folderName(const QString &showPrefix, const QDateTime &now);
// The file a clip gets under media/: Arena name plus the source's extension in its own case.
QString mediaFileName(const MediaClip &clip);
QByteArray cuesCsv(const QList<MediaClip> &clips);
QByteArray readme();

// Returns the pack folder, which ends with checksums.sha256 over everything written.
// `copy` may be empty (copyFileHashing is used).
Result<QString> exportPack(const QList<MediaClip> &clips, const QString &to, const Options &options,
                           const QDateTime &now, const CopyFile &copy,
                           const std::function<void(const Progress &)> &progress,
                           std::stop_token stop);

} // namespace PackExporter
