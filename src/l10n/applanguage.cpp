#include "applanguage.h"

namespace {
struct LanguageRow {
    AppLanguage language;
    const char *raw;
    const char *name;
};

constexpr LanguageRow kRows[] = {
    {AppLanguage::english, "en", "English"},   {AppLanguage::russian, "ru", "Русский"},
    {AppLanguage::chinese, "zh-Hans", "中文"}, {AppLanguage::japanese, "ja", "日本語"},
    {AppLanguage::german, "de", "Deutsch"},    {AppLanguage::spanish, "es", "Español"},
};

const LanguageRow &rowOf(AppLanguage language)
{
    return kRows[static_cast<int>(language)];
}
} // namespace

QString rawValue(AppLanguage language)
{
    return QString::fromLatin1(rowOf(language).raw);
}

std::optional<AppLanguage> appLanguageFromRaw(const QString &raw)
{
    for (const LanguageRow &row : kRows) {
        if (raw == QLatin1String(row.raw))
            return row.language;
    }
    return std::nullopt;
}

QString displayName(AppLanguage language)
{
    return QString::fromUtf8(rowOf(language).name);
}
