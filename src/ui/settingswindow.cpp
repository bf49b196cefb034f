#include "settingswindow.h"

#include "ambientbackground.h"
#include "l10n/localizationmanager.h"
#include "settings/settingsview.h"
#include "symbols.h"

#include <QCloseEvent>
#include <QVBoxLayout>

SettingsWindow::SettingsWindow(const UiContext &context, Desktop &desktop, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_context(context)
    , m_desktop(desktop)
    , m_background(new AmbientBackground(0.7))
{
    setObjectName(QStringLiteral("settingsWindow"));
    setFixedSize(kSize);
    setWindowIcon(Symbols::applicationIcon());
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_background);
    auto *inside = new QVBoxLayout(m_background);
    inside->setContentsMargins(0, 0, 0, 0);
    rebuild();
    connect(&m_context.localization, &LocalizationManager::languageChanged, this,
            &SettingsWindow::rebuild);
}

void SettingsWindow::rebuild()
{
    setWindowTitle(m_context.text(u"settings.title"));
    const SettingsSection section = m_view ? m_view->section() : SettingsSection::language;
    // A language chip of the old page is still inside its click when this runs: the old page
    // leaves the screen now and is deleted once the click has returned.
    if (m_view) {
        m_view->hide();
        m_background->layout()->removeWidget(m_view);
        m_view->deleteLater();
    }
    m_view = new SettingsView(m_context, m_desktop, section);
    m_background->layout()->addWidget(m_view);
}

SettingsView *SettingsWindow::view() const
{
    return m_view;
}

void SettingsWindow::closeEvent(QCloseEvent *event)
{
    // Each opening starts on the first section, also when the window is kept for reuse.
    if (m_view)
        m_view->setSection(SettingsSection::language);
    QWidget::closeEvent(event);
}
