#pragma once

#include "filesystem.h"

#include <QString>

#include <optional>

// What a look at a file without opening it tells: whether it is there, its size and when it
// was last written. Two equal stamps a while apart mean nobody wrote to the file in between.
struct FileStamp {
    qint64 size = -1;                 // bytes; -1 when the file is not there
    std::optional<qint64> modifiedNs; // since the epoch, in nanoseconds

    static FileStamp of(const QString &path);
    static FileStamp of(const FileSystem::Look &look);
    bool exists() const { return size >= 0; }

    friend bool operator==(const FileStamp &, const FileStamp &) = default;
};
