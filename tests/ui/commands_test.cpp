#include "uifixture.h"

using Command = AppCommands::Command;

using Commands = WindowTest;

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
        {Command::toolbarSaveProject, "011-"}, {Command::toolbarExport, "0101"}, // reads only scans
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
    addClips({"a.mov", "b.mov"});
    ASSERT_EQ(vm().problemClipsCount(), 0);
    expectState(1);

    withAudio(QStringLiteral("loud.mov"));
    addClips({"loud.mov"});
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
    withAudio(QStringLiteral("a.mov")); // a warning: the batch has a clip to convert
    addClips({"a.mov"});
    command(Command::convertProblems)->trigger(); // the folder panel is cancelled
    EXPECT_EQ(m_panels.messages.size(), 1);
    EXPECT_FALSE(vm().showConvertStudio());
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
