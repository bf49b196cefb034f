#pragma once

#include "settingswindow.h"
#include "uicontext.h"

#include <QObject>
#include <QPointer>

#include <memory>

class MainWindow;
class PackViewModel;
class QtPanels;

class SystemDesktop;

// The application object: the session (with the real media layer, panels and desktop), the
// shared localization and preferences, the look, and the two windows.
class CueboxApp final : public QObject
{
    Q_OBJECT
public:
    CueboxApp();
    ~CueboxApp() override;

    // Installs the style, palette, fonts and icon on the running QApplication.
    static void applyLook();

    // Opens the main window and adds `paths` (folders or files from the command line).
    void start(const QStringList &paths);
    void showSettings();

    PackViewModel &viewModel() { return *m_viewModel; }
    MainWindow *mainWindow() const { return m_mainWindow; }
    SettingsWindow *settingsWindow() const { return m_settingsWindow; }
    const UiContext &context() const { return *m_context; }

private:
    std::unique_ptr<QtPanels> m_panels;
    std::unique_ptr<SystemDesktop> m_desktop;
    std::unique_ptr<PackViewModel> m_viewModel;
    std::unique_ptr<UiContext> m_context;
    MainWindow *m_mainWindow = nullptr;
    QPointer<SettingsWindow> m_settingsWindow;
};
