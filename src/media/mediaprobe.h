#pragma once

#include <QString>

#include <optional>
#include <stop_token>

// The display transform of a video track: x' = a·x + c·y + tx, y' = b·x + d·y + ty.
struct DisplayMatrix {
    double a = 1, b = 0, c = 0, d = 1, tx = 0, ty = 0;
    friend bool operator==(const DisplayMatrix &, const DisplayMatrix &) = default;
};

// What the container says about a movie, load by load. When a load fails, `failedAt` names it,
// `errorText` carries the media library's own message, and every later field stays empty.
struct VideoFacts {
    enum class Stage { none, open, duration, tracks, naturalSize, transform, frameRate, formats };
    Stage failedAt = Stage::none;
    QString errorText;

    std::optional<double> duration; // seconds; absent when the container's value is not finite
    int videoTrackCount = 0;
    int audioTrackCount = 0;
    // First video track.
    std::optional<double> naturalWidth;
    std::optional<double> naturalHeight;
    std::optional<DisplayMatrix> transform;
    float nominalFrameRate = 0;            // 0 when unknown
    std::optional<quint32> videoCodecCode; // four-character code, most significant byte first
    bool hasAlpha = false;                 // its pixel format carries an alpha channel
    // First audio track.
    std::optional<quint32> audioCodecCode;
    // Stage traps of the first video track, from its header and sample timing.
    bool variableFrameRate = false;
    double averageFrameRate = 0; // frames per second over the timed frames; 0 when unknown
    bool interlaced = false;
    std::optional<QString> hdrTransfer; // "PQ" or "HLG"
};

// What an image file says about itself without decoding its pixels.
struct ImageFacts {
    bool opened = false;        // the file is an image the readers understand
    bool hasProperties = false; // its first image has readable properties
    std::optional<qint64> width;
    std::optional<qint64> height;
    bool hasAlpha = false; // an alpha channel with at least one pixel less than opaque
};

// The media layer. Implementations run on worker threads and must not touch QObjects; they
// never throw, and `stop` ends a slow open early (reported as a failure at the open).
class MediaProbe
{
public:
    virtual ~MediaProbe() = default;
    virtual VideoFacts probeVideo(const QString &path, std::stop_token stop) const = 0;
    virtual ImageFacts probeImage(const QString &path, std::stop_token stop) const = 0;
};
