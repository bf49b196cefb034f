#include "sidebarcard.h"

#include "ui/kitwidgets.h"

#include <QVBoxLayout>

SidebarCard::SidebarCard(const UiContext &context, const QString &symbol, const QString &titleKey,
                         const QString &tooltipKey, QWidget *parent)
    : GlassCard(14, Elevation::flat, parent), m_context(context), m_body(new QVBoxLayout(this))
{
    const int pad = context.compact() ? 10 : 14;
    m_body->setContentsMargins(pad, pad, pad, pad);
    m_body->setSpacing(10);
    if (!titleKey.isEmpty()) {
        auto *header = new SectionHeader(symbol, context.text(titleKey), context.text(tooltipKey));
        m_body->addWidget(header);
    }
}
