#pragma once

#include "applanguage.h"
#include "textformat.h"

#include <QHash>
#include <QString>
#include <QStringList>

// The string tables bound to one language. Lookup falls back to English, then to the key.
class L10n
{
public:
    explicit L10n(AppLanguage language = AppLanguage::english) : m_language(language) {}

    AppLanguage language() const { return m_language; }
    QString operator[](QStringView key) const;
    // Looks the template up, then fills it; a template without placeholders comes back as is.
    QString format(QStringView key, std::initializer_list<FormatArg> args) const;

    // The keys of one language's table in table order (for checks of the tables themselves).
    static QStringList keys(AppLanguage language);
    static bool contains(AppLanguage language, QStringView key);

private:
    AppLanguage m_language;
};
