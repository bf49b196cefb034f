#pragma once

#include "jsonvalue.h"
#include "model/mediaclip.h"
#include "model/result.h"

#include <QDateTime>
#include <QList>

// manifest.json: the machine-readable record of an exported pack.
namespace Manifest {

inline const QString kAppName = QStringLiteral("Cuebox");
inline const QString kFormatVersion = QStringLiteral("0.1.0");

JsonValue entry(const MediaClip &clip);
JsonValue build(const QList<MediaClip> &clips, const QString &showPrefix,
                const QDateTime &createdAt);

// Writes `folder`/manifest.json directly, in one piece.
Status write(const QList<MediaClip> &clips, const QString &folder, const QString &showPrefix,
             const QDateTime &createdAt);

} // namespace Manifest
