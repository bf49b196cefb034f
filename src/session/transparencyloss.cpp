#include "transparencyloss.h"

#include <algorithm>

qint64 clipsLosingTransparency(const QList<MediaClip> &clips, ArenaConvertFormat format,
                               bool onlyProblems)
{
    if (canKeepAlpha(format))
        return 0;
    return std::count_if(clips.cbegin(), clips.cend(), [onlyProblems](const MediaClip &clip) {
        const ClipHealth health = clip.health();
        const bool selected =
            !onlyProblems || health == ClipHealth::warn || health == ClipHealth::fail;
        return selected && clip.hasAlpha && !clip.isImage();
    });
}
