#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class QSocketNotifier;

// Watches one folder and every folder below it (new ones as they appear) and reports once per
// burst of changes, after a quiet period, on the GUI thread. It also remembers which files the
// kernel has seen written to and not yet closed, so that a copy still in progress is not taken
// for a finished file.
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
    // True while `path` (with its folders' links resolved) has been written to and not closed.
    // Only local file systems say so; elsewhere this is always false.
    bool isBeingWritten(const QString &path) const { return m_writing.contains(path); }
    // The watched folder itself went away: deleted, moved or unmounted. No events follow.
    bool lostFolder() const { return m_lostFolder; }
    qsizetype watchedFolderCount() const { return m_folders.size(); }

Q_SIGNALS:
    void isWatchingChanged();
    void folderChanged();

private:
    void scheduleFire();
    void setWatching(bool on);
    void readEvents();
    void watchTree(const QString &folder);
    void closeInotify();

    int m_inotify = -1;
    int m_rootWatch = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QHash<int, QString> m_folders; // watch descriptor -> folder with links resolved
    QSet<QString> m_writing;
    bool m_lostFolder = false;
    QTimer m_debounce;
    std::optional<QString> m_folder;
    std::function<void(const QString &)> m_onChange;
    bool m_isWatching = false;
};
