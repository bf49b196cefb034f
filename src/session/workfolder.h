#pragma once

#include "model/result.h"

#include <QString>

namespace WorkFolder {

// Where stripped clips are written: $XDG_CACHE_HOME/Cuebox/StripAudio, or ~/.cache/… when the
// variable is unset or not absolute. Not the runtime folder: that lives in memory and is far
// too small for video.
QString stripAudioPath();

// Creates the strip-audio folder (and Cuebox beside it) private to this user, mode 0700, and
// tightens one that is too open. A folder that another user owns, or a link in its place, is
// refused: whoever owns it could read the stripped media or swap them under the pack.
Result<QString> prepareStripAudio();

} // namespace WorkFolder
