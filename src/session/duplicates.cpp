#include "duplicates.h"

#include "contentfingerprint.h"
#include "model/arenanamer.h"

#include <QHash>
#include <QSet>

namespace Duplicates {

qint64 markDuplicates(QList<MediaClip> &clips)
{
    QHash<QString, int> exactCounts;
    QHash<QString, int> softCounts;
    for (const MediaClip &clip : std::as_const(clips)) {
        if (clip.contentFingerprint)
            ++exactCounts[*clip.contentFingerprint];
        ++softCounts[ContentFingerprint::softKey(clip.duration, clip.fileSize)];
    }

    qint64 total = 0;
    for (MediaClip &clip : clips) {
        clip.issues.removeIf([](const ClipIssue &i) { return i.kind == IssueKind::duplicate; });
        bool duplicate =
            clip.contentFingerprint && exactCounts.value(*clip.contentFingerprint) >= 2;
        if (!duplicate && clip.duration && *clip.duration > kSoftRuleMinDuration)
            duplicate =
                softCounts.value(ContentFingerprint::softKey(clip.duration, clip.fileSize)) >= 2;
        clip.isDuplicate = duplicate;
        if (duplicate) {
            clip.issues.append(ClipIssue::make(ClipHealth::warn, IssueKind::duplicate));
            ++total;
        }
    }
    return total;
}

qint64 removeDuplicatesKeepingFirst(QList<MediaClip> &clips, std::optional<QUuid> &selectedClipID,
                                    const QString &showPrefix, bool zeroPad)
{
    QSet<QString> seen;
    QList<MediaClip> kept;
    kept.reserve(clips.size());
    for (const MediaClip &clip : std::as_const(clips)) {
        const QString key = clip.contentFingerprint.value_or(
            ContentFingerprint::softKey(clip.duration, clip.fileSize));
        if (seen.contains(key))
            continue;
        seen.insert(key);
        kept.append(clip);
    }
    clips = std::move(kept);

    if (selectedClipID) {
        const bool stillThere = std::any_of(clips.cbegin(), clips.cend(), [&](const MediaClip &c) {
            return c.id == *selectedClipID;
        });
        if (!stillThere)
            selectedClipID = clips.isEmpty() ? std::nullopt : std::optional(clips.front().id);
    }
    ArenaNamer::reindex(clips, showPrefix, zeroPad);
    return markDuplicates(clips);
}

} // namespace Duplicates
