#include "detailarea.h"

#include "dropzoneview.h"
#include "motion.h"
#include "packview.h"
#include "scanningoverlay.h"
#include "session/packviewmodel.h"

DetailArea::DetailArea(const UiContext &context, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_dropZone(new DropZoneView(context, this))
    , m_packView(new PackView(context, this))
    , m_overlay(new ScanningOverlay(this))
{
    setObjectName(QStringLiteral("detailArea"));
    m_showsPack = !m_context.viewModel.clips().isEmpty() || m_context.viewModel.isScanning();
    m_dropZone->setVisible(!m_showsPack);
    m_packView->setVisible(m_showsPack);
    m_overlay->hide();
    m_overlay->raise();

    PackViewModel &vm = m_context.viewModel;
    connect(&vm, &PackViewModel::clipsChanged, this, &DetailArea::updateContent);
    connect(&vm, &PackViewModel::isScanningChanged, this, [this] {
        updateContent();
        updateOverlay();
    });
    for (auto changed : {&PackViewModel::isExportingChanged, &PackViewModel::exportProgressChanged,
                         &PackViewModel::statusChanged})
        connect(&vm, changed, this, &DetailArea::updateOverlay);
    updateOverlay();
}

void DetailArea::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    for (QWidget *w : {static_cast<QWidget *>(m_dropZone), static_cast<QWidget *>(m_packView),
                       static_cast<QWidget *>(m_overlay)})
        w->setGeometry(rect());
}

void DetailArea::updateContent()
{
    const PackViewModel &vm = m_context.viewModel;
    const bool showPack = !vm.clips().isEmpty() || vm.isScanning();
    if (showPack == m_showsPack)
        return;
    m_showsPack = showPack;
    // The emptiness of the pack decides the view; the luxurious spring marks that change.
    if (showPack) {
        Motion::leave(m_dropZone, AppTheme::Spring::luxury);
        m_packView->setGeometry(rect());
        Motion::enter(m_packView, Motion::Entrance::fadeSlideUp, AppTheme::Spring::luxury);
    } else {
        Motion::leave(m_packView, AppTheme::Spring::luxury);
        m_dropZone->setGeometry(rect());
        Motion::enter(m_dropZone, Motion::Entrance::fade, AppTheme::Spring::luxury);
    }
    m_overlay->raise();
}

void DetailArea::updateOverlay()
{
    const PackViewModel &vm = m_context.viewModel;
    const bool busy = vm.isScanning() || vm.isExporting();
    if (busy) {
        QString message = vm.statusText();
        if (message.isEmpty())
            message = m_context.text(u"scan.default");
        m_overlay->setMessage(message);
        m_overlay->setProgress(vm.isExporting() ? std::optional<double>(vm.exportProgress())
                                                : std::nullopt);
    }
    if (busy == m_overlayShown)
        return;
    m_overlayShown = busy;
    if (busy) {
        m_overlay->setGeometry(rect());
        m_overlay->raise();
        Motion::enter(m_overlay, Motion::Entrance::fade, AppTheme::Spring::soft);
    } else {
        Motion::leave(m_overlay, AppTheme::Spring::soft);
    }
}
