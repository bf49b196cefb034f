#pragma once
// Whole files written and read in one call, for tests that lay out or check folders.
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

// Writes `bytes` to `path`, making its folder first; returns `path`.
inline QString writeFile(const QString &path, const QByteArray &bytes,
                         QIODevice::OpenMode mode = QIODevice::WriteOnly)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(mode) || file.write(bytes) != bytes.size())
        ADD_FAILURE() << "cannot write " << path.toStdString();
    return path;
}

// A file's bytes, or "<missing>" when it cannot be read.
inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}
