#pragma once

#include "applanguage.h"
#include "l10n.h"

#include <QObject>
#include <QSet>

class QSettings;

// The interface language and the tips the user dismissed, both persisted at once.
class LocalizationManager final : public QObject
{
    Q_OBJECT
public:
    static inline const QString languageKey = QStringLiteral("app.language");
    static inline const QString dismissedHintsKey = QStringLiteral("app.dismissedHints");

    // Reads the stored values; the store must outlive the manager.
    explicit LocalizationManager(QSettings &store, QObject *parent = nullptr);
    static LocalizationManager &shared();

    AppLanguage language() const { return m_language; }
    void setLanguage(AppLanguage language);
    L10n strings() const { return L10n(m_language); }

    const QSet<QString> &dismissedHints() const { return m_dismissedHints; }
    bool isHintDismissed(const QString &id) const { return m_dismissedHints.contains(id); }
    void dismissHint(const QString &id);

Q_SIGNALS:
    void languageChanged(AppLanguage language);
    void dismissedHintsChanged();

private:
    QSettings &m_store;
    AppLanguage m_language = AppLanguage::english;
    QSet<QString> m_dismissedHints;
};
