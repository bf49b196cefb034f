#include "clipissue.h"

#include "l10n/l10n.h"

namespace {
constexpr const char *kHealthNames[] = {"ok", "warn", "fail", "unknown"};
constexpr const char *kKindNames[] = {"imageUnreadable",   "noVideo",    "audio",   "readError",
                                      "oddSize",           "tooWide",    "lowRes",  "aspect",
                                      "heavyCodec",        "weirdCodec", "bitrate", "duplicate",
                                      "variableFrameRate", "interlaced", "hdr"};
static_assert(std::size(kKindNames) == kIssueKindCount);
} // namespace

QString rawValue(ClipHealth health)
{
    return QString::fromLatin1(kHealthNames[static_cast<int>(health)]);
}

std::optional<ClipHealth> clipHealthFromRaw(QStringView raw)
{
    for (ClipHealth health : kAllHealths) {
        if (raw == QLatin1String(kHealthNames[static_cast<int>(health)]))
            return health;
    }
    return std::nullopt;
}

QString rawValue(IssueKind kind)
{
    return QString::fromLatin1(kKindNames[static_cast<int>(kind)]);
}

std::optional<IssueKind> issueKindFromRaw(QStringView raw)
{
    for (int i = 0; i < kIssueKindCount; ++i) {
        if (raw == QLatin1String(kKindNames[i]))
            return static_cast<IssueKind>(i);
    }
    return std::nullopt;
}

ClipIssue ClipIssue::make(ClipHealth severity, IssueKind kind)
{
    ClipIssue issue;
    issue.id = QUuid::createUuid();
    issue.severity = severity;
    issue.kind = kind;
    return issue;
}

QString ClipIssue::messageKey(IssueKind kind)
{
    return QStringLiteral("issue.") + rawValue(kind);
}

QString ClipIssue::localized(const L10n &strings) const
{
    const QString key = messageKey(kind);
    switch (kind) {
    case IssueKind::readError:
    case IssueKind::heavyCodec:
    case IssueKind::weirdCodec:
    case IssueKind::hdr:
        return strings.format(key, {textValue.value_or(QString())});
    case IssueKind::tooWide:
        return strings.format(key, {intValue.value_or(0)});
    case IssueKind::aspect:
    case IssueKind::bitrate:
        return strings.format(key, {doubleValue.value_or(0.0)});
    default:
        // Texts without an argument are shown as looked up, never run through the filler.
        return strings[key];
    }
}

size_t qHash(const ClipIssue &issue, size_t seed) noexcept
{
    QtPrivate::QHashCombine combine;
    seed = combine(seed, issue.id);
    seed = combine(seed, static_cast<int>(issue.severity));
    seed = combine(seed, static_cast<int>(issue.kind));
    seed = combine(seed, issue.intValue.has_value());
    seed = combine(seed, issue.intValue.value_or(0));
    seed = combine(seed, issue.doubleValue.has_value());
    seed = combine(seed, issue.doubleValue.value_or(0.0));
    seed = combine(seed, issue.textValue.has_value());
    seed = combine(seed, issue.textValue.value_or(QString()));
    return seed;
}
