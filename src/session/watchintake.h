#pragma once

#include "model/filestamp.h"

#include <QHash>
#include <QStringList>

#include <functional>

// Decides, one look at a watched folder after another, which of its files are complete enough
// to probe: new files to add, files of the pack that were replaced, files of the pack that are
// gone. Pure bookkeeping on stamps; the session does the looking and the probing.
class WatchIntake
{
public:
    // A file joins only when two looks at least this far apart see the same size and
    // modification time. A copy over the network stalls for a moment now and then; a probe of
    // a half-written movie finds no index, and the clip would be red with a wrong duration.
    static constexpr qint64 kSettleMs = 1500;
    // A file the kernel still reports open for writing waits, unless it has not changed for
    // this long: an editor may keep its finished export open.
    static constexpr qint64 kOpenWriterPatienceMs = 60'000;

    struct Look {
        qint64 atMs = 0;                 // monotonic time the stamps were taken
        QHash<QString, FileStamp> found; // every media file below the folder now
        QHash<QString, FileStamp> pack;  // the pack's files of this folder, looked at now
    };
    struct Outcome {
        QStringList added;   // complete new files, in no particular order
        QStringList changed; // complete pack files that differ from what their probe saw
        QStringList gone;    // pack files that are no longer there
    };

    // `probed`: what the probe of each pack file of the folder saw (as in `Look::pack`).
    // `beingWritten`: whether the kernel says a file is still open for writing.
    Outcome take(const Look &look, const QHash<QString, FileStamp> &probed,
                 const std::function<bool(const QString &)> &beingWritten);
    // Files seen but not complete yet.
    qsizetype waitingCount() const { return m_waiting.size(); }
    void clear() { m_waiting.clear(); }

private:
    struct Waiting {
        FileStamp stamp;
        qint64 sinceMs = 0; // first look that saw this stamp
    };
    QHash<QString, Waiting> m_waiting;
};
