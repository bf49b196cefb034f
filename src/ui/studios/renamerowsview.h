#pragma once

#include <QStyledItemDelegate>
#include <QTableView>
#include <QWidget>

class QLineEdit;

// The rename studio's rows: one per draft, painted by a delegate, so that a pack of thousands
// of clips opens at once. Only the row being typed in holds a real text field; every other
// stem is painted in the same soft-field look. A click on a stem, or moving onto it with the
// keyboard, opens its field; Tab and the arrow keys go from stem to stem.
class RenameRowsView final : public QTableView
{
    Q_OBJECT
public:
    static constexpr int kRowHeight = 40;
    static constexpr int kFieldHeight = 28;
    static constexpr int kGap = 12;        // between columns, part of each column's width
    static constexpr int kFieldInset = 11; // the soft field's text padding

    explicit RenameRowsView(QWidget *parent = nullptr);

    // The field open on a stem, if any.
    QLineEdit *openEditor() const;
    // Where the stem of `row` is drawn, in viewport coordinates.
    QRect stemFieldRect(int row) const;

Q_SIGNALS:
    void columnsLaidOut();

protected:
    QModelIndex moveCursor(CursorAction cursorAction, Qt::KeyboardModifiers modifiers) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void layOutColumns();
};

class RenameRowDelegate final : public QStyledItemDelegate
{
    Q_OBJECT
public:
    explicit RenameRowDelegate(QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model,
                      const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;

    // What the field shows for a typed text whose cleaned stem is `stored`: the cleaned stem,
    // plus one "_" while the text ends in a word break, so that "my intro" can be typed letter
    // by letter although the cleaned stem never ends in "_".
    static QString shownWhileTyping(const QString &typed, const QString &stored);
};

// The titles above the rows, placed over the rows' columns.
class RenameColumnHeads final : public QWidget
{
    Q_OBJECT
public:
    RenameColumnHeads(RenameRowsView *rows, QStringList titles, QWidget *parent = nullptr);
    QSize sizeHint() const override;
    const QStringList &titles() const { return m_titles; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    RenameRowsView *m_rows;
    QStringList m_titles; // one per column; the cue column's is empty
};
