#pragma once
// Media made by the fixture scripts before these tests run (CTest fixture "media"), and the
// ffmpeg CLI (ffprobe, ffmpeg) as the independent reader the product has to agree with. The
// converter and stage-trap tests read their own folders through the same tools.
#include "support/files.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QString>

#include <gtest/gtest.h>

#include <algorithm>

namespace MediaFixtures {

#ifdef CUEBOX_MEDIA_FIXTURES
inline QString path(const QString &name)
{
    return QDir(QStringLiteral(CUEBOX_MEDIA_FIXTURES)).filePath(name);
}
#endif

struct Run {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

inline Run run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    Run result;
    if (!process.waitForFinished(60'000))
        return result;
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    return result;
}

// ffprobe's report of a file: {"format": {...}, "streams": [...]}; empty when it fails.
inline QJsonObject ffprobe(const QString &file)
{
    const Run probed =
        run("ffprobe", {"-v", "error", "-of", "json", "-show_format", "-show_streams", file});
    if (probed.exitCode != 0)
        return {};
    return QJsonDocument::fromJson(probed.out).object();
}

inline QList<QJsonObject> streams(const QJsonObject &report, QStringView type)
{
    QList<QJsonObject> found;
    for (const QJsonValue &stream : report[u"streams"].toArray()) {
        if (stream[u"codec_type"].toString() == type)
            found.append(stream.toObject());
    }
    return found;
}

// ffprobe states numbers as text.
inline double number(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString().toDouble();
}

// The presentation times of a track's packets, in seconds, sorted.
inline QList<double> packetTimes(const QString &file, const QString &selector)
{
    const Run probed = run("ffprobe", {"-v", "error", "-select_streams", selector, "-show_entries",
                                       "packet=pts_time", "-of", "csv=p=0", file});
    QList<double> times;
    for (const QByteArray &line : probed.out.split('\n')) {
        // Side data of a packet can follow its time on the same line.
        const QByteArray time = line.split(',').front().trimmed();
        if (!time.isEmpty())
            times.append(time.toDouble());
    }
    std::sort(times.begin(), times.end());
    return times;
}

// FFmpeg decodes every stream of the file to its end without a single complaint.
inline ::testing::AssertionResult decodesCleanly(const QString &file)
{
    const Run decoded = run("ffmpeg", {"-nostdin", "-v", "error", "-i", file, "-f", "null", "-"});
    if (decoded.exitCode == 0 && decoded.err.isEmpty())
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << "ffmpeg exit " << decoded.exitCode << ": " << decoded.err.toStdString();
}

// An image's samples as one run of bytes; for formats whose lines need no padding.
inline QByteArray samples(const QImage &image)
{
    return QByteArray(reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes());
}

// Mean absolute difference of two equally long runs of 8-bit samples.
inline double meanDifference(const QByteArray &a, const QByteArray &b)
{
    qint64 total = 0;
    for (qsizetype i = 0; i < a.size(); ++i)
        total += std::abs(int(quint8(a[i])) - int(quint8(b[i])));
    return double(total) / double(a.size());
}

// A file's bytes and modification time, to prove that reading it left it alone.
struct Snapshot {
    QByteArray sha256;
    QDateTime modified;
    qint64 size = -1;

    static Snapshot of(const QString &file)
    {
        const QFileInfo info(file);
        return {QCryptographicHash::hash(readFile(file), QCryptographicHash::Sha256),
                info.lastModified(), info.size()};
    }
    friend bool operator==(const Snapshot &, const Snapshot &) = default;
};

// The colour of a pixel, reduced to which of red, green and blue dominates.
inline char dominant(const QImage &image, int x, int y)
{
    const QColor c = image.pixelColor(x, y);
    if (c.red() > 150 && c.green() < 100 && c.blue() < 100)
        return 'r';
    if (c.blue() > 150 && c.red() < 100 && c.green() < 100)
        return 'b';
    if (c.green() > 150 && c.red() < 100 && c.blue() < 100)
        return 'g';
    return '?';
}

} // namespace MediaFixtures
