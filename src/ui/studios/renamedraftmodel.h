#pragma once

#include "model/renamestudio.h"

#include <QAbstractTableModel>

// The rename studio's rows as a table over the RenameStudio its view owns. Only the stem is
// editable; a write goes through the studio, which cleans the stem and renames that row at
// once. Rows are never inserted or removed while the sheet is open.
class RenameDraftModel final : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { CueColumn, OriginalColumn, StemColumn, PreviewColumn, ColumnCount };
    enum Role { IdRole = Qt::UserRole + 1 };

    explicit RenameDraftModel(RenameStudio &studio, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    // The studio rebuilt every row (prefix, padding, "Rebuild from template").
    void refreshAll();

private:
    RenameStudio &m_studio;
};
