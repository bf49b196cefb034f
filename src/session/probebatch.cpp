#include "probebatch.h"

#include "media/mediainspector.h"
#include "session/contentfingerprint.h"
#include "session/readahead.h"

#include <QtConcurrent>

#include <tuple>

void LiveRules::set(InspectionRules rules)
{
    const std::lock_guard lock(m_mutex);
    m_rules = std::move(rules);
}

InspectionRules LiveRules::get() const
{
    const std::lock_guard lock(m_mutex);
    return m_rules;
}

namespace {

// Fingerprints are hashed a few clips at a time: handing each clip to the pool on its own
// woke a pool thread per file, which cost the probe thread about a fifth of a probe.
constexpr qsizetype kFingerprintBatch = 16;
// The clips probed but not handed to the pool may grow to this while a batch is still being
// hashed: the probe waits for the pool only then.
constexpr qsizetype kMostUnhashed = 4 * kFingerprintBatch;

struct Hashing {
    qsizetype first = 0; // the first clip of the batch in flight
    QFuture<QStringList> fingerprints;
};

} // namespace

ProbeBatch::Probed ProbeBatch::run(const QStringList &files, std::stop_token stop) const
{
    Probed probed;
    QList<MediaClip> &clips = probed.clips;
    clips.reserve(files.size());
    probed.stamps.resize(files.size());
    Hashing hashing;
    qsizetype unhashed = 0; // the first clip not handed to the pool yet
    const auto settle = [&] {
        if (!hashing.fingerprints.isValid())
            return;
        const QStringList fingerprints = hashing.fingerprints.result();
        for (qsizetype k = 0; k < fingerprints.size(); ++k)
            clips[hashing.first + k].contentFingerprint = fingerprints[k];
        hashing = {};
    };
    // One batch in flight at most: the files it reads are still held open by the readers
    // ahead (heldBehind below), and memory stays flat.
    const auto hashRest = [&] {
        settle();
        QList<std::tuple<QString, std::optional<double>, qint64>> batch;
        for (qsizetype k = unhashed; k < clips.size(); ++k)
            batch.append({clips[k].sourcePath(), clips[k].duration, clips[k].fileSize});
        hashing.first = unhashed;
        unhashed = clips.size();
        hashing.fingerprints = QtConcurrent::run([batch = std::move(batch)] {
            QStringList fingerprints;
            for (const auto &[path, duration, size] : batch)
                fingerprints.append(ContentFingerprint::make(path, duration, size));
            return fingerprints;
        });
    };

    ReadAhead::Options readAhead = readAheadOptions;
    // A batch in flight and the clips behind it reach back this far at most.
    readAhead.heldBehind = 2 * kMostUnhashed;
    ReadAhead reader(files, readAhead);
    for (qsizetype i = 0; i < files.size() && !stop.stop_requested(); ++i) {
        if (willProbe)
            willProbe(i);
        reader.reach(i);
        clips.append(
            MediaInspector::inspect(files[i], rules->get(), *probe, stop, &probed.stamps[i]));
        // The batch in flight is collected once it is done, and waited for only when too many
        // clips are behind it: a pool thread can take milliseconds to wake up here, and the
        // probe stood still meanwhile (17 ms per 1,000 files).
        const qsizetype unhandled = clips.size() - unhashed;
        if (unhandled >= kFingerprintBatch &&
            (!hashing.fingerprints.isValid() || hashing.fingerprints.isFinished() ||
             unhandled >= kMostUnhashed))
            hashRest();
    }
    if (unhashed < clips.size())
        hashRest();
    settle();
    probed.stamps.resize(clips.size());
    return probed;
}
