#pragma once

#include <QSettings>
#include <QStringList>

namespace SettingsStore {
// The store behind the shared preference objects: ~/.config/Cuebox/Cuebox.conf.
QSettings &shared();

// Lists survive the ini round trip whatever their length (one entry reads back as text,
// an empty list as an empty or invalid value).
QStringList readStringList(const QSettings &settings, const QString &key);
void writeStringList(QSettings &settings, const QString &key, const QStringList &list);
} // namespace SettingsStore
