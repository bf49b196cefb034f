#pragma once

#include "runtimelibrary.h"

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <atomic>
#include <mutex>

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

// What a module provides to the program: the functions installed by a program that links the
// code in, or else the module, loaded on first use, once for the whole process. Thread-safe: a
// caller that comes while another thread loads the module waits for it.
template<typename Module>
class Slot
{
public:
    // `unavailable` begins the warning printed once when the module cannot be loaded: the
    // files it concerns are otherwise reported only as unreadable.
    Slot(const char *fileName, const char *entryName, const char *unavailable)
        : m_fileName(fileName), m_entryName(entryName), m_unavailable(unavailable)
    {}

    // Before any `get`.
    void install(const Module *linked) { m_installed.store(linked, std::memory_order_release); }

    const Module *get(QString *why)
    {
        if (const Module *linked = m_installed.load(std::memory_order_acquire))
            return linked;
        std::call_once(m_once, [this] {
            m_loaded = load<Module>(m_fileName, m_entryName, m_why);
            if (!m_loaded)
                qWarning("cuebox: %s: %s", m_unavailable, qUtf8Printable(m_why));
        });
        if (why)
            *why = m_why;
        return m_loaded;
    }

    bool isInstalled() const { return m_installed.load(std::memory_order_acquire) != nullptr; }

private:
    const char *m_fileName;
    const char *m_entryName;
    const char *m_unavailable;
    std::atomic<const Module *> m_installed{nullptr};
    std::once_flag m_once;
    const Module *m_loaded = nullptr;
    QString m_why;
};

} // namespace ModuleFile
