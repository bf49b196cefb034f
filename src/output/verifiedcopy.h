#pragma once

#include "model/result.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <stop_token>

// Copies one file and returns the SHA-256 of the source bytes it read (copyFileHashing);
// tests put a failing or corrupting copier here.
using CopyFile =
    std::function<Result<QByteArray>(const QString &from, const QString &to, std::stop_token stop,
                                     const std::function<void(qint64)> &copiedBytes)>;

enum class ReadBack { off, on };

inline const QString kCopyDiffersText = QStringLiteral("The copy differs from its source");

// A copy is written under a hidden name beside its target, so that no half-written or bad
// file ever carries the real name, and renamed into place once it has been checked. The
// hidden name of `to`, with `tag` telling apart copies in flight for one name.
QString partialPath(const QString &to, const QString &tag = {});

// Copies `from` to `partial` and returns the source's digest. A failed copy is removed.
Result<QByteArray> copyToPartial(const QString &from, const QString &partial, const CopyFile &copy,
                                 std::stop_token stop, const std::function<void(qint64)> &bytes);

// With read-back on, reads `partial` back from the device and compares it with `digest`;
// then renames it to `to`, replacing a file of that name. A copy that differs is removed.
Status placeChecked(const QString &partial, const QString &to, const QByteArray &digest,
                    ReadBack readBack, std::stop_token stop,
                    const std::function<void(qint64)> &readBytes);

// Both steps in one: copies, checks and places one file. `bytes` counts the bytes copied
// and, with read-back, the bytes read back. Returns the source's digest.
Result<QByteArray> copyVerified(const QString &from, const QString &to, const CopyFile &copy,
                                ReadBack readBack, std::stop_token stop,
                                const std::function<void(qint64)> &bytes);

// Checks a file just written from `bytes` in memory against the device. Returns the digest.
Result<QByteArray> checkWritten(const QString &path, const QByteArray &bytes, ReadBack readBack,
                                std::stop_token stop);
