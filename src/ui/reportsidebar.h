#pragma once

#include "uicontext.h"

#include <QWidget>

class BentoMetric;
class ClipPreviewView;
class QLabel;

// The left column of the window. For now it holds the selected clip's card (preview, Arena name
// and the status, resolution and frame-rate tiles); the report's other cards join it later.
class ReportSidebar final : public QWidget
{
    Q_OBJECT
public:
    explicit ReportSidebar(const UiContext &context, QWidget *parent = nullptr);

    static int widthFor(bool compact) { return compact ? 280 : 320; }
    ClipPreviewView *preview() const { return m_preview; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void refresh();
    void applyCompact();

    UiContext m_context;
    QWidget *m_selectedCard;
    QLabel *m_hint;
    ClipPreviewView *m_preview;
    QLabel *m_name;
    BentoMetric *m_status;
    BentoMetric *m_resolution;
    BentoMetric *m_frameRate;
    QWidget *m_details;
};
