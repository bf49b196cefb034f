#pragma once

#include "model/result.h"

#include <QByteArray>
#include <QString>

// Writes the whole file under a temporary name, flushes it to disk, renames it over the
// target and flushes the folder, so a crash leaves either the old file or the new one.
Status writeFileAtomically(const QString &path, const QByteArray &bytes);

// Flushes a folder's entries (new names, renames) to disk.
void syncFolder(const QString &folder);
