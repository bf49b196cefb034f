#include "cueboxapp.h"

#include "apptheme.h"
#include "cueboxstyle.h"
#include "l10n/apppreferences.h"
#include "l10n/localizationmanager.h"
#include "mainwindow.h"
#include "media/convert/ffmpegconversion.h"
#include "media/ffmpeg/ffmpegprobe.h"
#include "media/thumbnailcache.h"
#include "qtpanels.h"
#include "session/packviewmodel.h"
#include "session/systemdesktop.h"
#include "settingswindow.h"
#include "symbols.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>

CueboxApp::CueboxApp()
    : m_panels(std::make_unique<QtPanels>()), m_desktop(std::make_unique<SystemDesktop>())
{
    LocalizationManager &localization = LocalizationManager::shared();
    AppPreferences &preferences = AppPreferences::shared();
    PackViewModel::Services services;
    services.probe = std::make_shared<FfmpegProbe>();
    services.conversion = std::make_shared<FfmpegConversion>();
    services.panels = m_panels.get();
    services.desktop = m_desktop.get();
    services.localization = &localization;
    services.preferences = &preferences;
    services.requestThumbnail = [](const MediaClip &clip) {
        ThumbnailCache::shared().request(clip);
    };
    m_viewModel = std::make_unique<PackViewModel>(services);
    m_context = std::make_unique<UiContext>(
        UiContext{*m_viewModel, localization, preferences, ThumbnailCache::shared()});
    AppTheme::setCjkPreference(rawValue(localization.language()));
    connect(&localization, &LocalizationManager::languageChanged, this,
            [](AppLanguage language) { AppTheme::setCjkPreference(rawValue(language)); });
}

CueboxApp::~CueboxApp()
{
    delete m_settingsWindow;
    delete m_mainWindow;
}

void CueboxApp::applyLook()
{
    QApplication::setStyle(new CueboxStyle);
    QApplication::setPalette(CueboxStyle::darkPalette());
    QApplication::setFont(AppTheme::font(13));
    QApplication::setWindowIcon(Symbols::applicationIcon());
    QApplication::setDesktopFileName(QStringLiteral("cuebox"));
}

void CueboxApp::start(const QStringList &paths)
{
    m_mainWindow = new MainWindow(*m_context, *m_desktop);
    m_panels->setParent(m_mainWindow);
    connect(m_mainWindow, &MainWindow::settingsRequested, this, &CueboxApp::showSettings);
    m_mainWindow->show();
    QList<QUrl> urls;
    for (const QString &path : paths)
        urls.append(QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()));
    if (!urls.isEmpty())
        m_viewModel->handleDrop(urls);
}

void CueboxApp::showSettings()
{
    if (!m_settingsWindow) {
        m_settingsWindow = new SettingsWindow(*m_context, *m_desktop);
        m_settingsWindow->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_settingsWindow->show();
    m_settingsWindow->raise();
    m_settingsWindow->activateWindow();
}
