#pragma once

#include "model/filestamp.h"
#include "model/mediaclip.h"
#include "model/screenprofile.h"
#include "session/readahead.h"

#include <QList>
#include <QStringList>

#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>

class MediaProbe;

// The rules an ingest running on a worker reads before every file. The session writes them on
// the GUI thread whenever a switch or the screen profile changes, so a change during a scan
// applies from the next file on.
class LiveRules
{
public:
    explicit LiveRules(InspectionRules rules) : m_rules(std::move(rules)) {}
    void set(InspectionRules rules);
    InspectionRules get() const;

private:
    mutable std::mutex m_mutex;
    InspectionRules m_rules;
};

// Probes files strictly one after another on the calling thread (never two probes at once),
// while the fingerprints of the clips probed are hashed a few at a time on a pool thread and the
// files after them are read ahead (ReadAhead).
// Running the whole batch on one worker keeps the GUI thread out of the loop: a round trip
// through the event loop per file cost as much as the probe itself.
struct ProbeBatch {
    std::shared_ptr<const MediaProbe> probe;
    std::shared_ptr<const LiveRules> rules;
    // Called on the worker just before file `index` is probed.
    std::function<void(qsizetype index)> willProbe;
    ReadAhead::Options readAheadOptions;

    struct Probed {
        QList<MediaClip> clips;  // in the order of `files`; fewer when stopped
        QList<FileStamp> stamps; // of each clip's file, as looked at just before its probe
    };
    Probed run(const QStringList &files, std::stop_token stop) const;
};
