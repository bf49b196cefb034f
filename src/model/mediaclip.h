#pragma once

#include "clipissue.h"

#include <QList>
#include <QLocale>
#include <QSet>
#include <QUrl>
#include <QUuid>

#include <optional>

// One media file of the pack: where it is, what it is called, what the probe found.
struct MediaClip {
    QUuid id;
    QUrl sourceURL;
    QString originalName;           // file name with extension, as found on disk
    QString arenaName;              // name in Arena, without extension
    qint64 cueIndex = 0;            // 1-based; 0 until named
    qint64 fileSize = 0;            // bytes; 0 when unknown
    std::optional<double> duration; // seconds; 0 for stills
    std::optional<qint64> width;    // display size, rotation applied
    std::optional<qint64> height;
    std::optional<double> frameRate;
    std::optional<QString> videoCodec; // four-character code, or the upper-cased image extension
    std::optional<QString> audioCodec;
    bool hasAudio = false;
    bool hasAlpha = false; // transparency the picture uses (wanted: not a finding)
    bool isInspected = false;
    QList<ClipIssue> issues;
    std::optional<QString> contentFingerprint;
    bool isDuplicate = false;

    // A clip for a file, not yet inspected: base name as Arena name, fresh id.
    static MediaClip forFile(const QString &path);

    QString sourcePath() const { return sourceURL.toLocalFile(); }
    bool isImage() const; // by the source's extension, whatever the probe said

    // Takes everything a probe found (size, duration, geometry, codecs, audio, findings) from
    // `probed`, keeping this clip's identity, names, cue, fingerprint and duplicate mark.
    void takeProbedFields(const MediaClip &probed);

    ClipHealth health() const;
    QString resolutionLabel() const;
    QString durationLabel() const;

    static const QSet<QString> &videoExtensions();
    static const QSet<QString> &imageExtensions();

    friend bool operator==(const MediaClip &, const MediaClip &) = default;
};

size_t qHash(const MediaClip &clip, size_t seed = 0) noexcept;

// "m:ss" of whole seconds (halves away from zero, minutes not wrapped); "—" when it cannot be
// shown. Shared by the table, the cue sheet and the command line.
QString formatDuration(std::optional<double> seconds);
// A file size in decimal units with one decimal, as file managers show sizes ("1.5 MB",
// "64 bytes"). The window uses the user's locale, the command line the C locale.
QString formatFileSize(qint64 bytes, const QLocale &locale);
inline const QString kDashLabel = QStringLiteral("\u2014");
