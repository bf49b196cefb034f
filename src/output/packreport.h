#pragma once

#include "model/mediaclip.h"

#include <QList>

// Six counts of a clip list; every clip counts in exactly one of the four health counts.
struct PackReport {
    qint64 total = 0;
    qint64 okCount = 0;
    qint64 warnCount = 0;
    qint64 failCount = 0;
    qint64 unknownCount = 0;
    qint64 totalBytes = 0;

    static PackReport from(const QList<MediaClip> &clips);
    friend bool operator==(const PackReport &, const PackReport &) = default;
};
