#include "packverifier.h"

#include "checksumfile.h"
#include "filecopy.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QSet>
#include <QThread>

#include <atomic>
#include <optional>
#include <thread>
#include <vector>

namespace PackVerifier {

namespace {

// Verdict of one listed file; empty while not yet checked.
using Verdict = std::optional<Problem>;

Verdict check(const QString &folder, const ChecksumFile::Entry &entry, std::stop_token stop,
              const std::function<void(qint64)> &readBytes)
{
    const QString path = QDir(folder).filePath(entry.path);
    const Result<QByteArray> digest = hashFromDevice(path, stop, readBytes);
    if (digest)
        return *digest == entry.digest ? Verdict{} : Verdict{Problem::differs};
    if (!QFileInfo(path).exists() && !QFileInfo(path).isSymLink())
        return Problem::missing;
    return Problem::unreadable; // never a match: unread bytes prove nothing
}

} // namespace

Result<Report> verify(const QString &folder, const std::function<void(const Progress &)> &progress,
                      std::stop_token stop, int threads)
{
    QFile listFile(QDir(folder).filePath(ChecksumFile::kFileName));
    if (!QFileInfo(listFile.fileName()).isFile())
        return Error{Error::Kind::Invalid, QStringLiteral("No checksum file"), listFile.fileName(),
                     0};
    if (!listFile.open(QIODevice::ReadOnly))
        return Error{Error::Kind::Unreadable, listFile.errorString(), listFile.fileName(), 0};
    const ChecksumFile::Parsed list = ChecksumFile::parse(listFile.readAll());
    listFile.close();

    Progress state;
    state.filesTotal = list.entries.size();
    for (const ChecksumFile::Entry &entry : list.entries)
        state.bytesTotal += qMax<qint64>(0, QFileInfo(QDir(folder).filePath(entry.path)).size());

    // Files are handed out one at a time to as many threads as there are cores, so a pack of
    // many small stills and one long film both keep every core hashing.
    std::vector<Verdict> verdicts(static_cast<size_t>(list.entries.size()));
    std::atomic<qsizetype> next{0};
    QMutex progressLock;
    const auto work = [&] {
        for (;;) {
            const qsizetype i = next++;
            if (i >= list.entries.size() || stop.stop_requested())
                return;
            const ChecksumFile::Entry &entry = list.entries[i];
            {
                QMutexLocker lock(&progressLock);
                state.fileName = entry.path;
                if (progress)
                    progress(state);
            }
            verdicts[static_cast<size_t>(i)] = check(folder, entry, stop, [&](qint64 n) {
                QMutexLocker lock(&progressLock);
                state.bytesDone += n;
                if (progress)
                    progress(state);
            });
            QMutexLocker lock(&progressLock);
            ++state.filesDone;
            if (progress)
                progress(state);
        }
    };
    const int count = qBound(1, threads > 0 ? threads : QThread::idealThreadCount(),
                             int(qMax<qsizetype>(1, list.entries.size())));
    {
        std::vector<std::jthread> pool;
        for (int t = 1; t < count; ++t)
            pool.emplace_back(work);
        work();
    }
    if (stop.stop_requested())
        return Error{Error::Kind::Cancelled, QString(), folder, 0};

    Report report;
    report.checked = list.entries.size();
    QSet<QString> listed;
    for (qsizetype i = 0; i < list.entries.size(); ++i) {
        listed.insert(QDir::cleanPath(list.entries[i].path));
        if (const Verdict &verdict = verdicts[static_cast<size_t>(i)])
            report.findings.append({*verdict, list.entries[i].path});
    }
    for (const qsizetype line : list.malformedLines)
        report.findings.append(
            {Problem::malformed, ChecksumFile::kFileName + u':' + QString::number(line)});
    const QDir media(QDir(folder).filePath(QStringLiteral("media")));
    const QStringList present =
        media.entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    for (const QString &name : present) {
        const QString relative = QStringLiteral("media/") + name;
        if (!listed.contains(relative))
            report.findings.append({Problem::extra, relative});
    }
    return report;
}

QString problemKey(Problem problem)
{
    switch (problem) {
    case Problem::differs:
        return QStringLiteral("verify.differs");
    case Problem::missing:
        return QStringLiteral("verify.missing");
    case Problem::unreadable:
        return QStringLiteral("verify.unreadable");
    case Problem::extra:
        return QStringLiteral("verify.extra");
    case Problem::malformed:
        return QStringLiteral("verify.malformed");
    }
    return QString();
}

} // namespace PackVerifier
