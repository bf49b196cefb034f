#include "watchfoldermonitor.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>

#include <sys/inotify.h>
#include <unistd.h>

#include <cerrno>

namespace {

// Entries coming and going, and file contents: a copy into the folder shows as create, modify
// and close-after-write; an export replacing a file in place as modify and close.
constexpr uint32_t kFolderEvents = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MODIFY |
                                   IN_ATTRIB | IN_CLOSE_WRITE | IN_DELETE_SELF | IN_MOVE_SELF |
                                   IN_ONLYDIR;

bool isHiddenName(const QString &name)
{
    return name.startsWith(u'.');
}

bool isUnder(const QString &path, const QString &folder)
{
    return path == folder || path.startsWith(folder + u'/');
}

} // namespace

WatchFolderMonitor::WatchFolderMonitor(QObject *parent) : QObject(parent)
{
    m_debounce.setSingleShot(true);
    m_debounce.setInterval(kDebounceMs);
    connect(&m_debounce, &QTimer::timeout, this, [this] {
        if (m_folder && m_onChange)
            m_onChange(*m_folder);
    });
}

WatchFolderMonitor::~WatchFolderMonitor()
{
    closeInotify();
}

void WatchFolderMonitor::start(const QString &folder, std::function<void(const QString &)> onChange)
{
    stop();
    m_onChange = std::move(onChange);
    m_folder = folder;
    Q_EMIT folderChanged();

    m_inotify = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (m_inotify < 0)
        return; // failed open: no events will come, the folder is remembered
    const QString root = QFileInfo(folder).canonicalFilePath();
    if (!root.isEmpty())
        m_rootWatch =
            ::inotify_add_watch(m_inotify, QFile::encodeName(root).constData(), kFolderEvents);
    if (m_rootWatch < 0) {
        closeInotify();
        return;
    }
    m_folders.insert(m_rootWatch, root);
    watchTree(root);
    m_notifier = std::make_unique<QSocketNotifier>(m_inotify, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] { readEvents(); });
    setWatching(true);
}

void WatchFolderMonitor::stop()
{
    m_debounce.stop();
    closeInotify();
    setWatching(false);
    const bool hadFolder = m_folder.has_value();
    m_folder.reset();
    m_onChange = nullptr;
    if (hadFolder)
        Q_EMIT folderChanged();
}

void WatchFolderMonitor::closeInotify()
{
    m_notifier.reset();
    if (m_inotify >= 0)
        ::close(m_inotify); // drops every watch with it
    m_inotify = -1;
    m_rootWatch = -1;
    m_folders.clear();
    m_writing.clear();
    m_lostFolder = false;
}

// Adds a watch for every folder below `folder` (already watched itself), as discovery walks
// them: hidden folders left out, linked folders followed. The kernel hands out one descriptor
// per folder, so a link loop ends at a folder already known.
void WatchFolderMonitor::watchTree(const QString &folder)
{
    const QFileInfoList children = QDir(folder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QFileInfo &child : children) {
        if (isHiddenName(child.fileName()))
            continue;
        const QString real = child.canonicalFilePath();
        const int watch =
            ::inotify_add_watch(m_inotify, QFile::encodeName(real).constData(), kFolderEvents);
        // Out of watches (ENOSPC) or gone already: the rest of the tree is still watched.
        if (watch < 0 || m_folders.contains(watch))
            continue;
        m_folders.insert(watch, real);
        watchTree(real);
    }
}

void WatchFolderMonitor::readEvents()
{
    alignas(inotify_event) char buffer[16 * 1024];
    bool news = false;
    for (;;) {
        const ssize_t length = ::read(m_inotify, buffer, sizeof buffer);
        if (length <= 0)
            break; // EAGAIN: all read
        for (ssize_t at = 0; at < length;) {
            const auto *event = reinterpret_cast<const inotify_event *>(buffer + at);
            at += ssize_t(sizeof(inotify_event) + event->len);
            const uint32_t mask = event->mask;
            if (mask & IN_Q_OVERFLOW) {
                // Events were lost: nothing is known about open files any more.
                m_writing.clear();
                news = true;
                continue;
            }
            const QString folder = m_folders.value(event->wd);
            if (event->wd == m_rootWatch &&
                (mask & (IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED))) {
                m_lostFolder = true;
                news = true;
            }
            if (mask & IN_IGNORED) {
                m_folders.remove(event->wd);
                continue;
            }
            if (folder.isEmpty() || event->len == 0)
                continue;
            const QString name = QFile::decodeName(event->name);
            const QString path = folder + u'/' + name;
            if (mask & IN_MODIFY) {
                // Only the first write of a copy is news; the rest would hold off the report
                // until the copy ends, and the wait for it would go unannounced.
                if (!m_writing.contains(path)) {
                    m_writing.insert(path);
                    news = true;
                }
                continue;
            }
            if (mask & (IN_CLOSE_WRITE | IN_DELETE | IN_MOVED_FROM))
                m_writing.remove(path);
            if ((mask & IN_MOVED_FROM) && (mask & IN_ISDIR)) {
                for (auto it = m_folders.begin(); it != m_folders.end();) {
                    if (isUnder(it.value(), path)) {
                        ::inotify_rm_watch(m_inotify, it.key());
                        it = m_folders.erase(it);
                    } else {
                        ++it;
                    }
                }
            }
            if ((mask & (IN_CREATE | IN_MOVED_TO)) && (mask & IN_ISDIR) && !isHiddenName(name)) {
                const int watch = ::inotify_add_watch(
                    m_inotify, QFile::encodeName(path).constData(), kFolderEvents);
                if (watch >= 0) {
                    m_folders.insert(watch, QFileInfo(path).canonicalFilePath());
                    watchTree(m_folders.value(watch));
                }
            }
            news = true;
        }
    }
    if (news)
        scheduleFire();
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
