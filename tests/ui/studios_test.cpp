// The rename studio's flows (edit, clear, close, apply) and the convert studio's bindings,
// progress, Cancel and lost-transparency warning, driven through the widgets the way an
// operator would.
#include "uifixture.h"

#include "model/arenanamer.h"
#include "session/alley.h"
#include "ui/kitbuttons.h"
#include "ui/kitwidgets.h"
#include "ui/studios/convertparts.h"
#include "ui/studios/convertstudioview.h"
#include "ui/studios/renamedraftmodel.h"
#include "ui/studios/renamerowsview.h"
#include "ui/studios/renamestudioview.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace {

QString cell(const RenameStudioView *studio, int row, RenameDraftModel::Column column)
{
    return studio->model()->index(row, column).data().toString();
}

QStringList previews(const RenameStudioView *studio)
{
    QStringList out;
    for (int row = 0; row < studio->model()->rowCount(); ++row)
        out.append(cell(studio, row, RenameDraftModel::PreviewColumn));
    return out;
}

} // namespace

class RenameStudioSheet : public WindowTest
{
protected:
    // Every flow runs over the same three clips, in this order.
    void SetUp() override
    {
        WindowTest::SetUp();
        addClips({"Crowd.MOV", "Intro Loop.mov", "Logo.png"});
        ASSERT_EQ(originalNames(), (QStringList{"Crowd.MOV", "Intro Loop.mov", "Logo.png"}));
    }

    RenameStudioView *open()
    {
        QDialog *sheet = openSheet(true);
        return sheet ? sheet->findChild<RenameStudioView *>() : nullptr;
    }

    bool closed()
    {
        return waitUntil([this] { return window().renameSheet() == nullptr; });
    }

    QLineEdit *editStem(RenameStudioView *studio, int row)
    {
        RenameRowsView *rows = studio->rows();
        QTest::mouseClick(rows->viewport(), Qt::LeftButton, {}, rows->stemFieldRect(row).center());
        EXPECT_TRUE(waitUntil([rows] { return rows->openEditor() != nullptr; }));
        return rows->openEditor();
    }

    void typeStem(RenameStudioView *studio, int row, const QString &text)
    {
        QLineEdit *field = editStem(studio, row);
        ASSERT_TRUE(field);
        field->selectAll();
        QTest::keyClicks(field, text);
    }
};

TEST_F(RenameStudioSheet, OpensWithNamesRebuiltFromPrefixAndOriginals)
{
    vm().setShowPrefix(QStringLiteral("Show"));
    vm().setArenaName(vm().clips()[1].id, QStringLiteral("hand_named")); // rebuilt on opening
    RenameStudioView *studio = open();
    ASSERT_TRUE(studio);
    EXPECT_EQ(window().renameSheet()->windowTitle(), "Rename studio");
    const QStringList labels = labelTexts(studio);
    for (const char *text :
         {"Rename studio",
          "Edit the Arena names before you export. Change the stem, keep the numbering tidy.",
          "Number as 01, 02…"})
        EXPECT_TRUE(labels.contains(QString::fromUtf8(text))) << text;
    EXPECT_EQ(studio->heads()->titles(), (QStringList{"", "Original", "Stem", "Preview file"}));
    EXPECT_EQ(studio->prefixField()->text(), "Show");
    EXPECT_EQ(studio->prefixField()->placeholderText(), "e.g. concert");
    EXPECT_EQ(studio->resetButton()->text(), "Rebuild from template");
    EXPECT_EQ(studio->resetButton()->toolTip(),
              "Rebuild every name from the prefix and original file names.");
    EXPECT_EQ((QStringList{studio->countLabel()->text(), studio->closeButton()->text(),
                           studio->applyButton()->text()}),
              (QStringList{"3 clips", "Close", "Apply names"}));
    // The names themselves are the rename model's; the sheet shows its drafts, and only the
    // stem takes typing.
    EXPECT_EQ(previews(studio),
              (QStringList{"01_show_crowd.mov", "02_show_intro_loop.mov", "03_show_logo.png"}));
    for (int column = 0; column < 4; ++column)
        EXPECT_EQ(
            studio->model()->flags(studio->model()->index(0, column)).testFlag(Qt::ItemIsEditable),
            column == RenameDraftModel::StemColumn);
}

TEST_F(RenameStudioSheet, TypingAndKeysEditStemsWithLivePreviews)
{
    vm().setShowPrefix(QStringLiteral("show"));
    RenameStudioView *studio = open();
    ASSERT_TRUE(studio);
    QLineEdit *field = editStem(studio, 1);
    ASSERT_TRUE(field);
    EXPECT_EQ(field->text(), "intro_loop");
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("My "));
    EXPECT_EQ(field->text(), "my_");
    EXPECT_EQ(cell(studio, 1, RenameDraftModel::PreviewColumn), "02_show_my.mov");
    QTest::keyClicks(field, QStringLiteral("Intro!"));     // "my_intro", read back below
    EXPECT_EQ(vm().clips()[1].arenaName, "02_intro_loop"); // nothing has reached the pack

    // Tab and the arrows go from stem to stem; typing there edits that row.
    RenameRowsView *rows = studio->rows();
    const std::pair<Qt::Key, int> moves[] = {{Qt::Key_Tab, 2}, {Qt::Key_Up, 1}, {Qt::Key_Up, 0}};
    for (const auto &move : moves) {
        const int row = move.second;
        QTest::keyClick(rows->openEditor(), move.first);
        ASSERT_TRUE(waitUntil([rows, row] {
            return rows->openEditor() && rows->currentIndex().row() == row &&
                   rows->currentIndex().column() == RenameDraftModel::StemColumn;
        })) << row;
        EXPECT_EQ(rows->openEditor()->text(), (QStringList{"crowd", "my_intro", "logo"})[row]);
    }
}

TEST_F(RenameStudioSheet, CloseEscapeAndTheCloseSymbolDiscardEveryEdit)
{
    vm().setShowPrefix(QStringLiteral("live"));
    const QStringList before = arenaNames();
    const QString statusBefore = vm().statusText();
    const std::function<void(RenameStudioView *)> ways[] = {
        [](RenameStudioView *studio) { QTest::mouseClick(studio->closeButton(), Qt::LeftButton); },
        [this](RenameStudioView *) { QTest::keyClick(window().renameSheet(), Qt::Key_Escape); },
        [](RenameStudioView *studio) {
            QTest::mouseClick(studio->findChild<RoundIconButton *>(), Qt::LeftButton);
        }};
    for (const auto &close : ways) {
        RenameStudioView *studio = open();
        ASSERT_TRUE(studio);
        // Every opening starts from the pack, not from the discarded edits.
        EXPECT_TRUE(studio->zeroPadSwitch()->isChecked());
        EXPECT_EQ(cell(studio, 0, RenameDraftModel::StemColumn), "crowd");
        typeStem(studio, 0, QStringLiteral("changed"));
        studio->prefixField()->setText(QStringLiteral("other"));
        QTest::mouseClick(studio->zeroPadSwitch(), Qt::LeftButton);
        close(studio);
        ASSERT_TRUE(closed());
        EXPECT_EQ(arenaNames(), before);
        EXPECT_EQ(vm().showPrefix(), "live");
        EXPECT_TRUE(vm().zeroPad());
        EXPECT_EQ(vm().statusText(), statusBefore);
    }
}

TEST_F(RenameStudioSheet, PrefixSwitchRebuildAndApplyWriteNames)
{
    RenameStudioView *studio = open();
    ASSERT_TRUE(studio);
    // The prefix and the switch rename every row at once; rebuilding drops hand edits.
    QTest::keyClicks(studio->prefixField(), QStringLiteral("Gig"));
    QTest::mouseClick(studio->zeroPadSwitch(), Qt::LeftButton);
    const QStringList rebuilt{"1_gig_crowd.mov", "2_gig_intro_loop.mov", "3_gig_logo.png"};
    EXPECT_EQ(previews(studio), rebuilt);
    typeStem(studio, 0, QStringLiteral("opener"));
    QTest::mouseClick(studio->resetButton(), Qt::LeftButton);
    EXPECT_EQ(previews(studio), rebuilt);
    typeStem(studio, 1, QStringLiteral("Big Encore"));
    QTest::mouseClick(studio->applyButton(), Qt::LeftButton);
    ASSERT_TRUE(closed());
    EXPECT_EQ(vm().showPrefix(), "Gig");
    EXPECT_FALSE(vm().zeroPad());
    EXPECT_EQ(arenaNames(), (QStringList{"1_gig_crowd", "2_gig_big_encore", "3_gig_logo"}));
    EXPECT_EQ(vm().statusText(), "Names updated");
}

// A space and punctuation typed into a stem are the flows above; these are the edges.
TEST(RenameRowTyping, FieldKeepsAPendingSeparatorOnlyAfterAWordBreak)
{
    struct Row {
        const char *name;
        QString typed;
        QString expected;
    };
    const QString long48 = QString(48, u'a');
    const Row rows[] = {
        {"dot", "take.", "take_"},
        {"only a separator", " ", ""},
        {"no room left at the length limit", long48 + u' ', long48},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(RenameRowDelegate::shownWhileTyping(row.typed, ArenaNamer::sanitize(row.typed)),
                  row.expected);
    }
}

class ConvertStudioSheet : public WindowTest
{
protected:
    ConvertStudioView *open()
    {
        QDialog *sheet = openSheet(false);
        return sheet ? sheet->findChild<ConvertStudioView *>() : nullptr;
    }

    std::unique_ptr<ConvertStudioView> standalone(const QString &home)
    {
        auto view = std::make_unique<ConvertStudioView>(
            context(), m_desktop, [] {}, home);
        view->resize(ConvertStudioView::kSheetSize);
        view->show();
        QApplication::processEvents();
        return view;
    }
};

TEST_F(ConvertStudioSheet, OpensWithItsTextsAndTheSessionsChoices)
{
    vm().setConvertFormat(ArenaConvertFormat::h264);
    ConvertStudioView *studio = open();
    ASSERT_TRUE(studio);
    EXPECT_EQ(window().convertSheet()->windowTitle(), "Convert for Arena");
    const QStringList texts = labelTexts(studio);
    for (const char *text :
         {"Convert for Arena",
          "Make Resolume-friendly files: ProRes or H.264, optional no-audio. DXV3 is best via "
          "Resolume Alley.",
          "Target format",
          "ProRes is great for Arena quality. H.264 is smaller. For max performance, finish as "
          "DXV3 in Alley.",
          "Remove audio track", "Arena usually does not need embedded audio in video clips.",
          "Force even pixel sizes (images)",
          "Odd widths/heights can cause artifacts on LED and in Arena.",
          "Convert only warn / fail clips", "Skip green clips and fix only the risky ones.",
          "Backup before convert", "Copy originals next to the convert folder first.",
          "DXV3 (best for Arena)",
          "DXV3 is Resolume’s GPU codec. Cuebox prepares ProRes/H.264; open the result in Resolume "
          "Alley to make DXV3."}) {
        EXPECT_TRUE(texts.contains(QString::fromUtf8(text))) << text;
    }
    EXPECT_EQ(textsOf(studio->formatChips()),
              (QStringList{"Apple ProRes 422 (.mov)", "Apple ProRes 422 LT (.mov)", "H.264 (.mov)",
                           "HAP (.mov)", "HAP Alpha (.mov)", "HAP Q (.mov)"}));
    EXPECT_EQ(selectedOf(studio->formatChips()), QList<int>{2});
    EXPECT_EQ(studio->formatChips()[4]->help(),
              "Keeps transparency, decoded on the GPU. Sizes crop to multiples of 4.");
    EXPECT_EQ(studio->closeButton()->text(), "Close");
    EXPECT_EQ(studio->convertButton()->text(), QString::fromUtf8("Convert pack…"));
    EXPECT_FALSE(studio->progressBar()->isVisible() || studio->cancelButton()->isVisible() ||
                 studio->progressText()->isVisible());

    // The chips set the session's format and follow it when it changes elsewhere (a project).
    for (int i : {1, 0, 5, 3, 4, 2}) {
        QTest::mouseClick(studio->formatChips()[i], Qt::LeftButton);
        EXPECT_EQ(vm().convertFormat(), kAllConvertFormats[i]);
        EXPECT_EQ(selectedOf(studio->formatChips()), QList<int>{i});
    }
    vm().setConvertFormat(ArenaConvertFormat::hapQ);
    EXPECT_EQ(selectedOf(studio->formatChips()), QList<int>{5});

    QTest::mouseClick(studio->closeButton(), Qt::LeftButton);
    ASSERT_TRUE(waitUntil([this] { return window().convertSheet() == nullptr; }));
    EXPECT_FALSE(vm().showConvertStudio());
}

TEST_F(ConvertStudioSheet, OptionRowsWriteThroughAndFollowTheirFields)
{
    ConvertStudioView *studio = open();
    ASSERT_TRUE(studio);
    struct Row {
        const char *name;
        BentoToggleRow *row;
        std::function<bool()> field;
        std::function<void(bool)> setField;
    };
    const Row rows[] = {
        {"strip audio", studio->stripAudioRow(), [this] { return vm().stripAudioOnConvert(); },
         [this](bool on) { vm().setStripAudioOnConvert(on); }},
        {"even sizes", studio->evenDimensionsRow(), [this] { return vm().forceEvenDimensions(); },
         [this](bool on) { vm().setForceEvenDimensions(on); }},
        {"backup", studio->autoBackupRow(),
         [this] { return m_preferences.autoBackupBeforeConvert(); },
         [this](bool on) { m_preferences.setAutoBackupBeforeConvert(on); }},
        {"only problems", studio->onlyProblemsRow(), [this] { return vm().convertOnlyProblems(); },
         [this](bool on) { vm().setConvertOnlyProblems(on); }},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        const bool before = row.field();
        EXPECT_EQ(row.row->toggle()->isChecked(), before);
        QTest::mouseClick(row.row->toggle(), Qt::LeftButton);
        EXPECT_EQ(row.field(), !before);
        QTest::mouseClick(row.row->toggle(), Qt::LeftButton);
        EXPECT_EQ(row.field(), before);
        row.setField(!before); // from elsewhere: the menu, a project file, the settings
        EXPECT_EQ(row.row->toggle()->isChecked(), !before);
    }
}

// Which clips a run converts, what it reports and how fast Cancel stops it are the session's;
// here the button, the bar and Cancel follow it.
TEST_F(ConvertStudioSheet, ConvertShowsProgressAndCancelStopsTheRun)
{
    ConvertStudioView *studio = open();
    ASSERT_TRUE(studio);
    EXPECT_FALSE(studio->convertButton()->isEnabled()); // an empty pack
    withAudio(QStringLiteral("a.mov")); // with the switch on, the one clip the button converts
    addClips({"a.mov", "b.mov", "c.mov"});
    QTest::mouseClick(studio->onlyProblemsRow()->toggle(), Qt::LeftButton);
    m_conversion->setDelay(std::chrono::milliseconds(1000));
    QDir().mkpath(path(QStringLiteral("out")));
    m_panels.folders.push_back(path(QStringLiteral("out")));
    m_preferences.setAutoBackupBeforeConvert(false);
    EXPECT_TRUE(studio->convertButton()->isEnabled());
    QTest::mouseClick(studio->convertButton(), Qt::LeftButton);
    ASSERT_TRUE(waitUntil([this] { return vm().isConverting(); }));
    EXPECT_FALSE(studio->convertButton()->isEnabled());
    EXPECT_TRUE(studio->cancelButton()->isVisible());
    EXPECT_EQ(studio->cancelButton()->text(), "Cancel");
    // Busy from the folder choice on: the room check and the backup come first.
    ASSERT_TRUE(
        waitUntil([studio] { return studio->progressText()->text() == "Converting 1/1: 01_a"; }));
    ASSERT_TRUE(waitUntil([studio] { return studio->progressBar()->value() > 0; }));
    EXPECT_NEAR(studio->progressBar()->fraction(), vm().convertProgress(), 0.001);
    QTest::mouseClick(studio->cancelButton(), Qt::LeftButton);
    ASSERT_TRUE(waitUntil([this] { return !vm().isConverting(); }));
    // The bar and Cancel leave; the outcome stays readable here.
    EXPECT_FALSE(studio->progressBar()->isVisible() || studio->cancelButton()->isVisible());
    EXPECT_TRUE(studio->progressText()->isVisible());
    EXPECT_EQ(studio->progressText()->text(), "Cancelled");
    EXPECT_TRUE(studio->convertButton()->isEnabled());
}

TEST_F(ConvertStudioSheet, CountsClipsLosingTheirTransparencyBeforeARunToH264)
{
    withAlpha(QStringLiteral("logo.mov"));
    withAlpha(QStringLiteral("sting.mov"));
    addClips({"logo.mov", "plain.mov", "sting.mov"});
    auto studio = standalone(QDir::tempPath());
    vm().setConvertOnlyProblems(false);
    vm().setConvertFormat(ArenaConvertFormat::h264);
    EXPECT_TRUE(studio->alphaLossText()->isVisible());
    EXPECT_EQ(studio->alphaLossText()->text(), "2 clips lose their transparency in H.264");
    vm().setConvertFormat(ArenaConvertFormat::hap); // which clips count is the session's
    EXPECT_FALSE(studio->alphaLossText()->isVisible());
}

TEST_F(ConvertStudioSheet, AlleyCardOffersTheDownloadPageOrOpensEveryClipInAlley)
{
    addClips({"a.mov", "b.mov"});
    // The session looks for Alley under the user's home folder, as the studio does.
    FakeHome home;
    ASSERT_FALSE(Alley::isResolumeAlleyInstalled(home.path()));
    auto without = standalone(home.path());
    EXPECT_EQ(without->alleyButton()->text(), QString::fromUtf8("Get Resolume Alley…"));
    QTest::mouseClick(without->alleyButton(), Qt::LeftButton);
    EXPECT_EQ(m_desktop.urls, QList<QUrl>{Alley::downloadPage()});

    const QString app = home.path(".wine/drive_c/Program Files/Resolume Alley/Alley.exe");
    QDir().mkpath(QFileInfo(app).path());
    QFile(app).open(QIODevice::WriteOnly);
    auto studio = standalone(home.path());
    EXPECT_EQ(studio->alleyButton()->text(), "Open clips in Resolume Alley");
    QTest::mouseClick(studio->alleyButton(), Qt::LeftButton);
    ASSERT_EQ(m_desktop.opened.size(), 1); // which files go, in which order, is the session's
    EXPECT_EQ(m_desktop.opened[0].second, app);
}
