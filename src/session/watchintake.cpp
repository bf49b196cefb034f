#include "watchintake.h"

WatchIntake::Outcome WatchIntake::take(const Look &look, const QHash<QString, FileStamp> &probed,
                                       const std::function<bool(const QString &)> &beingWritten)
{
    Outcome outcome;
    QHash<QString, FileStamp> candidates; // files that would be probed if they were complete
    for (auto it = look.found.cbegin(); it != look.found.cend(); ++it) {
        if (!probed.contains(it.key()) && it.value().exists())
            candidates.insert(it.key(), it.value());
    }
    for (auto it = look.pack.cbegin(); it != look.pack.cend(); ++it) {
        const FileStamp before = probed.value(it.key());
        if (it.value() == before)
            continue;
        if (!it.value().exists())
            outcome.gone.append(it.key()); // nothing to wait for: the probe says why at once
        else
            candidates.insert(it.key(), it.value());
    }

    QHash<QString, Waiting> stillWaiting;
    for (auto it = candidates.cbegin(); it != candidates.cend(); ++it) {
        const QString &path = it.key();
        const auto seen = m_waiting.constFind(path);
        if (seen == m_waiting.cend() || !(seen->stamp == it.value())) {
            stillWaiting.insert(path, {it.value(), look.atMs});
            continue;
        }
        const qint64 unchangedMs = look.atMs - seen->sinceMs;
        const bool open = beingWritten && beingWritten(path);
        if (unchangedMs < kSettleMs || (open && unchangedMs < kOpenWriterPatienceMs)) {
            stillWaiting.insert(path, *seen);
            continue;
        }
        (probed.contains(path) ? outcome.changed : outcome.added).append(path);
    }
    // Files that vanished or went back to what was probed simply stop waiting.
    m_waiting = std::move(stillWaiting);
    return outcome;
}
