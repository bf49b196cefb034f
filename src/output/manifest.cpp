#include "manifest.h"

#include "jsonwriter.h"
#include "timestamp.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace Manifest {

JsonValue entry(const MediaClip &clip)
{
    JsonValue::Object object;
    object.emplace(QStringLiteral("cue"), clip.cueIndex);
    object.emplace(QStringLiteral("arenaName"), clip.arenaName);
    object.emplace(QStringLiteral("originalName"), clip.originalName);
    object.emplace(QStringLiteral("health"), rawValue(clip.health()));
    putOptional(object, QStringLiteral("width"), clip.width);
    putOptional(object, QStringLiteral("height"), clip.height);
    putOptional(object, QStringLiteral("duration"), clip.duration);
    putOptional(object, QStringLiteral("videoCodec"), clip.videoCodec);
    JsonValue::Array issues;
    for (const ClipIssue &issue : clip.issues)
        issues.append(rawValue(issue.kind));
    object.emplace(QStringLiteral("issues"), std::move(issues));
    return object;
}

JsonValue build(const QList<MediaClip> &clips, const QString &showPrefix,
                const QDateTime &createdAt)
{
    JsonValue::Array entries;
    entries.reserve(clips.size());
    for (const MediaClip &clip : clips)
        entries.append(entry(clip));
    JsonValue::Object document;
    document.emplace(QStringLiteral("app"), kAppName);
    document.emplace(QStringLiteral("version"), kFormatVersion);
    document.emplace(QStringLiteral("createdAt"), isoTimestamp(createdAt));
    document.emplace(QStringLiteral("showPrefix"), showPrefix);
    document.emplace(QStringLiteral("clips"), std::move(entries));
    return document;
}

Status write(const QList<MediaClip> &clips, const QString &folder, const QString &showPrefix,
             const QDateTime &createdAt)
{
    Result<QByteArray> bytes = encodeJson(build(clips, showPrefix, createdAt));
    if (!bytes)
        return bytes.error();
    const QString path = QDir(folder).filePath(QStringLiteral("manifest.json"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(*bytes) != bytes->size() || !file.flush() || ::fsync(file.handle()) != 0) {
        return Error{Error::Kind::WriteFailed, file.errorString(), path, 0};
    }
    return Done{};
}

} // namespace Manifest
