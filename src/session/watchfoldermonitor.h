#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class QFileSystemWatcher;

// Watches one folder's entries and reports once per burst of changes, after a quiet period,
// on the GUI thread.
class WatchFolderMonitor final : public QObject
{
    Q_OBJECT
public:
    static constexpr int kDebounceMs = 800;

    explicit WatchFolderMonitor(QObject *parent = nullptr);
    ~WatchFolderMonitor() override;

    // Replaces any earlier watch. A folder that cannot be watched leaves the monitor in the
    // failed-open state: not watching, but the folder is kept.
    void start(const QString &folder, std::function<void(const QString &)> onChange);
    // Ends watching and forgets folder and callback; harmless when already stopped.
    void stop();

    bool isWatching() const { return m_isWatching; }
    const std::optional<QString> &folder() const { return m_folder; }

Q_SIGNALS:
    void isWatchingChanged();
    void folderChanged();

private:
    void scheduleFire();
    void setWatching(bool on);

    std::unique_ptr<QFileSystemWatcher> m_watcher;
    QTimer m_debounce;
    std::optional<QString> m_folder;
    std::function<void(const QString &)> m_onChange;
    bool m_isWatching = false;
};
