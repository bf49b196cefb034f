#pragma once

#include <QByteArray>
#include <QString>

#include <dlfcn.h>

#include <utility>

// A shared library opened when first needed rather than when the program starts, for what only
// some runs use. `Functions` is a struct of function pointers; `bind` fills it through
// `resolve` and says whether every one was found.
template<typename Functions>
class RuntimeLibrary
{
public:
    template<typename Bind>
    RuntimeLibrary(QByteArray soname, Bind bind) : m_soname(std::move(soname))
    {
        // Never unloaded: what it made may live until the process ends.
        m_handle = dlopen(m_soname.constData(), RTLD_NOW | RTLD_LOCAL);
        if (!m_handle) {
            m_why = QString::fromLocal8Bit(dlerror());
            return;
        }
        if (!bind(*this, m_functions))
            m_functions = {};
    }

    template<typename Function>
    bool resolve(const char *name, Function &into)
    {
        into = reinterpret_cast<Function>(dlsym(m_handle, name));
        if (!into)
            m_why = QStringLiteral("%1 lacks %2")
                        .arg(QString::fromLatin1(m_soname), QString::fromLatin1(name));
        return into != nullptr;
    }

    // Null when the library or one of its functions is missing, with the reason in `why`.
    const Functions *functions(QString *why) const
    {
        if (why)
            *why = m_why;
        return m_why.isEmpty() ? &m_functions : nullptr;
    }

private:
    QByteArray m_soname;
    void *m_handle = nullptr;
    Functions m_functions;
    QString m_why; // empty when loaded
};
