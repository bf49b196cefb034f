#include "renamestudio.h"

#include "arenanamer.h"
#include "pathnames.h"

QString RenameDraft::previewFileName() const
{
    return sourceExtension.isEmpty() ? arenaName : arenaName + u'.' + sourceExtension;
}

void RenameStudio::open(const QList<MediaClip> &clips, const QString &showPrefix, bool zeroPad)
{
    m_localPrefix = showPrefix;
    m_localZeroPad = zeroPad;
    m_drafts.clear();
    m_drafts.reserve(clips.size());
    m_cleanStems.clear();
    m_cleanStems.reserve(clips.size());
    for (const MediaClip &clip : clips) {
        RenameDraft draft;
        draft.id = clip.id;
        draft.cueIndex = clip.cueIndex;
        draft.originalName = clip.originalName;
        draft.sourceExtension = PathNames::extension(clip.sourcePath()).toLower();
        draft.stem = ArenaNamer::sanitize(PathNames::deletingExtension(clip.originalName));
        draft.arenaName = clip.arenaName;
        m_cleanStems.append(draft.stem);
        m_drafts.append(draft);
    }
    rebuildAllFromTemplate();
}

void RenameStudio::setLocalPrefix(const QString &prefix)
{
    m_localPrefix = prefix;
    rebuildAllFromTemplate();
}

void RenameStudio::setLocalZeroPad(bool zeroPad)
{
    m_localZeroPad = zeroPad;
    rebuildAllFromTemplate();
}

void RenameStudio::rebuildAllFromTemplate()
{
    const std::optional<QString> prefix = ArenaNamer::cleanPrefix(m_localPrefix);
    for (qsizetype i = 0; i < m_drafts.size(); ++i) {
        RenameDraft &draft = m_drafts[i];
        draft.cueIndex = i + 1;
        draft.stem = m_cleanStems[i];
        draft.arenaName = ArenaNamer::composeName(i + 1, draft.stem, prefix, m_localZeroPad);
    }
}

void RenameStudio::setStem(const QUuid &id, const QString &text)
{
    RenameDraft *draft = find(id);
    if (!draft)
        return;
    draft->stem = text;
    recomputeName(id);
}

void RenameStudio::recomputeName(const QUuid &id)
{
    RenameDraft *draft = find(id);
    if (!draft)
        return;
    draft->stem = ArenaNamer::sanitize(draft->stem);
    // Unlike a rebuild, this tests the sanitized prefix, so a prefix of only punctuation
    // leaves a single separator here.
    const QString prefix = ArenaNamer::sanitize(m_localPrefix);
    QString name = ArenaNamer::cueNumber(draft->cueIndex, m_localZeroPad) + u'_';
    if (!prefix.isEmpty())
        name += prefix + u'_';
    name += draft->stem.isEmpty() ? QStringLiteral("clip") : draft->stem;
    draft->arenaName = name;
}

void RenameStudio::apply(QList<MediaClip> &clips, QString &showPrefix, bool &zeroPad) const
{
    showPrefix = m_localPrefix;
    zeroPad = m_localZeroPad;
    for (const RenameDraft &draft : m_drafts) {
        for (MediaClip &clip : clips) {
            if (clip.id == draft.id) {
                clip.cueIndex = draft.cueIndex;
                clip.arenaName = draft.arenaName;
                break;
            }
        }
    }
}

RenameDraft *RenameStudio::find(const QUuid &id)
{
    for (RenameDraft &draft : m_drafts) {
        if (draft.id == id)
            return &draft;
    }
    return nullptr;
}
