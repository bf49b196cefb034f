#pragma once

#include "uicontext.h"

#include <QWidget>

class ClipTableView;
class PackHeader;

// The pack: its header card above the clip list card. Files dropped anywhere on it are added.
class PackView final : public QWidget
{
    Q_OBJECT
public:
    explicit PackView(const UiContext &context, QWidget *parent = nullptr);

    PackHeader *header() const { return m_header; }
    ClipTableView *table() const { return m_table; }

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    UiContext m_context;
    PackHeader *m_header;
    ClipTableView *m_table;
};
