#pragma once

#include "mediaclip.h"

#include <QList>
#include <QString>
#include <QUuid>

// One editable row of the rename studio.
struct RenameDraft {
    QUuid id; // the clip's id
    qint64 cueIndex = 0;
    QString originalName;
    QString sourceExtension; // lower case, no dot; empty when the file has none
    QString stem;            // always kept sanitized
    QString arenaName;

    // The file name the clip gets in the pack (extension shown in lower case).
    QString previewFileName() const;
    friend bool operator==(const RenameDraft &, const RenameDraft &) = default;
};

// The rename studio's data: a private copy of names, prefix and padding that touches the pack
// only when applied. The window binds to it; it knows nothing of widgets.
class RenameStudio
{
public:
    // Fills the drafts from the pack and rebuilds every name from the template.
    void open(const QList<MediaClip> &clips, const QString &showPrefix, bool zeroPad);

    const QList<RenameDraft> &drafts() const { return m_drafts; }
    const QString &localPrefix() const { return m_localPrefix; }
    bool localZeroPad() const { return m_localZeroPad; }

    // Changing the prefix or the padding rebuilds all rows; manual stem edits are lost.
    void setLocalPrefix(const QString &prefix);
    void setLocalZeroPad(bool zeroPad);

    void rebuildAllFromTemplate();
    // Stores the typed stem, then cleans it and recomputes that row's name. Unknown ids are
    // ignored.
    void setStem(const QUuid &id, const QString &text);
    void recomputeName(const QUuid &id);

    // Writes names and cue numbers into the clips with the same ids and hands back the prefix
    // and padding for the session; orphan drafts are skipped, the order is kept.
    void apply(QList<MediaClip> &clips, QString &showPrefix, bool &zeroPad) const;

private:
    RenameDraft *find(const QUuid &id);

    QList<RenameDraft> m_drafts;
    // Each draft's file stem, cleaned once when the studio opens: a prefix keystroke rebuilds
    // every name, and cleaning thousands of stems each time made typing lag.
    QList<QString> m_cleanStems;
    QString m_localPrefix;
    bool m_localZeroPad = true;
};
