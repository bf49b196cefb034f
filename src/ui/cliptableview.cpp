#include "cliptableview.h"

#include "apptheme.h"
#include "cliptabledelegate.h"
#include "cliptablemodel.h"
#include "clipthumbs.h"
#include "l10n/apppreferences.h"
#include "l10n/localizationmanager.h"
#include "mnemonics.h"
#include "session/packviewmodel.h"
#include "symbols.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionMenuItem>

#include <cmath>

namespace {

// Destructive commands read in the fail colour, as the design's menus do.
class RowMenu final : public QMenu
{
public:
    using QMenu::QMenu;

protected:
    void initStyleOption(QStyleOptionMenuItem *option, const QAction *action) const override
    {
        QMenu::initStyleOption(option, action);
        if (action->property("destructive").toBool() && action->isEnabled()) {
            for (auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
                option->palette.setColor(role, AppTheme::fail);
        }
    }
};

} // namespace

ClipTableView::ClipTableView(const UiContext &context, QWidget *parent)
    : QTableView(parent)
    , m_context(context)
    , m_thumbs(new ClipThumbs(context.thumbnails, this))
    , m_model(new ClipTableModel(context.viewModel, context.localization, this))
    , m_delegate(new ClipTableDelegate(*m_thumbs, this))
{
    setModel(m_model);
    setItemDelegate(m_delegate);
    setObjectName(QStringLiteral("clipTable"));
    horizontalHeader()->hide();
    verticalHeader()->hide();
    setShowGrid(false);
    setFrameShape(QFrame::NoFrame);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(DoubleClicked | EditKeyPressed | SelectedClicked);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    setMouseTracking(true);
    setWordWrap(false);
    // Rows are all the same height: the view never asks the delegate row by row, which keeps
    // thousands of clips cheap to lay out and scroll.
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setMinimumSectionSize(8);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDragDropMode(DragDrop);
    setDefaultDropAction(Qt::MoveAction);
    setDragDropOverwriteMode(false);
    setDropIndicatorShown(true);
    // The list sits well inside its card's opaque face, so it fills with the face's colour
    // itself (setFaceColor): a repaint of the rows then skips the backdrop and the card beneath
    // them, which cost as much as the rows.
    viewport()->setAutoFillBackground(false);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    setAutoFillBackground(false);
    QPalette pal = palette();
    pal.setColor(QPalette::Base, Qt::transparent);
    // The style's per-cell selection fill would square off the rounded row drawn below.
    pal.setColor(QPalette::Highlight, Qt::transparent);
    pal.setColor(QPalette::Inactive, QPalette::Highlight, Qt::transparent);
    setPalette(pal);

    applyCompact();
    connect(&m_context.preferences, &AppPreferences::compactModeChanged, this,
            &ClipTableView::applyCompact);

    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &current) {
                if (m_syncingSelection || !current.isValid())
                    return;
                const MediaClip *clip = m_model->clipAt(current.row());
                if (clip)
                    m_context.viewModel.setSelectedClipID(clip->id);
            });
    connect(&m_context.viewModel, &PackViewModel::selectedClipIDChanged, this,
            &ClipTableView::selectFromSession);
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] {
        m_thumbs->forget();
        selectFromSession();
    });
    connect(m_model, &QAbstractItemModel::rowsInserted, this, [this] {
        m_thumbs->forget();
        selectFromSession();
    });
    connect(m_thumbs, &ClipThumbs::ready, this, [this](const QString &path) {
        // Only rows on screen asked for pictures; repaint the thumbnail cells among them.
        const int first = rowAt(0);
        const int last = rowAt(viewport()->height() - 1);
        if (first < 0)
            return;
        for (int row = first; row <= (last < 0 ? m_model->rowCount() - 1 : last); ++row) {
            const QModelIndex index = m_model->index(row, ClipTableModel::ThumbColumn);
            if (index.data(ClipTableModel::PathRole).toString() == path)
                viewport()->update(visualRect(index));
        }
    });

    // One clock for every badge on screen: ok and warn badges breathe together.
    m_pulse.setStartValue(0.0);
    m_pulse.setEndValue(1.0);
    m_pulse.setDuration(1200);
    m_pulse.setEasingCurve(QEasingCurve::InOutSine);
    m_pulse.setLoopCount(-1);
    connect(&m_pulse, &QVariantAnimation::currentLoopChanged, this, [this](int loop) {
        m_pulse.setDirection(loop % 2 ? QAbstractAnimation::Backward : QAbstractAnimation::Forward);
    });
    connect(&m_pulse, &QVariantAnimation::valueChanged, this, [this](const QVariant &v) {
        // Twelve steps each way are as smooth as sixty for a soft glow, at a fifth of the
        // repaints of every visible badge.
        const qreal stepped = std::round(v.toReal() * 12.0) / 12.0;
        if (stepped == m_shownGlow)
            return;
        m_shownGlow = stepped;
        m_delegate->setGlow(stepped);
        repaintHealthColumn();
    });
    selectFromSession();
}

ClipTableView::~ClipTableView() = default;

void ClipTableView::applyCompact()
{
    const bool compact = m_context.compact();
    m_delegate->setCompact(compact);
    verticalHeader()->setDefaultSectionSize(m_delegate->rowHeight());
    for (int c = 0; c < ClipTableModel::ColumnCount; ++c) {
        if (c == ClipTableModel::NameColumn)
            continue;
        horizontalHeader()->setSectionResizeMode(c, QHeaderView::Fixed);
        setColumnWidth(c, ClipTableDelegate::columnWidth(c, compact));
    }
    horizontalHeader()->setSectionResizeMode(ClipTableModel::NameColumn, QHeaderView::Stretch);
    setColumnHidden(ClipTableModel::SizeColumn, compact);
    viewport()->update();
}

void ClipTableView::selectFromSession()
{
    const std::optional<QUuid> &id = m_context.viewModel.selectedClipID();
    const int row = id ? m_model->rowOf(*id) : -1;
    const QModelIndex current = currentIndex();
    if (row >= 0 && current.isValid() && current.row() == row &&
        selectionModel()->isRowSelected(row, {}))
        return;
    m_syncingSelection = true;
    if (row < 0) {
        selectionModel()->clear();
    } else {
        const QModelIndex index = m_model->index(row, ClipTableModel::NameColumn);
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                     QItemSelectionModel::Rows);
    }
    m_syncingSelection = false;
}

void ClipTableView::setFaceColor(const QColor &color)
{
    m_faceColor = color;
    viewport()->update();
}

void ClipTableView::setPulseFrozen(bool frozen)
{
    m_pulseFrozen = frozen;
    if (frozen)
        m_delegate->setGlow(0.6);
    updatePulse();
    viewport()->update();
}

void ClipTableView::updatePulse()
{
    if (isVisible() && !m_pulseFrozen && m_model->rowCount() > 0) {
        if (m_pulse.state() != QAbstractAnimation::Running)
            m_pulse.start();
    } else {
        m_pulse.stop();
    }
}

void ClipTableView::repaintHealthColumn()
{
    const int x = columnViewportPosition(ClipTableModel::HealthColumn);
    const int w = columnWidth(ClipTableModel::HealthColumn);
    // The badge sits at the cell's left; its glow needs only that strip.
    viewport()->update(QRect(x, 0, std::min(w, 70), viewport()->height()));
}

void ClipTableView::showEvent(QShowEvent *event)
{
    QTableView::showEvent(event);
    updatePulse();
}

void ClipTableView::hideEvent(QHideEvent *event)
{
    QTableView::hideEvent(event);
    updatePulse();
}

void ClipTableView::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
}

void ClipTableView::paintEvent(QPaintEvent *event)
{
    // Rows are rounded capsules across all cells: the hover and selection fills are drawn here,
    // under the cells, which the delegate paints without backgrounds.
    {
        QPainter p(viewport());
        p.fillRect(event->rect(), m_faceColor);
        p.setRenderHint(QPainter::Antialiasing);
        const int first = rowAt(event->rect().top());
        int last = rowAt(event->rect().bottom());
        if (last < 0)
            last = m_model->rowCount() - 1;
        const int selected = currentIndex().isValid() && selectionModel()->hasSelection()
                                 ? currentIndex().row()
                                 : -1;
        for (int row = std::max(0, first); first >= 0 && row <= last; ++row) {
            if (row != selected && row != m_hoverRow)
                continue;
            const QRectF r(2, rowViewportPosition(row) + 2, viewport()->width() - 4,
                           rowHeight(row) - 4);
            if (row == selected) {
                p.setBrush(AppTheme::withAlpha(AppTheme::accentGreen, 0.13));
                p.setPen(QPen(AppTheme::withAlpha(AppTheme::accentGreen, 0.35), 1));
            } else {
                p.setBrush(AppTheme::white(0.04));
                p.setPen(Qt::NoPen);
            }
            p.drawRoundedRect(r.adjusted(0.5, 0.5, -0.5, -0.5), 10, 10);
        }
    }
    QTableView::paintEvent(event);
}

void ClipTableView::mouseMoveEvent(QMouseEvent *event)
{
    const int row = rowAt(event->position().toPoint().y());
    if (row != m_hoverRow) {
        const int old = m_hoverRow;
        m_hoverRow = row;
        for (int r : {old, row}) {
            if (r >= 0)
                viewport()->update(
                    QRect(0, rowViewportPosition(r), viewport()->width(), rowHeight(r)));
        }
    }
    QTableView::mouseMoveEvent(event);
}

void ClipTableView::leaveEvent(QEvent *event)
{
    if (m_hoverRow >= 0) {
        m_hoverRow = -1;
        viewport()->update();
    }
    QTableView::leaveEvent(event);
}

QMenu *ClipTableView::makeRowMenu(int row)
{
    const MediaClip *clip = m_model->clipAt(row);
    if (!clip)
        return nullptr;
    const QUuid id = clip->id;
    PackViewModel &vm = m_context.viewModel;
    auto *menu = new RowMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(withoutMnemonic(m_context.text(u"table.up")), this,
                    [&vm, id] { vm.moveUp(id); });
    menu->addAction(withoutMnemonic(m_context.text(u"table.down")), this,
                    [&vm, id] { vm.moveDown(id); });
    menu->addSeparator();
    QAction *remove = menu->addAction(withoutMnemonic(m_context.text(u"table.delete")), this,
                                      [&vm, id] { vm.remove(id); });
    remove->setProperty("destructive", true);
    if (clip->hasAudio) {
        QAction *strip = menu->addAction(withoutMnemonic(m_context.text(u"audio.remove")), this,
                                         [&vm, id] { vm.stripAudio({id}); });
        strip->setToolTip(m_context.text(u"audio.remove.help"));
        strip->setEnabled(!vm.isConverting());
    }
    return menu;
}

void ClipTableView::contextMenuEvent(QContextMenuEvent *event)
{
    const int row = rowAt(event->pos().y());
    QMenu *menu = makeRowMenu(row);
    if (!menu)
        return;
    menu->popup(event->globalPos());
}

void ClipTableView::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls() && event->source() != this) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
        return;
    }
    QTableView::dragEnterEvent(event);
}

void ClipTableView::dragMoveEvent(QDragMoveEvent *event)
{
    if (event->mimeData()->hasUrls() && event->source() != this) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
        return;
    }
    QTableView::dragMoveEvent(event);
}

void ClipTableView::dropEvent(QDropEvent *event)
{
    if (event->mimeData()->hasUrls() && event->source() != this) {
        m_context.viewModel.handleDrop(event->mimeData()->urls());
        event->setDropAction(Qt::CopyAction);
        event->accept();
        return;
    }
    QTableView::dropEvent(event);
}
