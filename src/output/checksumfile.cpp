#include "checksumfile.h"

#include <QFile>

#include <optional>

namespace ChecksumFile {

namespace {

constexpr qsizetype kHexDigits = 64;

bool isHex(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

std::optional<QByteArray> unescape(const QByteArray &name)
{
    QByteArray out;
    out.reserve(name.size());
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (name[i] != '\\') {
            out.append(name[i]);
            continue;
        }
        if (++i == name.size())
            return std::nullopt;
        switch (name[i]) {
        case '\\':
            out.append('\\');
            break;
        case 'n':
            out.append('\n');
            break;
        case 'r':
            out.append('\r');
            break;
        default:
            return std::nullopt;
        }
    }
    return out;
}

bool staysInside(const QString &path)
{
    if (path.isEmpty() || path.startsWith(u'/'))
        return false;
    const QStringList parts = path.split(u'/');
    return !parts.contains(QStringLiteral("..")) && !path.contains(QChar(u'\0'));
}

std::optional<Entry> parseLine(QByteArray text)
{
    const bool escaped = text.startsWith('\\');
    if (escaped)
        text.remove(0, 1);
    else if (text.endsWith('\r'))
        text.chop(1); // written on Windows: coreutils escapes a real carriage return
    // The digest, then a blank and either a blank (text mode) or "*" (binary mode).
    if (text.size() < kHexDigits + 3 || text[kHexDigits] != ' ' ||
        (text[kHexDigits + 1] != ' ' && text[kHexDigits + 1] != '*'))
        return std::nullopt;
    for (qsizetype i = 0; i < kHexDigits; ++i) {
        if (!isHex(text[i]))
            return std::nullopt;
    }
    const QByteArray rawName = text.mid(kHexDigits + 2);
    const std::optional<QByteArray> name = escaped ? unescape(rawName) : rawName;
    if (!name)
        return std::nullopt;
    Entry entry{QFile::decodeName(*name), QByteArray::fromHex(text.left(kHexDigits))};
    if (!staysInside(entry.path))
        return std::nullopt;
    return entry;
}

} // namespace

QByteArray line(const Entry &entry)
{
    const QByteArray name = QFile::encodeName(entry.path);
    QByteArray escapedName;
    escapedName.reserve(name.size());
    for (const char c : name) {
        if (c == '\\')
            escapedName.append("\\\\");
        else if (c == '\n')
            escapedName.append("\\n");
        else if (c == '\r')
            escapedName.append("\\r");
        else
            escapedName.append(c);
    }
    const bool escaped = escapedName.size() != name.size();
    return (escaped ? QByteArray("\\") : QByteArray()) + entry.digest.toHex() + "  " + escapedName +
           '\n';
}

QByteArray format(const QList<Entry> &entries)
{
    QByteArray text;
    for (const Entry &entry : entries)
        text += line(entry);
    return text;
}

Parsed parse(const QByteArray &text)
{
    Parsed parsed;
    const QList<QByteArray> lines = text.split('\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (lines[i].isEmpty())
            continue; // the line feed after the last line, or a blank line
        if (std::optional<Entry> entry = parseLine(lines[i]))
            parsed.entries.append(std::move(*entry));
        else
            parsed.malformedLines.append(i + 1);
    }
    return parsed;
}

} // namespace ChecksumFile
