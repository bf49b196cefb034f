#include "probebatch.h"

#include "media/mediainspector.h"
#include "session/contentfingerprint.h"
#include "session/readahead.h"

#include <QtConcurrent>

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

QList<MediaClip> ProbeBatch::run(const QStringList &files, std::stop_token stop) const
{
    QList<MediaClip> clips;
    clips.reserve(files.size());
    QFuture<QString> pendingFingerprint;
    ReadAhead readAhead(files, readAheadOptions);
    for (qsizetype i = 0; i < files.size() && !stop.stop_requested(); ++i) {
        if (willProbe)
            willProbe(i);
        readAhead.reach(i);
        MediaClip clip = MediaInspector::inspect(files[i], rules->get(), *probe, stop);
        if (!clips.isEmpty())
            clips.back().contentFingerprint = pendingFingerprint.result();
        pendingFingerprint = QtConcurrent::run(
            [path = clip.sourcePath(), duration = clip.duration, size = clip.fileSize] {
                return ContentFingerprint::make(path, duration, size);
            });
        clips.append(std::move(clip));
    }
    if (!clips.isEmpty())
        clips.back().contentFingerprint = pendingFingerprint.result();
    return clips;
}
