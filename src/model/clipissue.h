#pragma once

#include <QHash>
#include <QMetaType>
#include <QString>
#include <QUuid>

#include <array>
#include <optional>

class L10n;

// Both the severity of a finding and the verdict of a clip.
enum class ClipHealth { ok, warn, fail, unknown };
inline constexpr std::array kAllHealths{ClipHealth::ok, ClipHealth::warn, ClipHealth::fail,
                                        ClipHealth::unknown};

enum class IssueKind {
    imageUnreadable,
    noVideo,
    audio,
    readError,
    oddSize,
    tooWide,
    lowRes,
    aspect,
    heavyCodec,
    weirdCodec,
    bitrate,
    duplicate,
    // Stage traps, appended so that stored raw values and the order above stay as they were.
    variableFrameRate,
    interlaced,
    hdr,
};
inline constexpr int kIssueKindCount = 15;

QString rawValue(ClipHealth health);
std::optional<ClipHealth> clipHealthFromRaw(QStringView raw);
QString rawValue(IssueKind kind);
std::optional<IssueKind> issueKindFromRaw(QStringView raw);

struct ClipIssue {
    QUuid id;
    ClipHealth severity = ClipHealth::warn;
    IssueKind kind = IssueKind::oddSize;
    std::optional<qint64> intValue;
    std::optional<double> doubleValue;
    std::optional<QString> textValue;

    // A finding with a fresh random id.
    static ClipIssue make(ClipHealth severity, IssueKind kind);

    // The finding's message in the language of `strings`.
    QString localized(const L10n &strings) const;
    static QString messageKey(IssueKind kind);

    friend bool operator==(const ClipIssue &, const ClipIssue &) = default;
};

size_t qHash(const ClipIssue &issue, size_t seed = 0) noexcept;

Q_DECLARE_METATYPE(ClipHealth)
