#pragma once

#include "model/result.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <stop_token>

// Copies one file and returns the SHA-256 of the bytes read from `from`, taken in the same
// pass over the data: the source is read once. The copy gets the source's permission bits and
// modification time and, unless told otherwise, is flushed to disk before this returns. Only
// regular files are copied. `copiedBytes` reports the bytes added since the last report. With
// `Flush::later` the caller flushes the copy itself (flushFile), e.g. on another thread while
// the next file is copied: a flush waits for the device, which meanwhile has nothing to do.
enum class Flush { now, later };
Result<QByteArray> copyFileHashing(const QString &from, const QString &to, std::stop_token stop,
                                   const std::function<void(qint64)> &copiedBytes,
                                   Flush flush = Flush::now);

// Flushes a written file's data and metadata to the device.
Status flushFile(const QString &path);

// The SHA-256 of a file as the device holds it: the file is flushed and its cached pages are
// dropped before it is read, so a copy that never reached the device does not pass. Only
// regular files are read. `readBytes` reports the bytes read since the last report.
Result<QByteArray> hashFromDevice(const QString &path, std::stop_token stop,
                                  const std::function<void(qint64)> &readBytes);
