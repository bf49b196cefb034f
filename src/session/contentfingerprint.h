#pragma once

#include <QString>

#include <optional>

// A cheap content key: SHA-256 over "size|tenths" and at most the first and last 256 KiB.
namespace ContentFingerprint {

inline constexpr qint64 kSampleBytes = 262'144;
inline constexpr qint64 kTailThreshold = 2 * kSampleBytes;

// 64 lower-case hex digits; never fails (an unreadable file hashes its header text alone).
QString make(const QString &path, std::optional<double> duration, qint64 fileSize);

// "5000|1234": size and duration in tenths; a missing duration counts as -1.0 s.
QString softKey(std::optional<double> duration, qint64 fileSize);

// Duration × 10, rounded half away from zero; none when the value cannot be represented.
std::optional<qint64> tenths(std::optional<double> duration);

} // namespace ContentFingerprint
