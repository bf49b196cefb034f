#include "settingssection.h"

QString symbolName(SettingsSection section)
{
    switch (section) {
    case SettingsSection::language:
        return QStringLiteral("globe");
    case SettingsSection::naming:
        return QStringLiteral("textformat");
    case SettingsSection::risks:
        return QStringLiteral("exclamationmark.triangle");
    case SettingsSection::workspace:
        return QStringLiteral("laptopcomputer");
    }
    return {};
}

QString titleKey(SettingsSection section)
{
    return QStringLiteral("settings.") + rawValue(section);
}

QString rawValue(SettingsSection section)
{
    switch (section) {
    case SettingsSection::language:
        return QStringLiteral("language");
    case SettingsSection::naming:
        return QStringLiteral("naming");
    case SettingsSection::risks:
        return QStringLiteral("risks");
    case SettingsSection::workspace:
        return QStringLiteral("workspace");
    }
    return {};
}
