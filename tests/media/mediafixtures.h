#pragma once
// Media made by fixtures/make_fixtures.sh before these tests run (CTest fixture "media"), and
// ffprobe as the independent reader the probe has to agree with.
#include <QDir>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QString>

#include <gtest/gtest.h>

namespace MediaFixtures {

inline QString path(const QString &name)
{
    return QDir(QStringLiteral(CUEBOX_MEDIA_FIXTURES)).filePath(name);
}

// ffprobe's report of a file: {"format": {...}, "streams": [...]}; empty when it fails.
inline QJsonObject ffprobe(const QString &file)
{
    QProcess process;
    process.start("ffprobe", {"-v", "error", "-of", "json", "-show_format", "-show_streams", file});
    if (!process.waitForFinished(20'000) || process.exitCode() != 0)
        return {};
    return QJsonDocument::fromJson(process.readAllStandardOutput()).object();
}

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
