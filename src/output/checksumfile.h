#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// checksums.sha256: one line per file in the format of coreutils' `sha256sum`, so that
// `sha256sum -c` (and `shasum -a 256 -c` on a Mac) checks a pack without Cuebox. A name
// holding a backslash, a line feed or a carriage return is escaped as coreutils escapes it:
// the line starts with a backslash and those characters become \\, \n and \r.
namespace ChecksumFile {

inline const QString kFileName = QStringLiteral("checksums.sha256");

struct Entry {
    QString path;      // relative to the folder, "/" between components
    QByteArray digest; // 32 raw bytes
};

QByteArray line(const Entry &entry); // ends with a line feed
QByteArray format(const QList<Entry> &entries);

struct Parsed {
    QList<Entry> entries;
    QList<qsizetype> malformedLines; // 1-based
};

// Lines that are not a digest and a relative path inside the folder (absolute paths and ".."
// would check files the pack does not own) are malformed; the others are still read.
Parsed parse(const QByteArray &text);

} // namespace ChecksumFile
