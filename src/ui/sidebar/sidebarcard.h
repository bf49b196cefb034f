#pragma once

#include "ui/glasscard.h"
#include "ui/uicontext.h"

class QVBoxLayout;

// One card of the report sidebar: a glass card opening with its section header. The sidebar
// builds the cards once per language and calls refresh() whenever a value they show changes;
// refresh() only reads the session, the language and the preferences.
class SidebarCard : public GlassCard
{
    Q_OBJECT
public:
    SidebarCard(const UiContext &context, const QString &symbol, const QString &titleKey,
                const QString &tooltipKey, QWidget *parent = nullptr);

    virtual void refresh() {}

protected:
    QVBoxLayout *body() const { return m_body; }
    QString text(QStringView key) const { return m_context.text(key); }

    UiContext m_context;

private:
    QVBoxLayout *m_body;
};
