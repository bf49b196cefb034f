#pragma once

#include <QObject>
#include <QStringList>

#include <optional>

class QSettings;

// Preferences that are not part of a pack, written through to the store on every change.
class AppPreferences final : public QObject
{
    Q_OBJECT
public:
    static inline const QString compactKey = QStringLiteral("app.compactMode");
    static inline const QString autoBackupKey = QStringLiteral("app.autoBackupBeforeConvert");
    static inline const QString exportHistoryKey = QStringLiteral("app.exportHistory");
    static inline const QString verifyCopiesKey = QStringLiteral("app.verifyCopies");
    static constexpr qsizetype kMaxExportHistory = 8;

    explicit AppPreferences(QSettings &store, QObject *parent = nullptr);
    static AppPreferences &shared();

    bool compactMode() const { return m_compactMode; }
    void setCompactMode(bool on);
    bool autoBackupBeforeConvert() const { return m_autoBackupBeforeConvert; }
    void setAutoBackupBeforeConvert(bool on);
    // Read every export and backup copy back from the device.
    bool verifyCopies() const { return m_verifyCopies; }
    void setVerifyCopies(bool on);
    const QStringList &exportFolderHistory() const { return m_exportFolderHistory; }
    void setExportFolderHistory(const QStringList &paths);

    // The most recent export folder, if it still exists on disk.
    std::optional<QString> lastExportFolderURL() const;
    void rememberExportFolder(const QString &path);

Q_SIGNALS:
    void compactModeChanged(bool on);
    void autoBackupBeforeConvertChanged(bool on);
    void exportFolderHistoryChanged();
    void verifyCopiesChanged(bool on);

private:
    QSettings &m_store;
    bool m_compactMode = false;
    bool m_autoBackupBeforeConvert = true;
    bool m_verifyCopies = true;
    QStringList m_exportFolderHistory;
};
