#pragma once

#include <QString>

// Files that a reader ahead of the probe has opened already, lent to the probe and the
// fingerprint of the same path so that neither opens the file again. On a network share or a
// USB disk an open costs as much as a read: paying it once, ahead of time and in parallel with
// other files, is most of what there is to win.
//
// A holder calls `hold` once per path and `release` when its batch ends; anyone may `borrow`.
namespace HeldFiles {

// Takes ownership of `fd`, an open, read-only descriptor of the regular file at `path`.
void hold(const QString &path, int fd);
// A new descriptor (a dup) of the held file, or -1 when nobody holds `path`. The caller closes
// it. A dup shares the file position with the holder's: read it with pread only.
int borrow(const QString &path);
// Whether `path` is held: then it was a regular file when the holder opened it.
bool holds(const QString &path);
// Closes the held descriptor of `path`, if any.
void release(const QString &path);

} // namespace HeldFiles
