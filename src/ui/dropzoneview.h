#pragma once

#include "uicontext.h"

#include <QVariantAnimation>
#include <QWidget>

class KitButton;
class QLabel;

// The empty pack: a dashed card inviting a drop, with "Open…" and "Clear". Files dropped on it
// (file URLs from the desktop) go to the session's handleDrop.
class DropZoneView final : public QWidget
{
    Q_OBJECT
public:
    explicit DropZoneView(const UiContext &context, QWidget *parent = nullptr);

    bool isTargeted() const { return m_targeted; }
    KitButton *openButton() const { return m_open; }
    KitButton *clearButton() const { return m_clear; }
    // Screenshots and tests: no breathing icon, entrance finished.
    void setFrozen(bool frozen);

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QRectF cardRect() const;
    void scaleTo(qreal scale);
    void updateClear();

    UiContext m_context;
    QWidget *m_card;
    QWidget *m_glow;
    QLabel *m_title;
    KitButton *m_open;
    KitButton *m_clear;
    bool m_targeted = false;
    bool m_appeared = false;
    qreal m_scale = 0.94;
    QVariantAnimation m_scaleAnimation;
};
