// What each sidebar card shows and calls: names, profiles, health, checklist, watch folder and
// the selected clip.
#include "sidebarfixture.h"

#include "session/watchfoldermonitor.h"
#include "ui/clippreviewview.h"
#include "ui/segmentbar.h"

#include <QLineEdit>
#include <QTest>

TEST_F(Sidebar, NamingRenamesOnReturnOrAChipButTypingAndTheZeroPadSwitchOnlySetTheFields)
{
    window();
    addClips({"a.mov", "b.mov"});
    QLineEdit *field = naming().prefixField();
    EXPECT_EQ(field->placeholderText(), u"e.g. concert");
    field->setFocus();
    QTest::keyClicks(field, QStringLiteral("gig"));
    EXPECT_EQ(vm().showPrefix(), u"gig");
    EXPECT_EQ(arenaNames(), (QStringList{u"01_a"_qs, u"02_b"_qs}));
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(arenaNames(), (QStringList{u"01_gig_a"_qs, u"02_gig_b"_qs}));
    EXPECT_EQ(sidebar().statusLine()->text(), u"Names updated");

    const QList<SelectChip *> &chips = naming().chips();
    EXPECT_EQ(textsOf(chips), (QStringList{u"concert"_qs, u"club"_qs, u"festival"_qs,
                                           u"corporate"_qs, u"wedding"_qs, u"clear"_qs}));
    chips[2]->click();
    EXPECT_EQ(arenaNames(), (QStringList{u"01_festival_a"_qs, u"02_festival_b"_qs}));
    EXPECT_EQ(selectedOf(chips), QList<int>{2});
    chips[5]->click(); // the empty prefix is the "clear" template's
    EXPECT_EQ(arenaNames(), (QStringList{u"01_a"_qs, u"02_b"_qs}));

    ToggleSwitch *toggle = naming().zeroPadSwitch();
    toggle->click();
    EXPECT_FALSE(vm().zeroPad());
    EXPECT_EQ(arenaNames(), (QStringList{u"01_a"_qs, u"02_b"_qs})); // renamed only on request
    vm().setZeroPad(true);
    EXPECT_TRUE(toggle->isChecked());
}

TEST_F(Sidebar, StudioButtonsRaiseTheirFlagsAndExportAsksForAFolder)
{
    addClips({"a.mov"});
    auto view = standalone(context());
    NamingCard *card = view->namingCard();
    EXPECT_EQ(card->editNamesButton()->text(), u"Edit names");
    EXPECT_EQ(card->convertButton()->text(), u"Convert");
    EXPECT_EQ(card->exportButton()->text(), u"Export pack");
    card->editNamesButton()->click();
    EXPECT_TRUE(vm().showRenameStudio());
    card->convertButton()->click();
    EXPECT_TRUE(vm().showConvertStudio());
    card->exportButton()->click(); // the panel is cancelled: nothing is written
    EXPECT_EQ(m_panels.messages.size(), 1);
}

TEST_F(Sidebar, ProfileRowsSetTheScreenProfile)
{
    window();
    addClips({"a.mov"});
    const QList<SelectChip *> &rows = sidebar().profileCard()->rows();
    EXPECT_EQ(textsOf(rows), (QStringList{u"16:9 stage"_qs, u"LED wall"_qs, u"Vertical"_qs}));
    EXPECT_EQ(rows[1]->helpText(), u"Wide canvases, higher bitrate OK");
    EXPECT_EQ(selectedOf(rows), QList<int>{0});

    rows[1]->click();
    EXPECT_EQ(vm().screenProfile(), ScreenProfile::ledWall);
    EXPECT_EQ(selectedOf(rows), QList<int>{1});
    ASSERT_TRUE(waitUntil([this] { return !vm().isScanning(); })); // the pack is probed again
}

TEST_F(Sidebar, HealthCardSplitsTheCountsAndAddsTheSizesAndTheChecklistCountsReadyLines)
{
    window();
    HealthCard *card = sidebar().healthCard();
    auto *size = card->findChild<QLabel *>(QStringLiteral("health.sizeValue"));
    addBusyPack();
    QList<double> values;
    for (const SegmentBar::Segment &segment : card->findChild<SegmentBar *>()->segments())
        values.append(segment.value);
    EXPECT_EQ(values, (QList<double>{1, 3, 0})); // quiet.mov; the loud one and both twins
    qint64 bytes = 0;
    for (const char *name : {"loud.mov", "quiet.mov", "twin_a.mov", "twin_b.mov"})
        bytes += QFileInfo(path(QString::fromLatin1(name))).size();
    EXPECT_EQ(size->text(), QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat));

    // The checklist counts its ready lines; which lines are ready is the session's.
    const int ready = vm().checklist().readyCount();
    ASSERT_LT(ready, 5);
    EXPECT_EQ(sidebar()
                  .checklistCard()
                  ->findChild<QLabel *>(QStringLiteral("checklist.progress"))
                  ->text(),
              QStringLiteral("%1 / 5 ready").arg(ready));
}

TEST_F(Sidebar, WatchCardShowsTheFolderOnlyWhileWatching)
{
    window();
    WatchCard *card = sidebar().watchCard();
    auto *folder = card->findChild<QLabel *>(QStringLiteral("watch.folderName"));
    const auto shown = [&] {
        return QList<bool>{folder->isVisibleTo(card), card->stopButton()->isVisibleTo(card)};
    };
    EXPECT_EQ(shown(), (QList<bool>{false, false}));

    const QString drop = path(QStringLiteral("Show Drop"));
    QDir().mkpath(drop);
    m_panels.folders.push_back(drop);
    auto *pick = card->findChild<KitButton *>(QStringLiteral("watch.pick"));
    EXPECT_EQ(pick->text(), u"Choose folder…");
    pick->click();
    ASSERT_TRUE(vm().watchFolder().isWatching());
    EXPECT_EQ(shown(), (QList<bool>{true, true}));
    EXPECT_EQ(folder->text(), u"Show Drop");
    card->stopButton()->click();
    EXPECT_FALSE(vm().watchFolder().isWatching());
    EXPECT_EQ(shown(), (QList<bool>{false, false}));
}

TEST_F(Sidebar, ThisClipCardSaysTransparentOnlyForClipsWithAlpha)
{
    window();
    withAlpha(QStringLiteral("logo.mov"));
    addClips({"logo.mov", "plain.mov"});
    for (int i : {0, 1}) {
        SCOPED_TRACE(i);
        vm().setSelectedClipID(vm().clips()[i].id);
        QApplication::processEvents();
        const auto *label = window().findChild<QLabel *>(QStringLiteral("selected.transparent"));
        ASSERT_TRUE(label);
        EXPECT_EQ(label->text(), QStringLiteral("Transparent"));
        EXPECT_EQ(label->isVisible(), i == 0);
    }
}

TEST_F(Sidebar, ThisClipCardShowsFindingsOrTheCleanMessageAndRemovesTheAudio)
{
    window();
    addBusyPack();
    ClipCard *card = sidebar().clipCard();
    const MediaClip loud = vm().clips()[0];
    ASSERT_FALSE(loud.issues.isEmpty());
    vm().setSelectedClipID(loud.id);
    QApplication::processEvents();
    EXPECT_TRUE(card->preview()->isVisibleTo(card));
    const auto shown = [card](const char *name) {
        return textsOf(visibleLabels(card, QString::fromLatin1(name)));
    };
    EXPECT_EQ(shown("selected.arenaName"), QStringList{loud.arenaName});
    QStringList expected;
    for (const ClipIssue &issue : loud.issues)
        expected.append(issue.localized(m_localization.strings()));
    EXPECT_EQ(shown("selected.issue"), expected);
    EXPECT_EQ(card->removeAudioButton()->text(), u"Remove audio");
    // It strips the selected clip alone: one conversion, and no audio left in the pack.
    card->removeAudioButton()->click();
    ASSERT_TRUE(waitUntil([this] { return !vm().isConverting(); }));
    EXPECT_EQ(m_conversion->calls(), 1);
    EXPECT_EQ(vm().clipsWithAudioCount(), 0);

    const MediaClip quiet = vm().clips()[1];
    vm().setSelectedClipID(quiet.id); // no finding, no audio
    QApplication::processEvents();    // new rows show once the loop runs
    EXPECT_EQ(shown("selected.clean"), QStringList{u"Looks good — no remarks"_qs});
    EXPECT_TRUE(shown("selected.issue").isEmpty());
    EXPECT_EQ(card->removeAudioButton(), nullptr);

    vm().setSelectedClipID(std::nullopt);
    QApplication::processEvents();
    EXPECT_FALSE(card->preview()->isVisibleTo(card));
    EXPECT_TRUE(shown("selected.arenaName").isEmpty());
    EXPECT_EQ(visibleHints(card), QStringList{u"hint.selected"_qs});
}
