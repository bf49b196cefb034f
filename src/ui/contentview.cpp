#include "contentview.h"

#include "ambientbackground.h"
#include "detailarea.h"
#include "session/platform.h"
#include "sidebar/reportsidebarview.h"

#include <QHBoxLayout>

ContentView::ContentView(const UiContext &context, Desktop &desktop, QWidget *parent)
    : QWidget(parent)
    , m_background(new AmbientBackground(1.0, this))
    , m_sidebar(new ReportSidebarView(context, desktop))
    , m_detail(new DetailArea(context))
{
    setObjectName(QStringLiteral("contentView"));
    // The backdrop is the parent of the row, so its redraws can skip what the cards cover.
    auto *row = new QHBoxLayout(m_background);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_sidebar);
    row->addWidget(m_detail, 1);
}

void ContentView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_background->setGeometry(rect());
}
