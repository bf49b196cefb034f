#pragma once

#include "model/result.h"

#include <QList>
#include <QString>

#include <functional>
#include <stop_token>

// Checks a pack (or backup) folder against its checksums.sha256: every listed file is read
// back from the device and hashed, several at once, and files in media/ that the list does
// not name are reported. Runs on a worker thread.
namespace PackVerifier {

enum class Problem { differs, missing, unreadable, extra, malformed };

struct Finding {
    Problem problem;
    QString path; // relative to the folder; "checksums.sha256:LINE" for a malformed line
    friend bool operator==(const Finding &, const Finding &) = default;
};

struct Report {
    qint64 checked = 0;      // files listed and hashed (or found missing or unreadable)
    QList<Finding> findings; // in the list's order, then malformed lines, then extra files
    bool passed() const { return findings.isEmpty(); }
};

struct Progress {
    qint64 filesDone = 0;
    qint64 filesTotal = 0;
    QString fileName; // the file started last
    qint64 bytesDone = 0;
    qint64 bytesTotal = 0;
};

// Fails with Error::Kind::Invalid when the folder has no checksums.sha256, and with
// Error::Kind::Unreadable when it cannot be read. `threads` 0: one per core.
Result<Report> verify(const QString &folder, const std::function<void(const Progress &)> &progress,
                      std::stop_token stop, int threads = 0);

// The string-table key of a problem's sentence ("%@ differs from its checksum", …).
QString problemKey(Problem problem);

} // namespace PackVerifier
