#include "prefixtemplate.h"

namespace {
constexpr const char *kNames[] = {"concert", "club", "festival", "corporate", "wedding", "clear"};
}

QString rawValue(PrefixTemplate prefixTemplate)
{
    return QString::fromLatin1(kNames[static_cast<int>(prefixTemplate)]);
}

std::optional<PrefixTemplate> prefixTemplateFromRaw(QStringView raw)
{
    for (PrefixTemplate t : kAllPrefixTemplates) {
        if (raw == QLatin1String(kNames[static_cast<int>(t)]))
            return t;
    }
    return std::nullopt;
}

QString prefixValue(PrefixTemplate prefixTemplate)
{
    return prefixTemplate == PrefixTemplate::clear ? QString() : rawValue(prefixTemplate);
}

QString labelKey(PrefixTemplate prefixTemplate)
{
    return QStringLiteral("prefix.") + rawValue(prefixTemplate);
}
