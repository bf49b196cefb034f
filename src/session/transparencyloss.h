#pragma once

#include "media/convert/convertformat.h"
#include "model/mediaclip.h"

#include <QList>

// How many clips a pack conversion would rob of their transparency: videos with an alpha
// channel going to a format that has none. Counted over the clips the batch would convert
// (only the warn and fail clips when `onlyProblems`); stills stay RGBA PNG and never count.
// The studio and the command line say it before the run; the run itself goes on.
qint64 clipsLosingTransparency(const QList<MediaClip> &clips, ArenaConvertFormat format,
                               bool onlyProblems);
