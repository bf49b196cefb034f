#include "mediaclip.h"

#include "pathnames.h"

#include <cmath>

MediaClip MediaClip::forFile(const QString &path)
{
    MediaClip clip;
    clip.id = QUuid::createUuid();
    clip.sourceURL = QUrl::fromLocalFile(path);
    clip.originalName = PathNames::lastComponent(path);
    clip.arenaName = PathNames::deletingExtension(clip.originalName);
    return clip;
}

bool MediaClip::isImage() const
{
    return PathNames::isImage(sourcePath());
}

void MediaClip::takeProbedFields(const MediaClip &probed)
{
    fileSize = probed.fileSize;
    duration = probed.duration;
    width = probed.width;
    height = probed.height;
    frameRate = probed.frameRate;
    videoCodec = probed.videoCodec;
    audioCodec = probed.audioCodec;
    hasAudio = probed.hasAudio;
    hasAlpha = probed.hasAlpha;
    issues = probed.issues;
    isInspected = probed.isInspected;
}

ClipHealth MediaClip::health() const
{
    if (!isInspected)
        return ClipHealth::unknown;
    bool anyWarn = false;
    for (const ClipIssue &issue : issues) {
        if (issue.severity == ClipHealth::fail)
            return ClipHealth::fail;
        anyWarn = anyWarn || issue.severity == ClipHealth::warn;
    }
    return anyWarn ? ClipHealth::warn : ClipHealth::ok;
}

QString MediaClip::resolutionLabel() const
{
    if (!width || !height)
        return kDashLabel;
    return QString::number(*width) + QChar(0x00D7) + QString::number(*height);
}

QString MediaClip::durationLabel() const
{
    return formatDuration(duration);
}

QString formatFileSize(qint64 bytes, const QLocale &locale)
{
    return locale.formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

QString formatDuration(std::optional<double> seconds)
{
    // Beyond this a whole number of seconds no longer fits the integer type.
    constexpr double kLimit = 9.0e18;
    if (!seconds || !std::isfinite(*seconds) || *seconds < 0 || *seconds >= kLimit)
        return kDashLabel;
    const auto whole = static_cast<qint64>(std::round(*seconds));
    const qint64 minutes = whole / 60;
    const qint64 rest = whole % 60;
    QString text = QString::number(minutes) + u':';
    if (rest < 10)
        text += u'0';
    return text + QString::number(rest);
}

const QSet<QString> &MediaClip::videoExtensions()
{
    return PathNames::videoExtensions();
}

const QSet<QString> &MediaClip::imageExtensions()
{
    return PathNames::imageExtensions();
}

size_t qHash(const MediaClip &clip, size_t seed) noexcept
{
    QtPrivate::QHashCombine combine;
    auto optional = [&](const auto &value, const auto &fallback) {
        seed = combine(seed, value.has_value());
        seed = combine(seed, value.value_or(fallback));
    };
    seed = combine(seed, clip.id);
    seed = combine(seed, clip.sourceURL);
    seed = combine(seed, clip.originalName);
    seed = combine(seed, clip.arenaName);
    seed = combine(seed, clip.cueIndex);
    seed = combine(seed, clip.fileSize);
    optional(clip.duration, 0.0);
    optional(clip.width, qint64(0));
    optional(clip.height, qint64(0));
    optional(clip.frameRate, 0.0);
    optional(clip.videoCodec, QString());
    optional(clip.audioCodec, QString());
    seed = combine(seed, clip.hasAudio);
    seed = combine(seed, clip.hasAlpha);
    seed = combine(seed, clip.isInspected);
    for (const ClipIssue &issue : clip.issues)
        seed = combine(seed, qHash(issue));
    optional(clip.contentFingerprint, QString());
    seed = combine(seed, clip.isDuplicate);
    return seed;
}
