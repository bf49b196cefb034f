#pragma once

#include <QSet>
#include <QString>

// Names only: nothing here touches the disk.
namespace PathNames {
// The last path component.
QString lastComponent(const QString &path);
// The text after the last dot of the last component, in its own letter case; empty when the
// component has no dot or starts with its only dot (".profile").
QString extension(const QString &path);
// The last component without its extension (archive.tar.gz → archive.tar).
QString deletingExtension(const QString &name);

const QSet<QString> &videoExtensions();
const QSet<QString> &imageExtensions();
bool isMedia(const QString &path);
bool isImage(const QString &path);
} // namespace PathNames
