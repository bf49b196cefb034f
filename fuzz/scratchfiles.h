#pragma once
// A folder for one fuzzing run, in memory where the system has one. Each input is written to
// the same few names, so the media layer meets the bytes as a file, as it does in the product.
#include <QDir>
#include <QFile>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <unistd.h>

class ScratchFiles
{
public:
    ScratchFiles()
    {
        const QString base = QDir(QStringLiteral("/dev/shm")).exists() ? QStringLiteral("/dev/shm")
                                                                       : QDir::tempPath();
        m_folder = QStringLiteral("%1/cuebox_fuzz_%2").arg(base).arg(::getpid());
        QDir().mkpath(m_folder);
    }
    ~ScratchFiles() { QDir(m_folder).removeRecursively(); }

    // The bytes as a file called `name` in the folder; empty when it cannot be written.
    QString write(const QString &name, const uint8_t *data, size_t size) const
    {
        const QString path = m_folder + u'/' + name;
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return {};
        if (file.write(reinterpret_cast<const char *>(data), static_cast<qint64>(size)) !=
            static_cast<qint64>(size))
            return {};
        return path;
    }

private:
    QString m_folder;
};
