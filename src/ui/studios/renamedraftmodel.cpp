#include "renamedraftmodel.h"

RenameDraftModel::RenameDraftModel(RenameStudio &studio, QObject *parent)
    : QAbstractTableModel(parent), m_studio(studio)
{}

int RenameDraftModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_studio.drafts().size());
}

int RenameDraftModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant RenameDraftModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_studio.drafts().size())
        return {};
    const RenameDraft &draft = m_studio.drafts()[index.row()];
    if (role == IdRole)
        return draft.id;
    if (role == Qt::ToolTipRole && index.column() == OriginalColumn)
        return draft.originalName; // the cell elides long names
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    switch (index.column()) {
    case CueColumn:
        return QString::number(draft.cueIndex);
    case OriginalColumn:
        return draft.originalName;
    case StemColumn:
        return draft.stem;
    case PreviewColumn:
        return draft.previewFileName();
    default:
        return {};
    }
}

bool RenameDraftModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::EditRole || !index.isValid() || index.column() != StemColumn ||
        index.row() >= m_studio.drafts().size())
        return false;
    m_studio.setStem(m_studio.drafts()[index.row()].id, value.toString());
    Q_EMIT dataChanged(this->index(index.row(), StemColumn),
                       this->index(index.row(), PreviewColumn));
    return true;
}

Qt::ItemFlags RenameDraftModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.column() == StemColumn)
        flags |= Qt::ItemIsEditable;
    return flags;
}

void RenameDraftModel::refreshAll()
{
    if (rowCount() == 0)
        return;
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}
