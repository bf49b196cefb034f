#pragma once

#include "mediaclip.h"

#include <QList>
#include <QString>

#include <optional>

// Arena names: zero-padded cue number, optional show prefix, cleaned file stem.
namespace ArenaNamer {

inline constexpr qsizetype kMaxLength = 48; // user-perceived characters

// Letters, marks and numbers of any script survive; everything else becomes one "_";
// lower-cased; at most 48 grapheme clusters. May be empty.
QString sanitize(const QString &text);

// "01_show_intro" for index 1, "intro.mov", prefix "show", zero padding on.
QString makeName(qint64 index, const QString &fileName, const QString &prefix, bool zeroPad);

// The same name from parts already cleaned, for callers that name many clips under one
// prefix: `cleanStem` is sanitize() of the file's stem, `cleanPrefix` is cleanPrefix(prefix).
QString composeName(qint64 index, const QString &cleanStem,
                    const std::optional<QString> &cleanPrefix, bool zeroPad);
// The prefix as names carry it: none for a blank prefix, else sanitized (which can be empty:
// a prefix of only punctuation still takes the prefixed form, with a doubled separator).
std::optional<QString> cleanPrefix(const QString &prefix);

// "01" or "1".
QString cueNumber(qint64 index, bool zeroPad);

// Cue numbers 1…n in list order and names rebuilt from the original file names.
void reindex(QList<MediaClip> &clips, const QString &prefix, bool zeroPad);

} // namespace ArenaNamer
