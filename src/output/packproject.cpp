#include "packproject.h"

#include "atomicfile.h"
#include "jsonwriter.h"
#include "model/arenanamer.h"
#include "timestamp.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace PackProject {

namespace {

constexpr qint64 kMaxProjectBytes = 256 << 20; // far beyond any real pack; refuses absurd files

JsonValue encodeClip(const PackProjectClip &clip)
{
    JsonValue::Object object;
    object.emplace(QStringLiteral("id"), clip.id.toString(QUuid::WithoutBraces).toUpper());
    object.emplace(QStringLiteral("path"), clip.path);
    object.emplace(QStringLiteral("originalName"), clip.originalName);
    object.emplace(QStringLiteral("arenaName"), clip.arenaName);
    object.emplace(QStringLiteral("cueIndex"), clip.cueIndex);
    return object;
}

// Strict readers: a missing key or a value of the wrong type makes the whole file unreadable.
struct Reader {
    const QJsonObject &object;
    bool ok = true;

    QJsonValue need(const char *key, QJsonValue::Type type)
    {
        const QJsonValue value = object.value(QLatin1String(key));
        if (value.type() != type)
            ok = false;
        return value;
    }
    QString text(const char *key) { return need(key, QJsonValue::String).toString(); }
    bool flag(const char *key) { return need(key, QJsonValue::Bool).toBool(); }
    qint64 integer(const char *key)
    {
        const double value = need(key, QJsonValue::Double).toDouble();
        if (!std::isfinite(value) || value != std::floor(value) || std::fabs(value) > 9e15) {
            ok = false;
            return 0;
        }
        return static_cast<qint64>(value);
    }
};

std::optional<PackProjectClip> decodeClip(const QJsonValue &value)
{
    if (!value.isObject())
        return std::nullopt;
    const QJsonObject object = value.toObject();
    Reader r{object};
    PackProjectClip clip;
    clip.id = QUuid::fromString(r.text("id"));
    clip.path = r.text("path");
    clip.originalName = r.text("originalName");
    clip.arenaName = r.text("arenaName");
    clip.cueIndex = r.integer("cueIndex");
    if (object.contains(QLatin1String("bookmark"))) {
        const QJsonValue bookmark = object.value(QLatin1String("bookmark"));
        if (!bookmark.isString())
            return std::nullopt;
        clip.bookmark = QByteArray::fromBase64(bookmark.toString().toLatin1());
    }
    if (!r.ok || clip.id.isNull())
        return std::nullopt;
    return clip;
}

} // namespace

QString proposedFileName(const QString &showPrefix)
{
    if (showPrefix.isEmpty())
        return kDefaultFileName;
    return ArenaNamer::sanitize(showPrefix) + QStringLiteral(".cuebox.json");
}

QByteArray encode(const PackProjectFile &file)
{
    JsonValue::Array clips;
    for (const PackProjectClip &clip : file.clips)
        clips.append(encodeClip(clip));
    JsonValue::Object document;
    document.emplace(QStringLiteral("version"), file.version);
    document.emplace(QStringLiteral("showPrefix"), file.showPrefix);
    document.emplace(QStringLiteral("zeroPad"), file.zeroPad);
    document.emplace(QStringLiteral("preferredWidth"), file.preferredWidth);
    document.emplace(QStringLiteral("warnOnEmbeddedAudio"), file.warnOnEmbeddedAudio);
    document.emplace(QStringLiteral("warnOnHEVC"), file.warnOnHEVC);
    document.emplace(QStringLiteral("convertFormat"), file.convertFormat);
    document.emplace(QStringLiteral("stripAudioOnConvert"), file.stripAudioOnConvert);
    document.emplace(QStringLiteral("forceEvenDimensions"), file.forceEvenDimensions);
    document.emplace(QStringLiteral("clips"), std::move(clips));
    document.emplace(QStringLiteral("createdAt"), isoTimestamp(file.createdAt));
    // Only numbers that are integers appear here, so encoding cannot fail.
    return *encodeJson(document);
}

std::optional<PackProjectFile> decode(const QByteArray &bytes)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();
    Reader r{object};
    PackProjectFile file;
    file.version = r.integer("version");
    file.showPrefix = r.text("showPrefix");
    file.zeroPad = r.flag("zeroPad");
    file.preferredWidth = r.integer("preferredWidth");
    file.warnOnEmbeddedAudio = r.flag("warnOnEmbeddedAudio");
    file.warnOnHEVC = r.flag("warnOnHEVC");
    file.convertFormat = r.text("convertFormat");
    file.stripAudioOnConvert = r.flag("stripAudioOnConvert");
    file.forceEvenDimensions = r.flag("forceEvenDimensions");
    file.createdAt = QDateTime::fromString(r.text("createdAt"), Qt::ISODate);
    const QJsonValue clips = r.need("clips", QJsonValue::Array);
    if (!r.ok || !file.createdAt.isValid())
        return std::nullopt;
    for (const QJsonValue &value : clips.toArray()) {
        std::optional<PackProjectClip> clip = decodeClip(value);
        if (!clip)
            return std::nullopt;
        file.clips.append(*clip);
    }
    return file;
}

Status write(const PackProjectFile &file, const QString &path)
{
    return writeFileAtomically(path, encode(file));
}

std::optional<PackProjectFile> read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMaxProjectBytes)
        return std::nullopt;
    return decode(file.readAll());
}

} // namespace PackProject
