#pragma once

#include <QString>

#include <array>
#include <optional>

// Ready-made show prefixes; the values are the same in every language, only labels change.
enum class PrefixTemplate { concert, club, festival, corporate, wedding, clear };
inline constexpr std::array kAllPrefixTemplates{PrefixTemplate::concert,   PrefixTemplate::club,
                                                PrefixTemplate::festival,  PrefixTemplate::corporate,
                                                PrefixTemplate::wedding,   PrefixTemplate::clear};

QString rawValue(PrefixTemplate prefixTemplate);
std::optional<PrefixTemplate> prefixTemplateFromRaw(QStringView raw);
QString prefixValue(PrefixTemplate prefixTemplate); // empty for clear
QString labelKey(PrefixTemplate prefixTemplate);    // "prefix.<raw>"
