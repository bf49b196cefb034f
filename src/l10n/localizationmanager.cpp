#include "localizationmanager.h"

#include "settingsstore.h"

#include <QSettings>

#include <algorithm>

LocalizationManager::LocalizationManager(QSettings &store, QObject *parent)
    : QObject(parent), m_store(store)
{
    // Unknown or missing values start in English; the next choice replaces them.
    m_language = appLanguageFromRaw(m_store.value(languageKey).toString())
                     .value_or(AppLanguage::english);
    const QStringList hints = SettingsStore::readStringList(m_store, dismissedHintsKey);
    m_dismissedHints = QSet<QString>(hints.begin(), hints.end());
}

LocalizationManager &LocalizationManager::shared()
{
    static LocalizationManager *instance = new LocalizationManager(SettingsStore::shared());
    return *instance;
}

void LocalizationManager::setLanguage(AppLanguage language)
{
    m_store.setValue(languageKey, rawValue(language));
    m_store.sync();
    if (language == m_language)
        return;
    m_language = language;
    Q_EMIT languageChanged(language);
}

void LocalizationManager::dismissHint(const QString &id)
{
    const bool added = !m_dismissedHints.contains(id);
    m_dismissedHints.insert(id);
    QStringList list(m_dismissedHints.begin(), m_dismissedHints.end());
    std::sort(list.begin(), list.end()); // order carries no meaning; sorted keeps the file stable
    SettingsStore::writeStringList(m_store, dismissedHintsKey, list);
    if (added)
        Q_EMIT dismissedHintsChanged();
}
