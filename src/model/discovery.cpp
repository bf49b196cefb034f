#include "discovery.h"

#include "pathnames.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <sys/stat.h>

#include <algorithm>
#include <set>
#include <utility>

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

using DirKey = std::pair<dev_t, ino_t>;

// Depth-first, each folder's entries in file-browser order, descending into a folder as soon
// as it is met. `visited` holds the folders already walked so that links cannot loop.
void walk(const QString &folder, const QCollator &collator, std::set<DirKey> &visited,
          QStringList &out)
{
    struct stat info {};
    if (::stat(QFile::encodeName(folder).constData(), &info) != 0 || !S_ISDIR(info.st_mode))
        return;
    if (!visited.insert({info.st_dev, info.st_ino}).second)
        return;

    QDir dir(folder);
    // System lists dangling links too; Hidden is needed to see names the filter below judges.
    QStringList names = dir.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden |
                                          QDir::System,
                                      QDir::NoSort);
    std::stable_sort(names.begin(), names.end(), [&](const QString &a, const QString &b) {
        return collator.compare(a, b) < 0;
    });
    for (const QString &name : std::as_const(names)) {
        if (isHiddenName(name))
            continue;
        const QString child = folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
        // Like the platform enumerator, any item with a media name counts, even a folder.
        if (PathNames::isMedia(name))
            out.append(child);
        if (QFileInfo(child).isDir())
            walk(child, collator, visited, out);
    }
}

} // namespace

QStringList collectMedia(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return {};
    if (!info.isDir())
        return PathNames::isMedia(path) ? QStringList{path} : QStringList{};
    QStringList out;
    std::set<DirKey> visited;
    walk(QDir::cleanPath(info.absoluteFilePath()), makeCollator(), visited, out);
    return out;
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
    QStringList collected;
    for (const QString &location : dropped)
        collected += collectMedia(location);

    QStringList unique;
    QSet<QString> seen;
    for (const QString &path : std::as_const(collected)) {
        QString normal = normalizedPath(path);
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
    std::stable_sort(named.begin(), named.end(), [&](const auto &a, const auto &b) {
        return collator.compare(a.first, b.first) < 0;
    });

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
