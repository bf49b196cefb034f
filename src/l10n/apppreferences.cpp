#include "apppreferences.h"

#include "settingsstore.h"

#include <QFileInfo>
#include <QSettings>

AppPreferences::AppPreferences(QSettings &store, QObject *parent) : QObject(parent), m_store(store)
{
    m_compactMode = m_store.value(compactKey, false).toBool();
    // Only an explicitly stored false turns backups off.
    m_autoBackupBeforeConvert = m_store.value(autoBackupKey, true).toBool();
    m_verifyCopies = m_store.value(verifyCopiesKey, true).toBool();
    m_exportFolderHistory = SettingsStore::readStringList(m_store, exportHistoryKey);
}

AppPreferences &AppPreferences::shared()
{
    static AppPreferences *instance = new AppPreferences(SettingsStore::shared());
    return *instance;
}

void AppPreferences::setCompactMode(bool on)
{
    m_store.setValue(compactKey, on);
    m_store.sync();
    if (on == m_compactMode)
        return;
    m_compactMode = on;
    Q_EMIT compactModeChanged(on);
}

void AppPreferences::setAutoBackupBeforeConvert(bool on)
{
    m_store.setValue(autoBackupKey, on);
    m_store.sync();
    if (on == m_autoBackupBeforeConvert)
        return;
    m_autoBackupBeforeConvert = on;
    Q_EMIT autoBackupBeforeConvertChanged(on);
}

void AppPreferences::setVerifyCopies(bool on)
{
    m_store.setValue(verifyCopiesKey, on);
    m_store.sync();
    if (on == m_verifyCopies)
        return;
    m_verifyCopies = on;
    Q_EMIT verifyCopiesChanged(on);
}

void AppPreferences::setExportFolderHistory(const QStringList &paths)
{
    SettingsStore::writeStringList(m_store, exportHistoryKey, paths);
    if (paths == m_exportFolderHistory)
        return;
    m_exportFolderHistory = paths;
    Q_EMIT exportFolderHistoryChanged();
}

std::optional<QString> AppPreferences::lastExportFolderURL() const
{
    if (m_exportFolderHistory.isEmpty())
        return std::nullopt;
    const QString &first = m_exportFolderHistory.front();
    if (!QFileInfo::exists(first))
        return std::nullopt;
    return first;
}

void AppPreferences::rememberExportFolder(const QString &path)
{
    QStringList history = m_exportFolderHistory;
    history.removeAll(path); // exact text comparison: letter case counts
    history.prepend(path);
    if (history.size() > kMaxExportHistory)
        history.resize(kMaxExportHistory);
    setExportFolderHistory(history);
}
