#pragma once

#include "uicontext.h"

#include <QWidget>

class DropZoneView;
class PackView;
class ScanningOverlay;

// The right side of the window: the drop zone for an empty pack, otherwise the pack view
// (also while the first scan of an empty pack runs), with the overlay on top while a scan or
// an export runs. Which is shown follows the session; the switch is animated.
class DetailArea final : public QWidget
{
    Q_OBJECT
public:
    explicit DetailArea(const UiContext &context, QWidget *parent = nullptr);

    DropZoneView *dropZone() const { return m_dropZone; }
    PackView *packView() const { return m_packView; }
    ScanningOverlay *overlay() const { return m_overlay; }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void updateContent();
    void updateOverlay();

    UiContext m_context;
    DropZoneView *m_dropZone;
    PackView *m_packView;
    ScanningOverlay *m_overlay;
    bool m_showsPack = false;
    bool m_overlayShown = false; // the overlay may still be fading out while this is false
};
