#pragma once

#include "result.h"

#include <QString>

// The few file-system questions every layer asks, answered with the system's own reasons.
namespace FileSystem {

// The finding text for a pipe, a socket or a device node where a media file was expected.
QString notRegularText();

// The system's description of an errno value ("Permission denied", "Read-only file system").
QString errorText(int code);

// True for a FIFO, a socket or a device node, links followed. Opening a FIFO for reading
// blocks until a writer comes, and a device can hand out bytes for ever, so nothing that reads
// media may open one. A missing path or a folder is not special: its opener says what is wrong.
bool isSpecial(const QString &path);

// One look at `path`, links followed: its size (0 when it cannot be looked at), whether it is
// special as above, and whether it is a folder. For callers that want more than one of these,
// at the price of one system call.
struct Look {
    qint64 size = 0;
    bool special = false;
    bool folder = false;
    bool found = false;
    qint64 modifiedNs = 0; // since the epoch
};
Look look(const QString &path);

// open(2) for reading that never opens a special file, and cannot block on a FIFO swapped in
// after the check: the descriptor is opened non-blocking and kept only when it is a regular
// file. -1 with errno set otherwise (ENODEV for something that is not a regular file).
int openForReading(const QString &path);

// Creates `path` and its missing parents with `mode` (less the umask); an existing folder is no
// failure. The error says "Could not create the folder (reason)" with the system's reason, and
// carries the path.
Status makeFolders(const QString &path, unsigned mode = 0777);

} // namespace FileSystem
