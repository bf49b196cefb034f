#include "l10n/apppreferences.h"
#include "l10n/localizationmanager.h"

#include <QDir>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class Preferences : public ::testing::Test
{
protected:
    std::unique_ptr<QSettings> store()
    {
        return std::make_unique<QSettings>(m_dir.filePath("Cuebox.conf"), QSettings::IniFormat);
    }
    QTemporaryDir m_dir;
};

} // namespace

TEST_F(Preferences, LanguageStartsEnglishPersistsAndReplacesAnUnknownStoredOne)
{
    {
        auto settings = store();
        LocalizationManager manager(*settings);
        EXPECT_EQ(manager.language(), AppLanguage::english);
        QSignalSpy changed(&manager, &LocalizationManager::languageChanged);
        manager.setLanguage(AppLanguage::japanese);
        EXPECT_EQ(changed.count(), 1);
        EXPECT_EQ(manager.strings().language(), AppLanguage::japanese);
    }
    auto settings = store();
    EXPECT_EQ(settings->value("app.language").toString(), "ja");
    EXPECT_EQ(LocalizationManager(*settings).language(), AppLanguage::japanese);
    settings->setValue("app.language", "fr");
    LocalizationManager manager(*settings);
    EXPECT_EQ(manager.language(), AppLanguage::english);
    manager.setLanguage(AppLanguage::chinese);
    EXPECT_EQ(settings->value("app.language").toString(), "zh-Hans");
}

TEST_F(Preferences, DismissedHintsAreStoredOnceAndSurviveRestart)
{
    {
        auto settings = store();
        LocalizationManager manager(*settings);
        QSignalSpy changed(&manager, &LocalizationManager::dismissedHintsChanged);
        manager.dismissHint("hint.health");
        manager.dismissHint("hint.health");
        EXPECT_EQ(changed.count(), 1);
    }
    {
        auto settings = store();
        EXPECT_EQ(settings->value("app.dismissedHints").toStringList(), QStringList{"hint.health"});
        LocalizationManager manager(*settings);
        EXPECT_TRUE(manager.isHintDismissed("hint.health"));
        manager.dismissHint("hint.naming");
    }
    auto settings = store();
    EXPECT_EQ(LocalizationManager(*settings).dismissedHints(),
              (QSet<QString>{"hint.health", "hint.naming"}));
}

TEST_F(Preferences, DefaultsOfAFreshInstallationAndSwitchesWriteThroughAtOnce)
{
    {
        auto settings = store();
        AppPreferences prefs(*settings);
        EXPECT_FALSE(prefs.compactMode());
        EXPECT_TRUE(prefs.autoBackupBeforeConvert());
        EXPECT_TRUE(prefs.exportFolderHistory().isEmpty());
        EXPECT_FALSE(prefs.lastExportFolderURL());
        prefs.setCompactMode(true);
        prefs.setAutoBackupBeforeConvert(false);
        prefs.rememberExportFolder(m_dir.path()); // a single entry survives the store too
    }
    auto settings = store();
    AppPreferences prefs(*settings);
    EXPECT_TRUE(prefs.compactMode());
    EXPECT_FALSE(prefs.autoBackupBeforeConvert());
    EXPECT_EQ(prefs.exportFolderHistory(), QStringList{m_dir.path()});
    EXPECT_EQ(prefs.lastExportFolderURL(), m_dir.path());
}

TEST_F(Preferences, ExportHistoryIsMostRecentFirstUniqueCappedAndKeepsVanishedFolders)
{
    auto settings = store();
    AppPreferences prefs(*settings);
    prefs.rememberExportFolder("/A");
    prefs.rememberExportFolder("/B");
    prefs.rememberExportFolder("/A");
    EXPECT_EQ(prefs.exportFolderHistory(), (QStringList{"/A", "/B"}));
    prefs.rememberExportFolder("/a"); // letter case counts
    EXPECT_EQ(prefs.exportFolderHistory().size(), 3);
    for (int i = 1; i <= 9; ++i)
        prefs.rememberExportFolder(QStringLiteral("/f%1").arg(i));
    EXPECT_EQ(prefs.exportFolderHistory(),
              (QStringList{"/f9", "/f8", "/f7", "/f6", "/f5", "/f4", "/f3", "/f2"}));
    EXPECT_EQ(AppPreferences(*store()).exportFolderHistory(), prefs.exportFolderHistory());

    // The last export folder is none when the newest one vanished; nothing is dropped for it.
    const QString kept = m_dir.filePath("kept");
    const QString gone = m_dir.filePath("gone");
    QDir().mkpath(kept);
    QDir().mkpath(gone);
    prefs.rememberExportFolder(kept);
    prefs.rememberExportFolder(gone);
    EXPECT_EQ(prefs.lastExportFolderURL(), gone);
    QDir(gone).removeRecursively();
    EXPECT_FALSE(prefs.lastExportFolderURL());
    EXPECT_EQ(prefs.exportFolderHistory().mid(0, 2), (QStringList{gone, kept}));
}
