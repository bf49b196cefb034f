#include "filestamp.h"

#include <QFile>

#include <sys/stat.h>

FileStamp FileStamp::of(const QString &path)
{
    struct stat info {
    };
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return {};
    return {qint64(info.st_size),
            qint64(info.st_mtim.tv_sec) * 1'000'000'000 + info.st_mtim.tv_nsec};
}
