#include "settingsstore.h"

namespace SettingsStore {

QSettings &shared()
{
    static QSettings settings(QSettings::NativeFormat, QSettings::UserScope,
                              QStringLiteral("Cuebox"), QStringLiteral("Cuebox"));
    return settings;
}

QStringList readStringList(const QSettings &settings, const QString &key)
{
    const QVariant value = settings.value(key);
    if (!value.isValid())
        return {};
    if (value.typeId() == QMetaType::QString)
        return value.toString().isEmpty() ? QStringList() : QStringList{value.toString()};
    return value.toStringList();
}

void writeStringList(QSettings &settings, const QString &key, const QStringList &list)
{
    settings.setValue(key, list);
    settings.sync();
}

} // namespace SettingsStore
