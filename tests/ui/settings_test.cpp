// The settings window over the session fixture: the rail, the language chips relabelling both
// windows, the bound switches and chips, and the recent export folders.
#include "uifixture.h"

#include "ui/contentview.h"
#include "ui/kitbuttons.h"
#include "ui/kitwidgets.h"
#include "ui/settings/settingscards.h"
#include "ui/settings/settingsview.h"
#include "ui/settingswindow.h"
#include "ui/sidebar/selectchip.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

using Command = AppCommands::Command;

class SettingsTest : public WindowTest
{
protected:
    SettingsWindow &settings()
    {
        if (!m_settingsWindow) {
            m_settingsWindow = std::make_unique<SettingsWindow>(context(), m_desktop);
            m_settingsWindow->show();
            QApplication::processEvents();
        }
        return *m_settingsWindow;
    }

    SettingsView &view() { return *settings().view(); }

    template<typename Card>
    Card &card(SettingsSection section)
    {
        auto *c = qobject_cast<Card *>(view().card(section));
        EXPECT_NE(c, nullptr);
        return *c;
    }

    // Pages replaced by a language switch go away once their click has returned.
    static void settle()
    {
        QApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static void click(QAbstractButton *button)
    {
        ASSERT_NE(button, nullptr);
        QTest::mouseClick(button, Qt::LeftButton);
        settle();
    }

    QStringList railTexts()
    {
        QStringList texts;
        for (SettingsSection s : kAllSettingsSections)
            texts.append(view().railButton(s)->text());
        return texts;
    }

    void TearDown() override
    {
        m_settingsWindow.reset();
        WindowTest::TearDown();
    }

    std::unique_ptr<SettingsWindow> m_settingsWindow;
};

TEST_F(SettingsTest, OpensOnTheLanguagePageAndTheRailSelectsEachSection)
{
    EXPECT_EQ(settings().windowTitle(), "Settings");
    EXPECT_EQ(view().findChild<QLabel *>("settings.title")->text(), "Settings");
    EXPECT_EQ(railTexts(), QStringList({"Language", "Naming", "Risk rules", "Workspace"}));
    for (SettingsSection chosen : {SettingsSection::language, SettingsSection::workspace,
                                   SettingsSection::naming, SettingsSection::risks}) {
        SCOPED_TRACE(rawValue(chosen).toStdString());
        if (chosen != SettingsSection::language)
            click(view().railButton(chosen));
        EXPECT_EQ(view().section(), chosen);
        for (SettingsSection s : kAllSettingsSections) {
            EXPECT_EQ(view().railButton(s)->isSelected(), s == chosen);
            EXPECT_EQ(view().card(s)->isVisible(), s == chosen);
        }
    }
    // Every opening starts on the language page again.
    settings().close();
    settings().show();
    QApplication::processEvents();
    EXPECT_EQ(view().section(), SettingsSection::language);
    EXPECT_TRUE(view().card(SettingsSection::language)->isVisible());
}

TEST_F(SettingsTest, LanguageChipRelabelsTheMainWindowAndTheSettingsWindowAtOnce)
{
    window();
    auto &chips = card<LanguageSettingsCard>(SettingsSection::language);
    QStringList names;
    for (AppLanguage language : kAllLanguages) {
        names.append(chips.chip(language)->text());
        EXPECT_EQ(chips.chip(language)->isSelected(), language == AppLanguage::english);
    }
    EXPECT_EQ(names, QStringList({"English", "Русский", "中文", "日本語", "Deutsch", "Español"}));
    EXPECT_EQ(chips.findChild<QLabel *>("settings.language.help")->text(),
              "The app uses English until you pick another language.");
    addClips({"a.mov", "b.mov"});
    vm().setSelectedClipID(vm().clips()[1].id);
    const ContentView *before = window().content();

    click(chips.chip(AppLanguage::german));

    EXPECT_EQ(m_localization.language(), AppLanguage::german);
    // The menus follow (their texts in every language are the menu test's); the content was
    // rebuilt around the same pack and selection.
    EXPECT_EQ(command(Command::openFolder)->text(), "Ordner öffnen…");
    EXPECT_NE(window().content(), before);
    EXPECT_EQ(vm().selectedClipID(), vm().clips()[1].id);
    EXPECT_EQ(settings().windowTitle(), "Einstellungen");
    EXPECT_EQ(view().findChild<QLabel *>("settings.title")->text(), "Einstellungen");
    EXPECT_EQ(railTexts(), QStringList({"Sprache", "Benennung", "Risikoregeln", "Arbeitsbereich"}));
    EXPECT_EQ(view().section(), SettingsSection::language);
    auto &languages = card<LanguageSettingsCard>(SettingsSection::language);
    EXPECT_EQ(languages.findChild<QLabel *>("settings.language.help")->text(),
              "Die App nutzt Englisch, bis Sie eine andere Sprache wählen.");
    EXPECT_TRUE(languages.chip(AppLanguage::german)->isSelected());

    // Changed elsewhere (the sidebar), the page is rebuilt on the section it showed.
    click(view().railButton(SettingsSection::workspace));
    m_localization.setLanguage(AppLanguage::japanese);
    settle();
    EXPECT_EQ(view().section(), SettingsSection::workspace);
    EXPECT_EQ(card<WorkspaceSettingsCard>(SettingsSection::workspace)
                  .findChild<QLabel *>("settings.exportHistory.empty")
                  ->text(),
              "まだフォルダはありません。一度パックを書き出すとここに表示されます。");
    EXPECT_EQ(settings().windowTitle(), "設定");
}

TEST_F(SettingsTest, NamingPageEditsThePrefix)
{
    click(view().railButton(SettingsSection::naming));
    auto &naming = card<NamingSettingsCard>(SettingsSection::naming);
    EXPECT_EQ(naming.findChild<QLabel *>("naming.tooltip")->text(),
              "These names become the files you drop into Arena.");
    EXPECT_EQ(naming.findChild<QLabel *>("settings.prefix")->text(), "Show prefix");
    EXPECT_EQ(naming.prefixField()->placeholderText(), "e.g. concert");
    QTest::keyClicks(naming.prefixField(), "gala");
    EXPECT_EQ(vm().showPrefix(), "gala");
    // A prefix set elsewhere (a template chip of the sidebar) shows in the field.
    vm().setShowPrefix("festival");
    EXPECT_EQ(naming.prefixField()->text(), "festival");
}

TEST_F(SettingsTest, SwitchesWriteTheirFieldFollowItAndPreferencesAreStored)
{
    window();
    auto &naming = card<NamingSettingsCard>(SettingsSection::naming);
    auto &risks = card<RiskSettingsCard>(SettingsSection::risks);
    auto &workspace = card<WorkspaceSettingsCard>(SettingsSection::workspace);
    EXPECT_EQ(workspace.findChild<QLabel *>("settings.workspace.help")->text(),
              "Laptop mode, backups and recent export folders.");
    struct Row {
        SettingsSection section;
        BentoToggleRow *row;
        QStringList texts;
        std::function<bool()> field;
        std::function<void(bool)> setField; // from elsewhere: a project, the menu
    };
    const Row rows[] = {
        {SettingsSection::naming,
         naming.zeroPadRow(),
         {"Zero-pad cue numbers (01, 02…)"},
         [this] { return vm().zeroPad(); },
         [this](bool on) { vm().setZeroPad(on); }},
        {SettingsSection::risks,
         risks.audioRow(),
         {"Warn on audio track in video"},
         [this] { return vm().warnOnEmbeddedAudio(); },
         [this](bool on) { vm().setWarnOnEmbeddedAudio(on); }},
        {SettingsSection::risks,
         risks.hevcRow(),
         {"Warn on HEVC / H.265"},
         [this] { return vm().warnOnHEVC(); },
         [this](bool on) { vm().setWarnOnHEVC(on); }},
        {SettingsSection::workspace,
         workspace.compactRow(),
         {"Compact mode", "Tighter UI for a laptop on site."},
         [this] { return m_preferences.compactMode(); },
         [this](bool on) {
             if (command(Command::compactMode)->isChecked() != on)
                 command(Command::compactMode)->trigger(); // the View menu
         }},
        {SettingsSection::workspace,
         workspace.autoBackupRow(),
         {"Backup before convert", "Copy originals next to the convert folder first."},
         [this] { return m_preferences.autoBackupBeforeConvert(); },
         [this](bool on) { m_preferences.setAutoBackupBeforeConvert(on); }},
    };
    const QList<bool> defaults{true, true, true, false, true};
    for (int i = 0; i < 5; ++i) {
        const Row &row = rows[i];
        SCOPED_TRACE(row.texts.front().toStdString());
        click(view().railButton(row.section));
        EXPECT_EQ(labelTexts(row.row), row.texts);
        EXPECT_EQ(row.row->toggle()->isChecked(), defaults[i]);
        click(row.row->toggle());
        EXPECT_EQ(row.field(), !defaults[i]);
        row.setField(defaults[i]);
        EXPECT_EQ(row.row->toggle()->isChecked(), defaults[i]);
        click(row.row->toggle());
    }
    EXPECT_TRUE(command(Command::compactMode)->isChecked());
}

TEST_F(SettingsTest, WidthChipsOfferExactlyThreeWidthsAndSetThePreferredWidth)
{
    click(view().railButton(SettingsSection::risks));
    auto &risks = card<RiskSettingsCard>(SettingsSection::risks);
    EXPECT_EQ(risks.findChild<QLabel *>("settings.width")->text(), "Preferred width");
    EXPECT_EQ(textsOf(risks.widthChips()), QStringList({"1920", "2560", "3840"}));
    ASSERT_EQ(vm().preferredWidth(), 1920);
    EXPECT_EQ(selectedOf(risks.widthChips()), QList<int>{0});
    // A width from elsewhere (1080) that no chip offers leaves every chip unselected.
    const std::pair<int, QList<int>> steps[] = {{3840, {2}}, {1080, {}}, {2560, {1}}};
    for (const auto &[width, chosen] : steps) {
        if (chosen.isEmpty())
            vm().setPreferredWidth(width);
        else
            click(risks.widthChips()[chosen[0]]);
        EXPECT_EQ(vm().preferredWidth(), width);
        EXPECT_EQ(selectedOf(risks.widthChips()), chosen);
    }
}

TEST_F(SettingsTest, HistoryRowsInStoredOrderWaitForTheScanAndExportIntoTheirFolder)
{
    click(view().railButton(SettingsSection::workspace));
    auto &workspace = card<WorkspaceSettingsCard>(SettingsSection::workspace);
    EXPECT_EQ(workspace.findChild<QLabel *>("settings.exportHistory")->text(),
              "Recent export folders");
    ASSERT_NE(workspace.emptyHistoryLabel(), nullptr);
    EXPECT_EQ(workspace.emptyHistoryLabel()->text(), "No folders yet — export a pack once.");

    QStringList folders{path("newest"), path("Older"), path("older"), "/gone/for/good"};
    for (int i = 0; i < 4; ++i)
        folders.append(path(QStringLiteral("show %1/exports for the venue").arg(i)));
    QDir().mkpath(folders[0]);
    QDir().mkpath(folders[1]);
    m_preferences.setExportFolderHistory(folders);
    settle();
    EXPECT_EQ(workspace.emptyHistoryLabel(), nullptr);
    const auto shown = [&workspace] {
        QStringList out;
        for (ExportFolderRow *row : workspace.folderRows())
            out.append(row->folder());
        return out;
    };
    EXPECT_EQ(shown(), folders); // as stored, a vanished folder included
    EXPECT_EQ(workspace.folderRows()[1]->toolTip(), folders[1]);

    const auto row = [&workspace] { return workspace.folderRows()[1]; };
    EXPECT_TRUE(row()->isEnabled()); // an empty pack does not disable it: the session refuses
    m_probe->setDelay(std::chrono::milliseconds(400));
    vm().handleDrop({url(touch("slow.mov"))});
    ASSERT_TRUE(waitUntil([this] { return vm().isScanning(); }));
    EXPECT_FALSE(row()->isEnabled());
    ASSERT_TRUE(waitUntil([this] { return !vm().isScanning(); }));
    EXPECT_TRUE(row()->isEnabled());

    click(row());
    ASSERT_TRUE(waitUntil([this] { return vm().lastExportURL().has_value(); }));
    EXPECT_TRUE(m_panels.messages.isEmpty()); // straight in: no chooser was shown
    const QFileInfo pack(vm().lastExportURL()->toLocalFile());
    EXPECT_EQ(pack.absolutePath(), QFileInfo(folders[1]).absoluteFilePath());
    EXPECT_TRUE(QDir(folders[0]).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).isEmpty());
    settle();
    folders.move(1, 0); // the folder used goes to the top
    EXPECT_EQ(shown(), folders);
}
