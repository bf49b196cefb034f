#include "heldfiles.h"

#include <QHash>

#include <fcntl.h>
#include <unistd.h>

#include <mutex>

namespace HeldFiles {

namespace {

struct Registry {
    std::mutex mutex;
    QHash<QString, int> fds;
};

Registry &registry()
{
    static Registry instance;
    return instance;
}

} // namespace

void hold(const QString &path, int fd)
{
    Registry &r = registry();
    const std::lock_guard lock(r.mutex);
    if (const auto it = r.fds.constFind(path); it != r.fds.cend())
        ::close(*it); // a second holder of the same path: the newer open wins
    r.fds.insert(path, fd);
}

int borrow(const QString &path)
{
    Registry &r = registry();
    const std::lock_guard lock(r.mutex);
    const auto it = r.fds.constFind(path);
    return it == r.fds.cend() ? -1 : ::fcntl(*it, F_DUPFD_CLOEXEC, 0);
}

bool holds(const QString &path)
{
    Registry &r = registry();
    const std::lock_guard lock(r.mutex);
    return r.fds.contains(path);
}

void release(const QString &path)
{
    Registry &r = registry();
    const std::lock_guard lock(r.mutex);
    if (const auto it = r.fds.find(path); it != r.fds.end()) {
        ::close(*it);
        r.fds.erase(it);
    }
}

} // namespace HeldFiles
