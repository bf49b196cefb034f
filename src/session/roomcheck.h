#pragma once

#include "media/convert/convertformat.h"
#include "model/mediaclip.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

// Room first: what an export, a backup or a conversion will write is compared with the free
// space of its target before anything is written, so a stick that is too small is found out
// at once and not after gigabytes of copying.
namespace RoomCheck {

// Bytes the calling user may still write below `folder`; empty when the system cannot say.
using FreeSpace = std::function<std::optional<qint64>(const QString &folder)>;
std::optional<qint64> freeBytes(const QString &folder);

// Copies of these files: their sizes, each rounded up to whole blocks, plus room for the
// folder entries and the text files written beside them.
qint64 copyBytes(const QStringList &files);
// What converting these clips is expected to write, from their duration and the format.
qint64 conversionBytes(const QList<MediaClip> &clips, const ConvertOptions &options);

struct Shortfall {
    QString target;
    qint64 neededBytes = 0;
    qint64 freeBytes = 0;
};
// Empty when `neededBytes` fits, or when the free space cannot be learnt (the write itself
// will then say what went wrong).
std::optional<Shortfall> check(const QString &folder, qint64 neededBytes,
                               const FreeSpace &freeSpace);

} // namespace RoomCheck
