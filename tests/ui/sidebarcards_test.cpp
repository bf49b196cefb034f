// What each sidebar card shows and calls: names, profiles, health, checklist, watch folder and
// the selected clip.
#include "sidebarfixture.h"

#include "session/watchfoldermonitor.h"
#include "ui/apptheme.h"
#include "ui/clippreviewview.h"
#include "ui/segmentbar.h"

#include <QLineEdit>
#include <QTest>

TEST_F(Sidebar, ReturnInThePrefixFieldRenamesTypingAloneDoesNot)
{
    window();
    addClips({QStringLiteral("a.mov"), QStringLiteral("b.mov")});
    const QStringList before = arenaNames();
    ASSERT_EQ(before, (QStringList{u"01_a"_qs, u"02_b"_qs}));
    QLineEdit *field = naming().prefixField();
    EXPECT_EQ(field->placeholderText(), u"e.g. concert");
    field->setFocus();
    QTest::keyClicks(field, QStringLiteral("gig"));
    EXPECT_EQ(vm().showPrefix(), u"gig");
    EXPECT_EQ(arenaNames(), before);
    EXPECT_NE(vm().status(), PackStatus::renamed());

    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(arenaNames(), (QStringList{u"01_gig_a"_qs, u"02_gig_b"_qs}));
    EXPECT_EQ(vm().status(), PackStatus::renamed());
    EXPECT_EQ(sidebar().statusLine()->text(), u"Names updated");
}

TEST_F(Sidebar, PrefixChipsApplyTheirTemplateAndMarkTheCurrentOne)
{
    window();
    addClips({QStringLiteral("a.mov")});
    const QList<SelectChip *> &chips = naming().chips();
    ASSERT_EQ(chips.size(), 6);
    QStringList labels;
    for (SelectChip *chip : chips)
        labels.append(chip->text());
    EXPECT_EQ(labels, (QStringList{u"concert"_qs, u"club"_qs, u"festival"_qs, u"corporate"_qs,
                                   u"wedding"_qs, u"clear"_qs}));
    EXPECT_TRUE(chips[5]->isSelected()); // the empty prefix is the "clear" template's

    chips[2]->click();
    EXPECT_EQ(vm().showPrefix(), u"festival");
    EXPECT_EQ(arenaNames(), QStringList{u"01_festival_a"_qs});
    EXPECT_EQ(naming().prefixField()->text(), u"festival");
    for (qsizetype i = 0; i < chips.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(chips[i]->isSelected(), i == 2);
    }
    chips[5]->click();
    EXPECT_EQ(arenaNames(), QStringList{u"01_a"_qs});
}

TEST_F(Sidebar, ZeroPadSwitchOnlySetsTheFlag)
{
    window();
    addClips({QStringLiteral("a.mov")});
    ToggleSwitch *toggle = naming().zeroPadSwitch();
    EXPECT_TRUE(toggle->isChecked());
    toggle->click();
    EXPECT_FALSE(vm().zeroPad());
    EXPECT_EQ(arenaNames(), QStringList{u"01_a"_qs}); // renamed only on request
    vm().renameAll();
    EXPECT_EQ(arenaNames(), QStringList{u"1_a"_qs});
    vm().setZeroPad(true);
    EXPECT_TRUE(toggle->isChecked());
}

TEST_F(Sidebar, StudioButtonsRaiseTheirFlagsAndExportAsksForAFolder)
{
    addClips({QStringLiteral("a.mov")});
    auto view = standalone(context());
    NamingCard *card = view->namingCard();
    EXPECT_EQ(card->editNamesButton()->text(), u"Edit names");
    EXPECT_EQ(card->convertButton()->text(), u"Convert");
    EXPECT_EQ(card->exportButton()->text(), u"Export pack");
    card->editNamesButton()->click();
    EXPECT_TRUE(vm().showRenameStudio());
    EXPECT_FALSE(vm().showConvertStudio());
    card->convertButton()->click();
    EXPECT_TRUE(vm().showConvertStudio());
    card->exportButton()->click(); // the panel is cancelled: nothing is written
    EXPECT_EQ(m_panels.messages.size(), 1);
}

TEST_F(Sidebar, ProfileRowsSetTheScreenProfile)
{
    window();
    addClips({QStringLiteral("a.mov")});
    const QList<SelectChip *> &rows = sidebar().profileCard()->rows();
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[0]->text(), u"16:9 stage");
    EXPECT_EQ(rows[1]->text(), u"LED wall");
    EXPECT_EQ(rows[1]->helpText(), u"Wide canvases, higher bitrate OK");
    EXPECT_EQ(rows[2]->text(), u"Vertical");
    EXPECT_TRUE(rows[0]->isSelected());

    rows[1]->click();
    EXPECT_EQ(vm().screenProfile(), ScreenProfile::ledWall);
    EXPECT_EQ(vm().preferredWidth(), 3840);
    EXPECT_FALSE(rows[0]->isSelected());
    EXPECT_TRUE(rows[1]->isSelected());
    ASSERT_TRUE(waitUntil([this] { return !vm().isScanning(); })); // the pack is probed again
    EXPECT_EQ(sidebar().statusLine()->text(), u"Ready: 1 clips");

    rows[2]->click();
    EXPECT_EQ(vm().preferredWidth(), 1080);
    ASSERT_TRUE(waitUntil([this] { return !vm().isScanning(); }));
}

TEST_F(Sidebar, HealthCardSplitsTheCountsAndAddsTheSizes)
{
    window();
    HealthCard *card = sidebar().healthCard();
    auto *bar = card->findChild<SegmentBar *>();
    auto *size = card->findChild<QLabel *>(QStringLiteral("health.sizeValue"));
    ASSERT_NE(bar, nullptr);
    ASSERT_NE(size, nullptr);
    ASSERT_EQ(bar->segments().size(), 3);
    for (const SegmentBar::Segment &segment : bar->segments())
        EXPECT_EQ(segment.value, 0);

    addBusyPack();
    EXPECT_EQ(bar->segments()[0].value, 1); // quiet.mov
    EXPECT_EQ(bar->segments()[1].value, 3); // the loud one and both twins
    EXPECT_EQ(bar->segments()[2].value, 0);
    EXPECT_EQ(bar->segments()[0].color, AppTheme::ok);
    EXPECT_EQ(bar->segments()[1].color, AppTheme::warn);
    EXPECT_EQ(bar->segments()[2].color, AppTheme::fail);
    qint64 bytes = 0;
    for (const char *name : {"loud.mov", "quiet.mov", "twin_a.mov", "twin_b.mov"})
        bytes += QFileInfo(path(QString::fromLatin1(name))).size();
    EXPECT_EQ(size->text(), QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat));
}

TEST_F(Sidebar, ChecklistCountsItsReadyLines)
{
    window();
    addBusyPack();
    ChecklistCard *card = sidebar().checklistCard();
    const PreShowChecklist list = vm().checklist();
    ASSERT_EQ(list.items.size(), 5);
    ASSERT_LT(list.readyCount(), 5);
    auto *progress = card->findChild<QLabel *>(QStringLiteral("checklist.progress"));
    ASSERT_NE(progress, nullptr);
    EXPECT_EQ(progress->text(), QStringLiteral("%1 / 5 ready").arg(list.readyCount()));
    for (const ChecklistItem &item : list.items) {
        SCOPED_TRACE(item.id.toStdString());
        QWidget *row = card->findChild<QWidget *>(QStringLiteral("checklist.") + item.id);
        ASSERT_NE(row, nullptr);
        bool titled = false;
        for (QLabel *label : row->findChildren<QLabel *>())
            titled = titled || label->text() == m_localization.strings()[item.titleKey];
        EXPECT_TRUE(titled);
    }
}

TEST_F(Sidebar, WatchCardShowsTheFolderOnlyWhileWatching)
{
    window();
    WatchCard *card = sidebar().watchCard();
    auto *folder = card->findChild<QLabel *>(QStringLiteral("watch.folderName"));
    ASSERT_NE(folder, nullptr);
    EXPECT_FALSE(folder->isVisibleTo(card));
    EXPECT_FALSE(card->stopButton()->isVisibleTo(card));

    const QString drop = path(QStringLiteral("Show Drop"));
    QDir().mkpath(drop);
    m_panels.folders.push_back(drop);
    auto *pick = card->findChild<KitButton *>(QStringLiteral("watch.pick"));
    ASSERT_NE(pick, nullptr);
    EXPECT_EQ(pick->text(), u"Choose folder…");
    pick->click();
    ASSERT_TRUE(vm().watchFolder().isWatching());
    EXPECT_TRUE(folder->isVisibleTo(card));
    EXPECT_EQ(folder->text(), u"Show Drop");
    EXPECT_TRUE(card->stopButton()->isVisibleTo(card));

    card->stopButton()->click();
    EXPECT_FALSE(vm().watchFolder().isWatching());
    EXPECT_FALSE(folder->isVisibleTo(card));
    EXPECT_FALSE(card->stopButton()->isVisibleTo(card));
}

TEST_F(Sidebar, ThisClipCardShowsFindingsOrTheCleanMessage)
{
    window();
    addBusyPack();
    ClipCard *card = sidebar().clipCard();
    const MediaClip loud = vm().clips()[0];
    ASSERT_FALSE(loud.issues.isEmpty());
    vm().setSelectedClipID(loud.id);
    QApplication::processEvents();
    ASSERT_TRUE(card->showsClip());
    EXPECT_TRUE(card->preview()->isVisibleTo(card));
    const QList<QLabel *> names = visibleLabels(card, QStringLiteral("selected.arenaName"));
    ASSERT_EQ(names.size(), 1);
    EXPECT_EQ(names[0]->text(), loud.arenaName);
    QStringList shown;
    for (QLabel *issue : visibleLabels(card, QStringLiteral("selected.issue")))
        shown.append(issue->text());
    QStringList expected;
    for (const ClipIssue &issue : loud.issues)
        expected.append(issue.localized(m_localization.strings()));
    EXPECT_EQ(shown, expected);
    EXPECT_TRUE(visibleLabels(card, QStringLiteral("selected.clean")).isEmpty());
    ASSERT_NE(card->removeAudioButton(), nullptr);
    EXPECT_EQ(card->removeAudioButton()->text(), u"Remove audio");

    const MediaClip quiet = vm().clips()[1];
    ASSERT_EQ(quiet.originalName, u"quiet.mov");
    ASSERT_TRUE(quiet.issues.isEmpty());
    vm().setSelectedClipID(quiet.id); // no finding, no audio
    QApplication::processEvents();    // new rows show once the loop runs
    const QList<QLabel *> clean = visibleLabels(card, QStringLiteral("selected.clean"));
    ASSERT_EQ(clean.size(), 1);
    EXPECT_EQ(clean[0]->text(), u"Looks good — no remarks");
    EXPECT_TRUE(visibleLabels(card, QStringLiteral("selected.issue")).isEmpty());
    EXPECT_EQ(card->removeAudioButton(), nullptr);
    EXPECT_EQ(visibleLabels(card, QStringLiteral("selected.arenaName"))[0]->text(),
              vm().clips()[1].arenaName);

    vm().setSelectedClipID(std::nullopt);
    QApplication::processEvents();
    EXPECT_FALSE(card->showsClip());
    EXPECT_FALSE(card->preview()->isVisibleTo(card));
    EXPECT_TRUE(visibleLabels(card, QStringLiteral("selected.arenaName")).isEmpty());
    EXPECT_EQ(visibleHints(card), QStringList{u"hint.selected"_qs});
}

TEST_F(Sidebar, RemoveAudioStripsOnlyTheSelectedClip)
{
    window();
    addBusyPack();
    vm().setSelectedClipID(vm().clips()[0].id);
    sidebar().clipCard()->removeAudioButton()->click();
    ASSERT_TRUE(waitUntil([this] { return !vm().isConverting(); }));
    EXPECT_EQ(m_conversion->calls(), 1);
    EXPECT_EQ(vm().clipsWithAudioCount(), 0);
}
