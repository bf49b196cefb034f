#include "renamerowsview.h"

#include "model/arenanamer.h"
#include "renamedraftmodel.h"
#include "ui/apptheme.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>

#include <array>

namespace {

struct WidthRange {
    int min;
    int max;
};
// Cue number, original name, stem, preview file name.
constexpr std::array<WidthRange, RenameDraftModel::ColumnCount> kWidths{
    {{36, 36}, {140, 200}, {140, 180}, {180, 260}}};

QRect fieldIn(const QRect &cell)
{
    return QRect(cell.left(), cell.center().y() - RenameRowsView::kFieldHeight / 2 + 1,
                 cell.width() - RenameRowsView::kGap, RenameRowsView::kFieldHeight);
}

} // namespace

RenameRowsView::RenameRowsView(QWidget *parent) : QTableView(parent)
{
    setObjectName(QStringLiteral("renameRows"));
    setFrameShape(QFrame::NoFrame);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    horizontalHeader()->hide();
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(kRowHeight);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setMinimumSectionSize(0);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalScrollBar()->setSingleStep(kRowHeight / 2);
    setSelectionMode(QAbstractItemView::NoSelection);
    // The rows sit straight on the sheet.
    viewport()->setAutoFillBackground(false);
    setAutoFillBackground(false);
    QPalette pal = palette();
    pal.setColor(QPalette::Base, Qt::transparent);
    setPalette(pal);
    setEditTriggers(QAbstractItemView::CurrentChanged | QAbstractItemView::DoubleClicked |
                    QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
    setTabKeyNavigation(true);
    setMouseTracking(true);
    // A click on the stem that is already current opens its field again.
    connect(this, &QAbstractItemView::clicked, this, [this](const QModelIndex &index) {
        if (index.column() == RenameDraftModel::StemColumn)
            edit(index);
    });
}

QLineEdit *RenameRowsView::openEditor() const
{
    // Closed fields linger until deleted later; only the current one counts.
    return state() == EditingState ? qobject_cast<QLineEdit *>(indexWidget(currentIndex()))
                                   : nullptr;
}

QRect RenameRowsView::stemFieldRect(int row) const
{
    return fieldIn(visualRect(model()->index(row, RenameDraftModel::StemColumn)));
}

QModelIndex RenameRowsView::moveCursor(CursorAction cursorAction, Qt::KeyboardModifiers modifiers)
{
    // The stems are the only thing to type in, so every move lands on a stem.
    const QModelIndex current = currentIndex();
    const int rows = model() ? model()->rowCount() : 0;
    const int row = current.isValid() ? current.row() : -1;
    switch (cursorAction) {
    case MoveNext:
        return row + 1 < rows ? model()->index(row + 1, RenameDraftModel::StemColumn)
                              : QModelIndex();
    case MovePrevious:
        return row > 0 ? model()->index(row - 1, RenameDraftModel::StemColumn) : QModelIndex();
    default:
        break;
    }
    const QModelIndex moved = QTableView::moveCursor(cursorAction, modifiers);
    return moved.isValid() ? moved.siblingAtColumn(RenameDraftModel::StemColumn) : moved;
}

void RenameRowsView::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    layOutColumns();
}

void RenameRowsView::layOutColumns()
{
    // Every column starts at its narrowest; spare room widens them together up to their
    // widest, and whatever is left goes to the last column, so rows span the sheet.
    int narrowest = 0;
    int room = 0;
    for (const WidthRange &w : kWidths) {
        narrowest += w.min + kGap;
        room += w.max - w.min;
    }
    narrowest -= kGap;
    const int spare = std::clamp(viewport()->width() - narrowest, 0, room);
    for (int c = 0; c < RenameDraftModel::ColumnCount; ++c) {
        const WidthRange &w = kWidths[c];
        const int grow = room > 0 ? (w.max - w.min) * spare / room : 0;
        const bool last = c + 1 == RenameDraftModel::ColumnCount;
        const int rest = last ? std::max(0, viewport()->width() - narrowest - room) : 0;
        setColumnWidth(c, w.min + grow + (last ? rest : kGap));
    }
    Q_EMIT columnsLaidOut();
}

RenameRowDelegate::RenameRowDelegate(QObject *parent) : QStyledItemDelegate(parent)
{}

void RenameRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QRect cell = option.rect;
    const bool hovered = option.state & QStyle::State_MouseOver;
    // A hairline under each row keeps long lists readable without boxes.
    painter->setPen(QPen(AppTheme::white(0.05), 1));
    painter->drawLine(QPointF(cell.left(), cell.bottom() + 0.5),
                      QPointF(cell.right() + 1, cell.bottom() + 0.5));

    const QString text = index.data(Qt::DisplayRole).toString();
    const QRect content = cell.adjusted(0, 0, -RenameRowsView::kGap, 0);
    switch (index.column()) {
    case RenameDraftModel::CueColumn: {
        const QFont mono = AppTheme::font(12, QFont::Medium, AppTheme::Face::mono);
        painter->setFont(mono);
        painter->setPen(AppTheme::white(0.55));
        painter->drawText(cell.adjusted(0, 0, -RenameRowsView::kGap - 4, 0),
                          Qt::AlignRight | Qt::AlignVCenter, text);
        break;
    }
    case RenameDraftModel::StemColumn: {
        // An open field draws itself on a see-through face; text underneath would show.
        const auto *view = qobject_cast<const QAbstractItemView *>(option.widget);
        if (view && view->indexWidget(index))
            break;
        // The same soft field the open editor shows, so opening it moves nothing.
        const QRectF field = QRectF(fieldIn(cell)).adjusted(0.5, 0.5, -0.5, -0.5);
        const qreal radius = std::min<qreal>(14, field.height() / 2);
        painter->setBrush(AppTheme::white(hovered ? 0.08 : 0.06));
        painter->setPen(QPen(hovered ? AppTheme::white(0.16) : AppTheme::stroke, 1));
        painter->drawRoundedRect(field, radius, radius);
        const QFont font = AppTheme::font(12);
        painter->setFont(font);
        painter->setPen(AppTheme::white(0.9));
        const QRectF textRect =
            field.adjusted(RenameRowsView::kFieldInset, 0, -RenameRowsView::kFieldInset, 0);
        painter->drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter,
                          QFontMetrics(font).elidedText(text, Qt::ElideRight,
                                                        static_cast<int>(textRect.width())));
        break;
    }
    case RenameDraftModel::OriginalColumn:
    case RenameDraftModel::PreviewColumn: {
        const QFont font = AppTheme::font(12);
        painter->setFont(font);
        const bool original = index.column() == RenameDraftModel::OriginalColumn;
        painter->setPen(AppTheme::white(original ? 0.4 : 0.45));
        // The last column also carries the row's spare room; its text keeps its own width.
        const QRect textRect(content.left(), content.top(),
                             std::min(content.width(), kWidths[index.column()].max),
                             content.height());
        painter->drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter,
                          QFontMetrics(font).elidedText(
                              text, original ? Qt::ElideMiddle : Qt::ElideRight, textRect.width()));
        break;
    }
    default:
        break;
    }
    painter->restore();
}

QSize RenameRowDelegate::sizeHint(const QStyleOptionViewItem &option,
                                  const QModelIndex &index) const
{
    return {QStyledItemDelegate::sizeHint(option, index).width(), RenameRowsView::kRowHeight};
}

QWidget *RenameRowDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                         const QModelIndex &index) const
{
    if (index.column() != RenameDraftModel::StemColumn)
        return nullptr;
    auto *editor = new QLineEdit(parent);
    editor->setObjectName(QStringLiteral("stemEditor"));
    editor->setFont(AppTheme::font(12));
    // The style's frame already pads by a few pixels; together they match the painted field.
    editor->setTextMargins(RenameRowsView::kFieldInset - 4, 0, RenameRowsView::kFieldInset - 4, 0);
    const QPersistentModelIndex persistent(index);
    connect(editor, &QLineEdit::textEdited, editor, [editor, persistent](const QString &typed) {
        if (!persistent.isValid())
            return;
        auto *model = const_cast<QAbstractItemModel *>(persistent.model());
        model->setData(persistent, typed, Qt::EditRole);
        const QString shown = shownWhileTyping(typed, persistent.data(Qt::EditRole).toString());
        if (shown == typed)
            return;
        // Keep the caret where the user was typing, less whatever cleaning took out before it.
        const int fromEnd = static_cast<int>(typed.size()) - editor->cursorPosition();
        editor->setText(shown);
        editor->setCursorPosition(std::max(0, static_cast<int>(shown.size()) - fromEnd));
    });
    return editor;
}

void RenameRowDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    auto *field = qobject_cast<QLineEdit *>(editor);
    if (!field)
        return;
    const QString stored = index.data(Qt::EditRole).toString();
    // A field that already stands for the stored stem (perhaps with a pending "_") stays as
    // typed.
    if (!field->text().isEmpty() && ArenaNamer::sanitize(field->text()) == stored)
        return;
    field->setText(stored);
}

void RenameRowDelegate::setModelData(QWidget *, QAbstractItemModel *, const QModelIndex &) const
{
    // Every keystroke is already in the studio.
}

void RenameRowDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                             const QModelIndex &) const
{
    editor->setGeometry(fieldIn(option.rect));
}

QString RenameRowDelegate::shownWhileTyping(const QString &typed, const QString &stored)
{
    if (stored.isEmpty() || typed.isEmpty())
        return stored;
    const QChar last = typed.back();
    const bool wordBreak = last.isSpace() || last == u'_' || last == u'-' || last == u'.';
    // Only when one more letter would really keep the separator (not at the length limit).
    if (wordBreak && ArenaNamer::sanitize(typed + u'x') == stored + QStringLiteral("_x"))
        return stored + u'_';
    return stored;
}

RenameColumnHeads::RenameColumnHeads(RenameRowsView *rows, QStringList titles, QWidget *parent)
    : QWidget(parent), m_rows(rows), m_titles(std::move(titles))
{
    setObjectName(QStringLiteral("renameColumnHeads"));
    setFont(AppTheme::font(12));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(rows, &RenameRowsView::columnsLaidOut, this, qOverload<>(&QWidget::update));
}

QSize RenameColumnHeads::sizeHint() const
{
    return {400, QFontMetrics(font()).height() + 4};
}

void RenameColumnHeads::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setFont(font());
    p.setPen(AppTheme::white(0.4));
    const QFontMetrics fm(font());
    // The rows' viewport may sit at another x than this widget; place titles over its columns.
    const int origin =
        m_rows->viewport()->mapTo(window(), QPoint(0, 0)).x() - mapTo(window(), QPoint(0, 0)).x();
    for (int c = 0; c < m_titles.size() && c < RenameDraftModel::ColumnCount; ++c) {
        if (m_titles[c].isEmpty())
            continue;
        const int inset = c == RenameDraftModel::StemColumn ? RenameRowsView::kFieldInset : 0;
        const int left = origin + m_rows->columnViewportPosition(c) + inset;
        const int width = m_rows->columnWidth(c) - RenameRowsView::kGap - inset;
        p.drawText(QRect(left, 0, std::max(0, width), height()), Qt::AlignLeft | Qt::AlignVCenter,
                   fm.elidedText(m_titles[c], Qt::ElideRight, std::max(0, width)));
    }
}
