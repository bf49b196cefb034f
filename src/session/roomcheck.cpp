#include "roomcheck.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>

#include <sys/statvfs.h>

namespace RoomCheck {

namespace {

constexpr qint64 kBlock = 4096;
constexpr qint64 kTextFiles = 1 << 20; // cues.csv, manifest.json, README.txt, checksums

// Data rates of the targets in bits per pixel per frame, so that a clip's size and frame rate
// scale them. ProRes: Apple's nominal rates at 1920×1080 and 29.97 fps (ProRes 422 147 Mbit/s,
// 422 LT 102 Mbit/s); our fixed quantisers land below them on show graphics and above them
// only on heavy grain. H.264 at CRF 17 has no nominal rate: 0.25 bit per pixel (15.5 Mbit/s
// at 1080p30) is above what it writes for graphics and below extreme grain. HAP stores DXT
// textures, 4 bits per pixel (HAP) or 8 (HAP Alpha, HAP Q), which snappy shrinks only a little on
// real footage: the raw texture size is the estimate.
double bitsPerPixel(ArenaConvertFormat format)
{
    switch (format) {
    case ArenaConvertFormat::hap:
        return 4.0;
    case ArenaConvertFormat::hapAlpha:
    case ArenaConvertFormat::hapQ:
        return 8.0;
    case ArenaConvertFormat::proRes422LT:
        return 102e6 / (1920.0 * 1080.0 * 29.97);
    case ArenaConvertFormat::h264:
        return 0.25;
    case ArenaConvertFormat::proRes422:
        break;
    }
    return 147e6 / (1920.0 * 1080.0 * 29.97);
}

// Kept audio: 16-bit stereo PCM at 48 kHz in ProRes movies, 2 × 128 kbit/s AAC in H.264.
double audioBitsPerSecond(ArenaConvertFormat format)
{
    return format == ArenaConvertFormat::h264 ? 256e3 : 1536e3;
}

qint64 roundUp(qint64 bytes)
{
    return (qMax<qint64>(0, bytes) + kBlock - 1) / kBlock * kBlock;
}

} // namespace

std::optional<qint64> freeBytes(const QString &folder)
{
    struct statvfs info {
    };
    if (::statvfs(QFile::encodeName(folder).constData(), &info) != 0)
        return std::nullopt;
    return qint64(info.f_bavail) * qint64(info.f_frsize);
}

qint64 copyBytes(const QStringList &files)
{
    qint64 total = kTextFiles;
    for (const QString &file : files)
        total += roundUp(QFileInfo(file).size()) + kBlock;
    return total;
}

qint64 conversionBytes(const QList<MediaClip> &clips, const ConvertOptions &options)
{
    double total = kTextFiles;
    for (const MediaClip &clip : clips) {
        const double width = double(clip.width.value_or(1920));
        const double height = double(clip.height.value_or(1080));
        if (clip.isImage()) {
            // A PNG of 8-bit RGBA never needs much more than the raw pixels.
            total += width * height * 4.0 * 1.01 + 65536;
            continue;
        }
        const double seconds =
            clip.duration && std::isfinite(*clip.duration) ? qMax(0.0, *clip.duration) : 0.0;
        const double fps = clip.frameRate && *clip.frameRate > 0 ? *clip.frameRate : 30.0;
        double bits = bitsPerPixel(options.format) * width * height * fps * seconds;
        if (clip.hasAudio && !options.dropAudio)
            bits += audioBitsPerSecond(options.format) * seconds;
        total += bits / 8.0 * 1.01 + 65536; // container overhead and the movie header
    }
    return qint64(std::min(total, 9.0e18));
}

std::optional<Shortfall> check(const QString &folder, qint64 neededBytes,
                               const FreeSpace &freeSpace)
{
    const std::optional<qint64> available = freeSpace ? freeSpace(folder) : freeBytes(folder);
    if (!available || *available >= neededBytes)
        return std::nullopt;
    return Shortfall{folder, neededBytes, *available};
}

} // namespace RoomCheck
