#include "discovery.h"

#include "pathnames.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace Discovery {

namespace {

bool isHiddenName(const QString &name)
{
    return name.startsWith(u'.');
}

QCollator makeCollator()
{
    // The "C" locale turns QCollator into a plain code-point compare without numeric mode,
    // so a machine without a locale still gets file-browser order.
    QLocale locale = QLocale::system();
    if (locale.language() == QLocale::C)
        locale = QLocale(QLocale::English, QLocale::UnitedStates);
    QCollator collator(locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

// The items in file-browser order (stable), as sort keys and indices. Each name is collated once
// into a sort key, and keys compare as bytes: comparing the names themselves collated both of
// them on every comparison, which was most of the time a big folder took to list.
template<typename T, typename NameOf>
std::vector<std::pair<QCollatorSortKey, qsizetype>>
sortedKeys(const QList<T> &items, const QCollator &collator, NameOf nameOf)
{
    std::vector<std::pair<QCollatorSortKey, qsizetype>> keyed;
    keyed.reserve(static_cast<size_t>(items.size()));
    for (qsizetype i = 0; i < items.size(); ++i)
        keyed.emplace_back(collator.sortKey(nameOf(items[i])), i);
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto &a, const auto &b) { return a.first.compare(b.first) < 0; });
    return keyed;
}

using DirKey = std::pair<dev_t, ino_t>;

// A media item as found and its normalised path. Below a folder whose real path is known, an
// entry that is not a link has the real path folder + name, so only links cost a resolution:
// resolving every file anew took seven readlink calls each.
struct Found {
    QString path;
    QString normal;
    QCollatorSortKey key; // of the normal path's file name: the pack is ordered by it
};

struct Entry {
    QString name;
    unsigned char type;
};

QList<Entry> entriesOf(const QString &folder)
{
    QList<Entry> entries;
    DIR *dir = ::opendir(QFile::encodeName(folder).constData());
    if (!dir)
        return entries;
    while (const dirent *item = ::readdir(dir)) {
        const QString name = QFile::decodeName(item->d_name);
        if (name == u"." || name == u"..")
            continue;
        entries.append({name, item->d_type});
    }
    ::closedir(dir);
    return entries;
}

// Depth-first, each folder's entries in file-browser order, descending into a folder as soon
// as it is met. `visited` holds the folders already walked so that links cannot loop.
void walk(const QString &folder, const QString &realFolder, const QCollator &collator,
          std::set<DirKey> &visited, QList<Found> &out)
{
    struct stat info {
    };
    if (::stat(QFile::encodeName(folder).constData(), &info) != 0 || !S_ISDIR(info.st_mode))
        return;
    if (!visited.insert({info.st_dev, info.st_ino}).second)
        return;

    const QList<Entry> entries = entriesOf(folder);
    const auto join = [](const QString &parent, const QString &name) {
        return parent.endsWith(u'/') ? parent + name : parent + u'/' + name;
    };
    for (const auto &[key, index] :
         sortedKeys(entries, collator, [](const Entry &entry) { return entry.name; })) {
        const Entry &entry = entries[index];
        if (isHiddenName(entry.name))
            continue;
        const QString child = join(folder, entry.name);
        unsigned char type = entry.type;
        if (type == DT_UNKNOWN) { // some file systems do not say; ask
            struct stat own {
            };
            if (::lstat(QFile::encodeName(child).constData(), &own) == 0)
                type = S_ISLNK(own.st_mode) ? DT_LNK : S_ISDIR(own.st_mode) ? DT_DIR : DT_REG;
        }
        const bool link = type == DT_LNK;
        const QString realChild = link ? normalizedPath(child) : join(realFolder, entry.name);
        // Like the platform enumerator, any item with a media name counts, even a folder.
        // A link's real name may sort elsewhere than its own.
        if (PathNames::isMedia(entry.name))
            out.append({child, realChild,
                        link ? collator.sortKey(PathNames::lastComponent(realChild)) : key});
        if (type == DT_DIR || (link && QFileInfo(child).isDir()))
            walk(child, realChild, collator, visited, out);
    }
}

QList<Found> collectFound(const QString &path, const QCollator &collator)
{
    const QFileInfo info(path);
    if (!info.exists())
        return {};
    if (!info.isDir()) {
        if (!PathNames::isMedia(path))
            return {};
        QString normal = normalizedPath(path);
        QCollatorSortKey key = collator.sortKey(PathNames::lastComponent(normal));
        return {{path, std::move(normal), std::move(key)}};
    }
    QList<Found> out;
    std::set<DirKey> visited;
    const QString folder = QDir::cleanPath(info.absoluteFilePath());
    walk(folder, normalizedPath(folder), collator, visited, out);
    return out;
}

} // namespace

QStringList collectMedia(const QString &path)
{
    QStringList paths;
    for (Found &found : collectFound(path, makeCollator()))
        paths.append(std::move(found.path));
    return paths;
}

QString normalizedPath(const QString &path)
{
    const QString clean = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    const QString canonical = QFileInfo(clean).canonicalFilePath();
    if (!canonical.isEmpty())
        return canonical;
    // The target is missing (a dangling link, a vanished file): resolve the folder part.
    const QFileInfo info(clean);
    const QString parent = QFileInfo(info.path()).canonicalFilePath();
    if (parent.isEmpty())
        return clean;
    return parent == QLatin1String("/") ? parent + info.fileName()
                                        : parent + u'/' + info.fileName();
}

bool fileBrowserLess(const QString &a, const QString &b)
{
    static thread_local const QCollator collator = makeCollator();
    return collator.compare(a, b) < 0;
}

QStringList freshMedia(const QStringList &dropped, const QStringList &existing)
{
    // One collator, and each file collated once: the walk's keys order the whole drop too.
    const QCollator collator = makeCollator();
    QList<Found> collected;
    for (const QString &location : dropped)
        collected += collectFound(location, collator);

    QList<Found> unique;
    QSet<QString> seen;
    for (Found &found : collected) {
        if (seen.contains(found.normal))
            continue;
        seen.insert(found.normal);
        unique.append(std::move(found));
    }
    std::vector<qsizetype> order(static_cast<size_t>(unique.size()));
    for (qsizetype i = 0; i < unique.size(); ++i)
        order[static_cast<size_t>(i)] = i;
    std::stable_sort(order.begin(), order.end(), [&](qsizetype a, qsizetype b) {
        return unique[a].key.compare(unique[b].key) < 0;
    });

    QSet<QString> inPack;
    for (const QString &path : existing)
        inPack.insert(normalizedPath(path));
    QStringList fresh;
    for (const qsizetype i : order) {
        if (!inPack.contains(unique[i].normal))
            fresh.append(unique[i].normal);
    }
    return fresh;
}

} // namespace Discovery
