#pragma once

#include "runtimelibrary.h"

#include <QByteArray>
#include <QString>

// Where the program's own modules are: next to the executable in a build tree, in the
// program's folder under the library folder once installed. Empty when neither holds the file.
namespace ModuleFile {

QByteArray path(const char *fileName);

// Opens the module `fileName` and returns what its one exported function `entryName` returns;
// null when the module is missing or cannot be loaded, with the reason in `why`. The module is
// never unloaded: what it made may live until the process ends.
template<typename Module>
const Module *load(const char *fileName, const char *entryName, QString &why)
{
    const QByteArray file = path(fileName);
    if (file.isEmpty()) {
        why = QStringLiteral("%1 is missing from this installation")
                  .arg(QString::fromLatin1(fileName));
        return nullptr;
    }
    struct Entry {
        const Module *(*entry)() = nullptr;
    };
    const RuntimeLibrary<Entry> library(
        file, [&](auto &opened, Entry &f) { return opened.resolve(entryName, f.entry); });
    const Entry *found = library.functions(&why);
    return found ? found->entry() : nullptr;
}

} // namespace ModuleFile
