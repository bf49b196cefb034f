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

// Stable, in file-browser order. Each name is collated once into a sort key, and keys compare
// as bytes: comparing the names themselves collated both of them on every comparison, which
// was most of the time a big folder took to list.
template<typename T, typename NameOf>
void sortByName(QList<T> &items, const QCollator &collator, NameOf nameOf)
{
    std::vector<std::pair<QCollatorSortKey, qsizetype>> keyed;
    keyed.reserve(static_cast<size_t>(items.size()));
    for (qsizetype i = 0; i < items.size(); ++i)
        keyed.emplace_back(collator.sortKey(nameOf(items[i])), i);
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto &a, const auto &b) { return a.first.compare(b.first) < 0; });
    QList<T> sorted;
    sorted.reserve(items.size());
    for (const auto &[key, index] : keyed)
        sorted.append(std::move(items[index]));
    items = std::move(sorted);
}

using DirKey = std::pair<dev_t, ino_t>;

// A media item as found and its normalised path. Below a folder whose real path is known, an
// entry that is not a link has the real path folder + name, so only links cost a resolution:
// resolving every file anew took seven readlink calls each.
struct Found {
    QString path;
    QString normal;
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

    QList<Entry> entries = entriesOf(folder);
    sortByName(entries, collator, [](const Entry &entry) { return entry.name; });
    const auto join = [](const QString &parent, const QString &name) {
        return parent.endsWith(u'/') ? parent + name : parent + u'/' + name;
    };
    for (const Entry &entry : std::as_const(entries)) {
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
        if (PathNames::isMedia(entry.name))
            out.append({child, realChild});
        if (type == DT_DIR || (link && QFileInfo(child).isDir()))
            walk(child, realChild, collator, visited, out);
    }
}

QList<Found> collectFound(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return {};
    if (!info.isDir())
        return PathNames::isMedia(path) ? QList<Found>{{path, normalizedPath(path)}}
                                        : QList<Found>{};
    QList<Found> out;
    std::set<DirKey> visited;
    const QString folder = QDir::cleanPath(info.absoluteFilePath());
    walk(folder, normalizedPath(folder), makeCollator(), visited, out);
    return out;
}

} // namespace

QStringList collectMedia(const QString &path)
{
    QStringList paths;
    for (Found &found : collectFound(path))
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
    QList<Found> collected;
    for (const QString &location : dropped)
        collected += collectFound(location);

    QStringList unique;
    QSet<QString> seen;
    for (Found &found : collected) {
        QString normal = std::move(found.normal);
        if (seen.contains(normal))
            continue;
        seen.insert(normal);
        unique.append(std::move(normal));
    }

    const QCollator collator = makeCollator();
    QList<std::pair<QString, QString>> named; // (file name, path): names computed once
    named.reserve(unique.size());
    for (const QString &path : std::as_const(unique))
        named.append({PathNames::lastComponent(path), path});
    sortByName(named, collator, [](const auto &item) { return item.first; });

    QSet<QString> inPack;
    for (const QString &path : existing)
        inPack.insert(normalizedPath(path));
    QStringList fresh;
    for (const auto &[name, path] : std::as_const(named)) {
        if (!inPack.contains(path))
            fresh.append(path);
    }
    return fresh;
}

} // namespace Discovery
