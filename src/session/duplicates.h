#pragma once

#include "model/mediaclip.h"

#include <QList>
#include <QUuid>

#include <optional>

// Duplicate marking and removal over a clip list, its selection and its counter. The session
// calls these on its own state; they need nothing else of it.
namespace Duplicates {

inline constexpr double kSoftRuleMinDuration = 0.4; // stills and blips never match by size

// Recomputes every clip's mark and duplicate finding; returns the number of marked clips.
qint64 markDuplicates(QList<MediaClip> &clips);

// Keeps the first clip of each group (by fingerprint, or soft key without one), fixes the
// selection, renumbers and renames, then marks again. Returns the new duplicate count.
qint64 removeDuplicatesKeepingFirst(QList<MediaClip> &clips, std::optional<QUuid> &selectedClipID,
                                    const QString &showPrefix, bool zeroPad);

} // namespace Duplicates
