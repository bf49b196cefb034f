#pragma once

#include "model/mediaclip.h"

#include <QAbstractTableModel>
#include <QUuid>

class PackViewModel;
class LocalizationManager;

// The clip list as a table over PackViewModel::clips(). It keeps no clips of its own beyond a
// snapshot to tell what changed: an edit of one clip repaints one row (an open editor stays
// open), clips added at the end are inserted, anything else resets the rows. Moves by drag
// are handed to the session, which reorders and renames.
class ClipTableModel final : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column {
        HandleColumn,
        ThumbColumn,
        CueColumn,
        HealthColumn,
        NameColumn,
        OriginalColumn,
        ResolutionColumn,
        DurationColumn,
        FrameRateColumn,
        CodecColumn,
        SizeColumn,
        ColumnCount
    };
    enum Role {
        IdRole = Qt::UserRole + 1,
        HealthRole,
        HasAudioRole,
        DuplicateRole,
        PathRole,
        IsImageRole,
        HealthLabelRole,
    };
    static inline const QString kRowMimeType = QStringLiteral("application/x-cuebox-clip-row");

    ClipTableModel(PackViewModel &viewModel, LocalizationManager &localization,
                   QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    Qt::DropActions supportedDropActions() const override;
    Qt::DropActions supportedDragActions() const override { return Qt::MoveAction; }
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    bool canDropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                         const QModelIndex &parent) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

    const MediaClip *clipAt(int row) const;
    int rowOf(const QUuid &id) const;

    static QString frameRateLabel(const std::optional<double> &fps);
    static QString sizeLabel(qint64 bytes);

private:
    void sync();
    void relabel();

    PackViewModel &m_viewModel;
    LocalizationManager &m_localization;
    QList<MediaClip> m_snapshot; // shares the session's list; only used to spot changes
    QString m_labels[4];         // short health labels, looked up once per language
    QString m_dragHelp;
    QString m_audioYes;
    QString m_audioNo;
    QString m_duplicate;
};
