#pragma once

#include "model/result.h"

#include <QString>

#include <functional>
#include <stop_token>

// Copies one file with the fastest path the kernel offers: a reflink where the file system
// shares blocks, then copy_file_range, then a plain read/write loop. The copy is flushed to
// disk before it returns. `copiedBytes` reports the bytes added since the last report.
Status copyFileFast(const QString &from, const QString &to, std::stop_token stop,
                    const std::function<void(qint64)> &copiedBytes);
