#include "uifixture.h"

#include "ui/contentview.h"
#include "ui/detailarea.h"
#include "ui/dropzoneview.h"
#include "ui/kitbuttons.h"

#include <QMenuBar>
#include <QToolBar>

using Command = AppCommands::Command;

namespace {

struct Expect {
    Command command;
    const char *name;
    bool enabled;
};

} // namespace

class Commands : public WindowTest
{
protected:
    void expectAll(std::initializer_list<Expect> rows)
    {
        for (const Expect &row : rows) {
            SCOPED_TRACE(row.name);
            EXPECT_EQ(command(row.command)->isEnabled(), row.enabled);
        }
    }
    // Clips with a warning and an audio track, so both batch commands have something to do.
    void addWarnClipsWithAudio()
    {
        VideoFacts loud = FakeProbe::defaultVideo();
        loud.audioTrackCount = 1;
        loud.audioCodecCode = FakeProbe::code("aac ");
        m_probe->setVideo(QStringLiteral("loud.mov"), loud);
        addClips({QStringLiteral("loud.mov"), QStringLiteral("quiet.mov")});
        ASSERT_GT(vm().clipsWithAudioCount(), 0);
        ASSERT_GT(vm().problemClipsCount(), 0);
    }
};

TEST_F(Commands, EmptyPackDisablesWhatNeedsClips)
{
    window();
    expectAll({
        {Command::openFolder, "Open Folder", true},
        {Command::openProject, "Open Project", true},
        {Command::saveProject, "Save Project", false},
        {Command::clearPack, "Clear Pack", true},
        {Command::editNames, "Edit names", false},
        {Command::convert, "Convert", false},
        {Command::exportPack, "Export pack", false},
        {Command::stripAudio, "Strip Audio from All", false},
        {Command::convertProblems, "Convert Warn & Fail Only", false},
        {Command::compactMode, "Compact mode", true},
        {Command::reportBug, "Report a Bug", true},
        {Command::settings, "Settings", true},
        {Command::toolbarOpen, "toolbar Open", true},
        {Command::toolbarOpenProject, "toolbar Open Project", true},
        {Command::toolbarSaveProject, "toolbar Save Project", false},
        {Command::toolbarExport, "toolbar Export", false},
        {Command::toolbarBug, "toolbar Bug", true},
    });
}

TEST_F(Commands, WithClipsButNoAudioOrProblemsBatchesStayOff)
{
    window();
    addClips({QStringLiteral("a.mov"), QStringLiteral("b.mov")});
    ASSERT_EQ(vm().problemClipsCount(), 0);
    expectAll({
        {Command::saveProject, "Save Project", true},
        {Command::editNames, "Edit names", true},
        {Command::convert, "Convert", true},
        {Command::exportPack, "Export pack", true},
        {Command::stripAudio, "Strip Audio from All", false},
        {Command::convertProblems, "Convert Warn & Fail Only", false},
        {Command::toolbarSaveProject, "toolbar Save Project", true},
        {Command::toolbarExport, "toolbar Export", true},
    });
}

TEST_F(Commands, DuringAScanExportIsOffButConvertStaysOn)
{
    window();
    addWarnClipsWithAudio();
    m_probe->setDelay(std::chrono::milliseconds(400));
    vm().handleDrop({url(touch(QStringLiteral("late.mov")))});
    ASSERT_TRUE(vm().isScanning());
    expectAll({
        {Command::openFolder, "Open Folder", true},
        {Command::saveProject, "Save Project", true},
        {Command::clearPack, "Clear Pack", true},
        {Command::editNames, "Edit names", true},
        {Command::convert, "Convert", true},
        {Command::exportPack, "Export pack", false},
        {Command::stripAudio, "Strip Audio from All", true},
        {Command::convertProblems, "Convert Warn & Fail Only", true},
        {Command::toolbarExport, "toolbar Export", false},
        {Command::toolbarSaveProject, "toolbar Save Project", true},
    });
    ASSERT_TRUE(waitUntil([this] { return !vm().isScanning(); }));
    EXPECT_TRUE(command(Command::exportPack)->isEnabled());
    EXPECT_TRUE(command(Command::toolbarExport)->isEnabled());
}

TEST_F(Commands, DuringAConversionNoSecondBatchCanStart)
{
    window();
    addWarnClipsWithAudio();
    m_conversion->setDelay(std::chrono::milliseconds(300));
    m_panels.folders.push_back(path(QStringLiteral("out")));
    QDir().mkpath(path(QStringLiteral("out")));
    command(Command::convertProblems)->trigger();
    ASSERT_TRUE(waitUntil([this] { return vm().isConverting(); }));
    expectAll({
        {Command::openFolder, "Open Folder", true},
        {Command::editNames, "Edit names", true},
        {Command::convert, "Convert", false},
        {Command::exportPack, "Export pack", false},
        {Command::stripAudio, "Strip Audio from All", false},
        {Command::convertProblems, "Convert Warn & Fail Only", false},
        {Command::toolbarExport, "toolbar Export", true}, // the toolbar's rule reads only scans
        {Command::reportBug, "Report a Bug", true},
    });
    ASSERT_TRUE(waitUntil([this] { return !vm().isConverting(); }, 20000));
    EXPECT_TRUE(command(Command::convert)->isEnabled());
}

TEST_F(Commands, ConvertOpensTheStudioAndTheBatchDoesNot)
{
    window();
    addWarnClipsWithAudio();
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
    EXPECT_EQ(command(Command::openFolder)->shortcut(), QKeySequence(QStringLiteral("Ctrl+O")));
    EXPECT_EQ(command(Command::openProject)->shortcut(),
              QKeySequence(QStringLiteral("Ctrl+Shift+O")));
    EXPECT_EQ(command(Command::saveProject)->shortcut(), QKeySequence(QStringLiteral("Ctrl+S")));
    EXPECT_EQ(command(Command::clearPack)->shortcut(), QKeySequence(QStringLiteral("Ctrl+K")));
    EXPECT_EQ(command(Command::editNames)->shortcut(), QKeySequence(QStringLiteral("Ctrl+R")));
    EXPECT_EQ(command(Command::convert)->shortcut(), QKeySequence(QStringLiteral("Ctrl+T")));
    EXPECT_EQ(command(Command::exportPack)->shortcut(), QKeySequence(QStringLiteral("Ctrl+E")));
    EXPECT_EQ(command(Command::stripAudio)->shortcut(),
              QKeySequence(QStringLiteral("Ctrl+Shift+A")));
    EXPECT_EQ(command(Command::convertProblems)->shortcut(),
              QKeySequence(QStringLiteral("Ctrl+Shift+T")));
    EXPECT_EQ(command(Command::compactMode)->shortcut(),
              QKeySequence(QStringLiteral("Ctrl+Shift+M")));
    EXPECT_EQ(command(Command::reportBug)->shortcut(),
              QKeySequence(QStringLiteral("Ctrl+Shift+B")));
}

TEST_F(Commands, LanguageSwitchRelabelsMenusToolbarAndContent)
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
}

TEST_F(Commands, LanguageSwitchKeepsClipsAndSelection)
{
    window();
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

TEST_F(Commands, BugReportOpensAMailWithTheFacts)
{
    window();
    addClips({QStringLiteral("a.mov")});
    command(Command::toolbarBug)->trigger();
    ASSERT_EQ(m_desktop.urls.size(), 1);
    const QUrl mail = m_desktop.urls.front();
    EXPECT_EQ(mail.scheme(), u"mailto");
    EXPECT_EQ(mail.path(), QStringLiteral(CUEBOX_BUG_EMAIL));
    const QString query = QUrl::fromPercentEncoding(mail.query().toUtf8());
    EXPECT_TRUE(query.contains(u"Clips: 1")) << query.toStdString();
    EXPECT_TRUE(query.contains(u"Compact: no"));
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
