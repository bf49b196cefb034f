#include "settingswindow.h"

#include "ambientbackground.h"
#include "sheetscaffold.h"
#include "symbols.h"

#include <QVBoxLayout>

SettingsWindow::SettingsWindow(const UiContext &context, QWidget *parent)
    : QWidget(parent, Qt::Window), m_context(context)
{
    setObjectName(QStringLiteral("settingsWindow"));
    setFixedSize(620, 500);
    setWindowIcon(Symbols::applicationIcon());
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    rebuild();
}

void SettingsWindow::rebuild()
{
    setWindowTitle(m_context.text(u"settings.title"));
    if (m_content)
        m_content->deleteLater();
    auto *background = new AmbientBackground(0.7);
    auto *column = new QVBoxLayout(background);
    column->setContentsMargins(0, 0, 0, 0);
    auto *scaffold = new SheetScaffold(m_context.text(u"settings.title"), QString());
    scaffold->setOpaque(false);
    scaffold->setContent(new QWidget);
    column->addWidget(scaffold);
    m_content = background;
    layout()->addWidget(background);
}
