#include "filestamp.h"

FileStamp FileStamp::of(const QString &path)
{
    return of(FileSystem::look(path));
}

FileStamp FileStamp::of(const FileSystem::Look &look)
{
    return look.found ? FileStamp{look.size, look.modifiedNs} : FileStamp{};
}
