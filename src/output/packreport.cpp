#include "packreport.h"

PackReport PackReport::from(const QList<MediaClip> &clips)
{
    PackReport report;
    report.total = clips.size();
    for (const MediaClip &clip : clips) {
        report.totalBytes += clip.fileSize;
        switch (clip.health()) {
        case ClipHealth::ok:
            ++report.okCount;
            break;
        case ClipHealth::warn:
            ++report.warnCount;
            break;
        case ClipHealth::fail:
            ++report.failCount;
            break;
        case ClipHealth::unknown:
            ++report.unknownCount;
            break;
        }
    }
    return report;
}
