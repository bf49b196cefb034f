#include "watchfoldermonitor.h"

#include <QFileSystemWatcher>

WatchFolderMonitor::WatchFolderMonitor(QObject *parent) : QObject(parent)
{
    m_debounce.setSingleShot(true);
    m_debounce.setInterval(kDebounceMs);
    connect(&m_debounce, &QTimer::timeout, this, [this] {
        if (m_folder && m_onChange)
            m_onChange(*m_folder);
    });
}

WatchFolderMonitor::~WatchFolderMonitor() = default;

void WatchFolderMonitor::start(const QString &folder, std::function<void(const QString &)> onChange)
{
    stop();
    m_onChange = std::move(onChange);
    m_folder = folder;
    Q_EMIT folderChanged();

    auto watcher = std::make_unique<QFileSystemWatcher>();
    if (!watcher->addPath(folder))
        return; // failed open: no events will come, the folder is remembered
    // A burst of copies, renames or deletions becomes one report after the last of them.
    connect(watcher.get(), &QFileSystemWatcher::directoryChanged, this,
            [this](const QString &) { scheduleFire(); });
    m_watcher = std::move(watcher);
    setWatching(true);
}

void WatchFolderMonitor::stop()
{
    m_debounce.stop();
    m_watcher.reset();
    setWatching(false);
    const bool hadFolder = m_folder.has_value();
    m_folder.reset();
    m_onChange = nullptr;
    if (hadFolder)
        Q_EMIT folderChanged();
}

void WatchFolderMonitor::scheduleFire()
{
    m_debounce.start(); // restarts the quiet period
}

void WatchFolderMonitor::setWatching(bool on)
{
    if (m_isWatching == on)
        return;
    m_isWatching = on;
    Q_EMIT isWatchingChanged();
}
