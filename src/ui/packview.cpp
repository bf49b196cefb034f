#include "packview.h"

#include "cliptableview.h"
#include "glasscard.h"
#include "packheader.h"
#include "session/packviewmodel.h"

#include <QDropEvent>
#include <QMimeData>
#include <QVBoxLayout>

PackView::PackView(const UiContext &context, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_header(new PackHeader(context))
    , m_table(new ClipTableView(context))
{
    setObjectName(QStringLiteral("packView"));
    setAcceptDrops(true);
    // Card shadows take part of the design's paddings.
    constexpr int kShadow = GlassCard::kShadowMargin;
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(20 - kShadow, 20 - kShadow / 2, 20 - kShadow, 24 - kShadow);
    column->setSpacing(12 - kShadow);
    column->addWidget(m_header);
    auto *listCard = new GlassCard(16, GlassCard::Elevation::flat);
    auto *inset = new QVBoxLayout(listCard);
    inset->setContentsMargins(listCard->contentsMargins() + QMargins(10, 10, 10, 10));
    inset->addWidget(m_table);
    m_table->setFaceColor(listCard->faceColor());
    column->addWidget(listCard, 1);
}

void PackView::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void PackView::dragMoveEvent(QDragMoveEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void PackView::dropEvent(QDropEvent *event)
{
    if (!event->mimeData()->hasUrls())
        return;
    m_context.viewModel.handleDrop(event->mimeData()->urls());
    event->acceptProposedAction();
}
