#pragma once

#include <QList>
#include <QStringList>
#include <QUrl>

// Which files become clips. Looks only at names and folder structure; never opens a file.
namespace Discovery {

// One location expanded: a media file stands for itself; a folder for every media file below
// it (hidden names, starting with ".", and everything under them left out; unreadable folders
// skipped; folders reached twice, through links or loops, walked once). Nothing for a path that
// does not exist or is not media.
QStringList collectMedia(const QString &path);

// The absolute path with "." and ".." removed and symbolic links resolved, as far as the
// path exists (a dangling link keeps its own name).
QString normalizedPath(const QString &path);

// File-browser order: case-insensitive, digit runs compared by value (clip2 before clip10).
bool fileBrowserLess(const QString &a, const QString &b);

// The discovery step over a drop: every location collected in order, normalised, repeats
// dropped (first wins), sorted by file name in file-browser order (stable), and the files
// the pack already holds (`existing`, compared after normalising) left out.
QStringList freshMedia(const QStringList &dropped, const QStringList &existing);

} // namespace Discovery
