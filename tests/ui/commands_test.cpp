#include "uifixture.h"

#include "ui/contentview.h"
#include "ui/detailarea.h"
#include "ui/dropzoneview.h"
#include "ui/kitbuttons.h"

#include <QMenuBar>
#include <QToolBar>

using Command = AppCommands::Command;

class Commands : public WindowTest
{
};

TEST_F(Commands, EnabledByThePackAScanAndAConversion)
{
    // Per command, enabled (1) or not (0) or not looked at (-): with an empty pack; with two
    // clean clips; while a scan runs over clips with audio and a warning; while a batch runs.
    const std::pair<Command, const char *> rows[] = {
        {Command::openFolder, "1-11"},         {Command::openProject, "1---"},
        {Command::saveProject, "011-"},        {Command::clearPack, "1-1-"},
        {Command::editNames, "0111"},          {Command::convert, "0110"},
        {Command::exportPack, "0100"},         {Command::stripAudio, "0010"},
        {Command::convertProblems, "0010"},    {Command::compactMode, "1---"},
        {Command::reportBug, "1--1"},          {Command::settings, "1---"},
        {Command::toolbarOpen, "1---"},        {Command::toolbarOpenProject, "1---"},
        {Command::toolbarSaveProject, "011-"}, {Command::toolbarBug, "1---"},
        {Command::toolbarExport, "0101"}, // the toolbar's rule reads only scans
    };
    const auto expectState = [&](int state) {
        for (const auto &[c, enabled] : rows) {
            SCOPED_TRACE(testing::Message()
                         << "state " << state << ", " << command(c)->text().toStdString());
            if (enabled[state] != '-') {
                EXPECT_EQ(command(c)->isEnabled(), enabled[state] == '1');
            }
        }
    };
    window();
    expectState(0);
    addClips({QStringLiteral("a.mov"), QStringLiteral("b.mov")});
    ASSERT_EQ(vm().problemClipsCount(), 0);
    expectState(1);

    VideoFacts loud = FakeProbe::defaultVideo();
    loud.audioTrackCount = 1;
    loud.audioCodecCode = FakeProbe::code("aac ");
    m_probe->setVideo(QStringLiteral("loud.mov"), loud);
    addClips({QStringLiteral("loud.mov")});
    m_probe->setDelay(std::chrono::milliseconds(400));
    vm().handleDrop({url(touch(QStringLiteral("late.mov")))});
    ASSERT_TRUE(vm().isScanning());
    expectState(2);
    ASSERT_TRUE(waitUntil([this] { return !vm().isScanning(); }));
    EXPECT_TRUE(command(Command::exportPack)->isEnabled());
    EXPECT_TRUE(command(Command::toolbarExport)->isEnabled());

    m_conversion->setDelay(std::chrono::milliseconds(300));
    m_panels.folders.push_back(path(QStringLiteral("out")));
    QDir().mkpath(path(QStringLiteral("out")));
    command(Command::convertProblems)->trigger();
    ASSERT_TRUE(waitUntil([this] { return vm().isConverting(); }));
    expectState(3);
    ASSERT_TRUE(waitUntil([this] { return !vm().isConverting(); }, 20000));
    EXPECT_TRUE(command(Command::convert)->isEnabled());
}

TEST_F(Commands, ConvertOpensTheStudioAndTheBatchDoesNot)
{
    window();
    addClips({QStringLiteral("a.mov")});
    command(Command::convert)->trigger();
    EXPECT_TRUE(vm().showConvertStudio());
    ASSERT_NE(window().convertSheet(), nullptr);
    window().convertSheet()->close();
    EXPECT_FALSE(vm().showConvertStudio());
    command(Command::editNames)->trigger();
    EXPECT_TRUE(vm().showRenameStudio());
    vm().setShowRenameStudio(false);
    EXPECT_TRUE(waitUntil([this] { return window().renameSheet() == nullptr; }));
}

TEST_F(Commands, ShortcutsUseControl)
{
    window();
    const std::pair<Command, const char *> keys[] = {{Command::openFolder, "Ctrl+O"},
                                                     {Command::openProject, "Ctrl+Shift+O"},
                                                     {Command::saveProject, "Ctrl+S"},
                                                     {Command::clearPack, "Ctrl+K"},
                                                     {Command::editNames, "Ctrl+R"},
                                                     {Command::convert, "Ctrl+T"},
                                                     {Command::exportPack, "Ctrl+E"},
                                                     {Command::stripAudio, "Ctrl+Shift+A"},
                                                     {Command::convertProblems, "Ctrl+Shift+T"},
                                                     {Command::compactMode, "Ctrl+Shift+M"},
                                                     {Command::reportBug, "Ctrl+Shift+B"}};
    for (const auto &[c, key] : keys)
        EXPECT_EQ(command(c)->shortcut(), QKeySequence(QString::fromLatin1(key))) << key;
}

TEST_F(Commands, LanguageSwitchRelabelsMenusToolbarAndContentKeepingClipsAndSelection)
{
    window();
    const L10n german(AppLanguage::german);
    m_localization.setLanguage(AppLanguage::german);
    QApplication::processEvents();
    EXPECT_EQ(command(Command::openFolder)->text(), german[u"menu.open"]);
    EXPECT_EQ(command(Command::exportPack)->text(), german[u"naming.export"]);
    EXPECT_EQ(command(Command::stripAudio)->text(), german[u"batch.stripAudio.menu"]);
    EXPECT_EQ(command(Command::compactMode)->text(), german[u"settings.compact"]);
    EXPECT_EQ(command(Command::toolbarOpen)->text(), german[u"toolbar.open"]);
    EXPECT_EQ(command(Command::toolbarOpen)->toolTip(), german[u"toolbar.open.help"]);
    EXPECT_EQ(command(Command::toolbarExport)->toolTip(), german[u"toolbar.export.help"]);
    QStringList menuTitles;
    for (QAction *menu : window().menuBar()->actions())
        menuTitles.append(menu->text());
    EXPECT_TRUE(menuTitles.contains(german[u"menu.pack"])) << menuTitles.join(u',').toStdString();
    // The content was rebuilt: the drop zone's buttons carry the new texts.
    DropZoneView *zone = window().content()->detail()->dropZone();
    EXPECT_EQ(zone->openButton()->text(), german[u"drop.open"]);
    EXPECT_EQ(zone->clearButton()->text(), german[u"drop.clear"]);

    addClips({QStringLiteral("a.mov"), QStringLiteral("b.mov")});
    vm().setSelectedClipID(vm().clips()[1].id);
    ContentView *before = window().content();
    m_localization.setLanguage(AppLanguage::japanese);
    QApplication::processEvents();
    EXPECT_NE(window().content(), before);
    EXPECT_EQ(vm().clips().size(), 2);
    EXPECT_EQ(vm().selectedClipID(), vm().clips()[1].id);
}

TEST_F(Commands, CompactModeChangesTheMinimumSizeAtOnce)
{
    window();
    const QSize wide = window().minimumSize();
    command(Command::compactMode)->trigger();
    EXPECT_TRUE(m_preferences.compactMode());
    const QSize compact = window().minimumSize();
    EXPECT_EQ(wide.width(), 1040);
    EXPECT_EQ(compact.width(), 900);
    EXPECT_EQ(wide.height() - compact.height(), 80);
    m_preferences.setCompactMode(false);
    EXPECT_FALSE(command(Command::compactMode)->isChecked());
    EXPECT_EQ(window().minimumSize(), wide);
    EXPECT_EQ(MainWindow::defaultSize(false), QSize(1180, 740));
    EXPECT_EQ(MainWindow::defaultSize(true), QSize(1020, 680));
}

TEST_F(Commands, ToolbarHasFiveButtonsWithIconsAndTooltips)
{
    window();
    int buttons = 0;
    for (QAction *a : window().toolBar()->actions()) {
        if (a->isSeparator() || a->text().isEmpty())
            continue;
        ++buttons;
        EXPECT_FALSE(a->icon().isNull()) << a->text().toStdString();
        EXPECT_FALSE(a->toolTip().isEmpty()) << a->text().toStdString();
    }
    EXPECT_EQ(buttons, 5);
}
