#include "packproject.h"

#include "atomicfile.h"
#include "jsonwriter.h"
#include "model/arenanamer.h"
#include "timestamp.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

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

bool isHexDigit(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

// The 36-character form only (hex digits in either case, hyphens at 8, 13, 18 and 23). The
// all-zero UUID is a valid identity like any other; no braces, no other spellings.
std::optional<QUuid> parseUuid(const QString &text)
{
    if (text.size() != 36)
        return std::nullopt;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool hyphen = i == 8 || i == 13 || i == 18 || i == 23;
        if (hyphen ? text[i] != u'-' : !isHexDigit(text[i]))
            return std::nullopt;
    }
    return QUuid::fromString(text);
}

// Standard Base64 with its padding, nothing skipped: a damaged bookmark is a damaged file.
std::optional<QByteArray> parseBase64(const QString &text)
{
    const QByteArray bytes = text.toLatin1(); // anything beyond Latin-1 becomes '?', refused
    if (bytes.size() % 4 != 0)
        return std::nullopt;
    auto decoded = QByteArray::fromBase64Encoding(bytes, QByteArray::AbortOnBase64DecodingErrors);
    if (decoded.decodingStatus != QByteArray::Base64DecodingStatus::Ok)
        return std::nullopt;
    return decoded.decoded;
}

// An internet date-time: date, "T", time to the second, and a zone ("Z" or ±hh:mm), as the
// project writer makes it. A bare date or a time without a zone is no moment at all.
QDateTime parseDateTime(const QString &text)
{
    static const QRegularExpression form(QStringLiteral(
        R"(^[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}(Z|[+-][0-9]{2}:[0-9]{2})$)"));
    if (!form.match(text).hasMatch())
        return {};
    return QDateTime::fromString(text, Qt::ISODate);
}

std::optional<PackProjectClip> decodeClip(const QJsonValue &value)
{
    if (!value.isObject())
        return std::nullopt;
    const QJsonObject object = value.toObject();
    Reader r{object};
    PackProjectClip clip;
    const std::optional<QUuid> id = parseUuid(r.text("id"));
    clip.path = r.text("path");
    clip.originalName = r.text("originalName");
    clip.arenaName = r.text("arenaName");
    clip.cueIndex = r.integer("cueIndex");
    // null counts as absent, as for any optional value.
    const QJsonValue bookmark = object.value(QLatin1String("bookmark"));
    if (!bookmark.isUndefined() && !bookmark.isNull()) {
        if (!bookmark.isString())
            return std::nullopt;
        clip.bookmark = parseBase64(bookmark.toString());
        if (!clip.bookmark)
            return std::nullopt;
    }
    if (!r.ok || !id)
        return std::nullopt;
    clip.id = *id;
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
    file.createdAt = parseDateTime(r.text("createdAt"));
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
