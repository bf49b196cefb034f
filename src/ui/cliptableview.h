#pragma once

#include "apptheme.h"
#include "uicontext.h"

#include <QElapsedTimer>
#include <QTableView>
#include <QVariantAnimation>

class ClipTableDelegate;
class ClipTableModel;
class ClipThumbs;

// The clip list: one painted row per clip in pack order, no header, single selection bound to
// the session's selectedClipID, the Arena name edited in place, rows dragged to a new place
// (the session reorders and renames), files dropped from the desktop ingested, and a context
// menu per row. Thumbnails load only for rows that are painted.
class ClipTableView final : public QTableView
{
    Q_OBJECT
public:
    explicit ClipTableView(const UiContext &context, QWidget *parent = nullptr);
    ~ClipTableView() override;

    ClipTableModel *clipModel() const { return m_model; }
    ClipTableDelegate *clipDelegate() const { return m_delegate; }
    ClipThumbs *thumbs() const { return m_thumbs; }
    // The row menu for a clip, as shown on a right click (tests read its actions).
    QMenu *makeRowMenu(int row);
    // Stops the badges' breathing (screenshots, benchmarks).
    void setPulseFrozen(bool frozen);
    // The list is opaque and fills with this: the face colour of the card it sits on.
    void setFaceColor(const QColor &color);

protected:
    void paintEvent(QPaintEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void applyCompact();
    void selectFromSession();
    void updatePulse();
    void repaintHealthColumn();

    UiContext m_context;
    ClipThumbs *m_thumbs;
    ClipTableModel *m_model;
    ClipTableDelegate *m_delegate;
    QVariantAnimation m_pulse;
    qreal m_shownGlow = -1; // the last glow step painted
    bool m_pulseFrozen = false;
    QColor m_faceColor = AppTheme::panel;
    int m_hoverRow = -1;
    bool m_syncingSelection = false;
};
