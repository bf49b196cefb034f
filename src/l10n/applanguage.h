#pragma once

#include <QString>

#include <array>
#include <optional>

enum class AppLanguage { english, russian, chinese, japanese, german, spanish };

inline constexpr std::array kAllLanguages{AppLanguage::english, AppLanguage::russian,
                                          AppLanguage::chinese, AppLanguage::japanese,
                                          AppLanguage::german,  AppLanguage::spanish};

// The raw value is what the preferences store ("en", "zh-Hans", …).
QString rawValue(AppLanguage language);
std::optional<AppLanguage> appLanguageFromRaw(const QString &raw);
// The language's name in its own language; never translated.
QString displayName(AppLanguage language);
