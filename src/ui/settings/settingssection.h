#pragma once

#include <QString>

#include <array>

// The pages of the settings window, in rail order.
enum class SettingsSection { language, naming, risks, workspace };

inline constexpr std::array kAllSettingsSections{SettingsSection::language, SettingsSection::naming,
                                                 SettingsSection::risks,
                                                 SettingsSection::workspace};

// The symbol on the rail button and the card header.
QString symbolName(SettingsSection section);
// The string key that titles both the rail button and the card.
QString titleKey(SettingsSection section);
// A stable name for object names ("language", "naming", …).
QString rawValue(SettingsSection section);
