#pragma once
// What the tests that write packs share: one fixed "now", and inspected clips over source files
// made for the test.
#include "model/mediaclip.h"
#include "support/files.h"

#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <utime.h>

inline const QDateTime kNow(QDate(2026, 11, 16), QTime(21, 42, 48), QTimeZone::utc());

// Sources in one temporary folder, and an empty one to write packs into.
class PackSources : public ::testing::Test
{
protected:
    // A source with a mode and a modification time that a fresh copy would not get.
    QString source(const QString &relative, const QByteArray &bytes)
    {
        const QString path = writeFile(m_sources.filePath(relative), bytes);
        ::chmod(QFile::encodeName(path).constData(), 0640);
        const struct utimbuf old {
            1600000000, 1600000000 + m_files++
        };
        ::utime(QFile::encodeName(path).constData(), &old);
        return path;
    }
    MediaClip clip(const QString &relative, const QByteArray &bytes, const QString &arenaName,
                   qint64 cue)
    {
        MediaClip c = MediaClip::forFile(source(relative, bytes));
        c.arenaName = arenaName;
        c.cueIndex = cue;
        c.isInspected = true;
        c.fileSize = bytes.size();
        return c;
    }
    QTemporaryDir m_sources;
    QTemporaryDir m_target;
    int m_files = 0;
};
