#include "arenanamer.h"

#include "pathnames.h"

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace ArenaNamer {

namespace {

icu::UnicodeString toIcu(const QString &text)
{
    return icu::UnicodeString(reinterpret_cast<const char16_t *>(text.utf16()),
                              static_cast<int32_t>(text.size()));
}

QString fromIcu(const icu::UnicodeString &text)
{
    return QString(reinterpret_cast<const QChar *>(text.getBuffer()), text.length());
}

bool isKept(UChar32 c)
{
    if (c == u'_')
        return true;
    const uint32_t mask = U_GET_GC_MASK(c);
    return (mask & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0;
}

// White space and line breaks in the Unicode sense, as trimmed at both ends.
bool isSpaceOrBreak(UChar32 c)
{
    return u_isUWhiteSpace(c);
}

icu::UnicodeString trimmed(const icu::UnicodeString &text, auto isTrimmed)
{
    int32_t start = 0;
    int32_t end = text.length();
    while (start < end && isTrimmed(text.char32At(start)))
        start = text.moveIndex32(start, 1);
    while (end > start) {
        const int32_t previous = text.moveIndex32(end, -1);
        if (!isTrimmed(text.char32At(previous)))
            break;
        end = previous;
    }
    return icu::UnicodeString(text, start, end - start);
}

icu::UnicodeString firstGraphemes(const icu::UnicodeString &text, int32_t count)
{
    // Every grapheme is at least one code unit. Most names are short, and making a break
    // iterator costs more than the rest of the name together.
    if (text.length() <= count)
        return text;
    UErrorCode status = U_ZERO_ERROR;
    thread_local const std::unique_ptr<icu::BreakIterator> breaks(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (!breaks) // no break data: fall back to code points
        return icu::UnicodeString(text, 0, text.moveIndex32(0, count));
    breaks->setText(text);
    int32_t end = breaks->first();
    for (int32_t i = 0; i < count; ++i) {
        const int32_t next = breaks->next();
        if (next == icu::BreakIterator::DONE)
            return text;
        end = next;
    }
    return icu::UnicodeString(text, 0, end);
}

// Most names are plain ASCII. There every character is a grapheme of its own, and letters,
// digits and lower case are ASCII's own, so the same rules need no detour through ICU (which
// was most of the time naming a pack took). Null when the text is not all ASCII.
std::optional<QString> sanitizedAscii(const QString &text)
{
    QString cleaned;
    cleaned.reserve(text.size());
    bool lastWasUnderscore = false;
    for (const QChar ch : text) {
        const char16_t c = ch.unicode();
        if (c >= 0x80)
            return std::nullopt;
        if ((c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9')) {
            cleaned.append(ch);
            lastWasUnderscore = false;
        } else if (c >= u'A' && c <= u'Z') {
            cleaned.append(QChar(c - u'A' + u'a'));
            lastWasUnderscore = false;
        } else if (!lastWasUnderscore) { // white space at the ends goes with the underscores
            cleaned.append(u'_');
            lastWasUnderscore = true;
        }
    }
    qsizetype start = 0;
    qsizetype end = cleaned.size();
    while (start < end && cleaned[start] == u'_')
        ++start;
    while (end > start && cleaned[end - 1] == u'_')
        --end;
    return cleaned.mid(start, std::min(end - start, kMaxLength));
}

} // namespace

QString sanitize(const QString &text)
{
    if (std::optional<QString> ascii = sanitizedAscii(text))
        return *std::move(ascii);
    const icu::UnicodeString input = trimmed(toIcu(text), isSpaceOrBreak);

    // Spaces and hyphens become "_" like every other unkept character; runs collapse to one.
    icu::UnicodeString cleaned;
    bool lastWasUnderscore = false;
    for (int32_t i = 0; i < input.length(); i = input.moveIndex32(i, 1)) {
        const UChar32 c = input.char32At(i);
        if (isKept(c) && c != u'_') {
            cleaned.append(c);
            lastWasUnderscore = false;
        } else if (!lastWasUnderscore) {
            cleaned.append(u'_');
            lastWasUnderscore = true;
        }
    }
    cleaned = trimmed(cleaned, [](UChar32 c) { return c == u'_'; });
    cleaned.toLower(icu::Locale::getRoot()); // full mapping: "İ" becomes two code points
    return fromIcu(firstGraphemes(cleaned, static_cast<int32_t>(kMaxLength)));
}

QString cueNumber(qint64 index, bool zeroPad)
{
    if (zeroPad && index >= 0 && index < 10)
        return u'0' + QString::number(index);
    return QString::number(index);
}

std::optional<QString> cleanPrefix(const QString &prefix)
{
    if (prefix.trimmed().isEmpty())
        return std::nullopt;
    return sanitize(prefix);
}

QString composeName(qint64 index, const QString &cleanStem,
                    const std::optional<QString> &cleanPrefix, bool zeroPad)
{
    const QString stem = cleanStem.isEmpty() ? QStringLiteral("clip") : cleanStem;
    const QString number = cueNumber(index, zeroPad);
    if (!cleanPrefix)
        return number + u'_' + stem;
    return number + u'_' + *cleanPrefix + u'_' + stem;
}

QString makeName(qint64 index, const QString &fileName, const QString &prefix, bool zeroPad)
{
    return composeName(index, sanitize(PathNames::deletingExtension(fileName)), cleanPrefix(prefix),
                       zeroPad);
}

void reindex(QList<MediaClip> &clips, const QString &prefix, bool zeroPad)
{
    const std::optional<QString> cleaned = cleanPrefix(prefix);
    for (qsizetype i = 0; i < clips.size(); ++i) {
        MediaClip &clip = clips[i];
        clip.cueIndex = i + 1;
        clip.arenaName = composeName(
            i + 1, sanitize(PathNames::deletingExtension(clip.originalName)), cleaned, zeroPad);
    }
}

} // namespace ArenaNamer
