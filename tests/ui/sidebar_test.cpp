// The report sidebar in the window: every control's enabling rule, what each one calls, the
// hints that go for good, the status line, the entrance and the credit line.
#include "uifixture.h"

#include "l10n/localizationmanager.h"
#include "session/watchfoldermonitor.h"
#include "ui/bugreport/creditfooter.h"
#include "ui/clippreviewview.h"
#include "ui/cliptablemodel.h"
#include "ui/contentview.h"
#include "ui/detailarea.h"
#include "ui/kitbuttons.h"
#include "ui/kitwidgets.h"
#include "ui/motion.h"
#include "ui/segmentbar.h"
#include "ui/sidebar/reportsidebarview.h"
#include "ui/sidebar/selectchip.h"

#include <QLineEdit>
#include <QScrollArea>
#include <QTest>

namespace {

struct Rule {
    const char *name;
    QAbstractButton *button;
    bool enabled;
};

void expectEnabled(std::initializer_list<Rule> rules)
{
    for (const Rule &rule : rules) {
        SCOPED_TRACE(rule.name);
        ASSERT_NE(rule.button, nullptr);
        EXPECT_EQ(rule.button->isEnabled(), rule.enabled);
    }
}

// Banners still on screen, by hint id (dismissed ones leave through deleteLater).
QStringList visibleHints(QWidget *root)
{
    QStringList ids;
    for (HintBanner *banner : root->findChildren<HintBanner *>())
        if (banner->isVisibleTo(root))
            ids.append(banner->objectName());
    ids.sort();
    return ids;
}

// Labels on screen with that object name (rebuilt rows leave through deleteLater, hidden).
QList<QLabel *> visibleLabels(QWidget *root, const QString &name)
{
    QList<QLabel *> shown;
    for (QLabel *label : root->findChildren<QLabel *>(name))
        if (label->isVisibleTo(root))
            shown.append(label);
    return shown;
}

} // namespace

class Sidebar : public WindowTest
{
protected:
    ReportSidebarView &sidebar() { return *window().content()->sidebar(); }
    NamingCard &naming() { return *sidebar().namingCard(); }
    BatchCard &batch() { return *sidebar().batchCard(); }

    // A sidebar of its own over the fixture's desktop, outside any window.
    std::unique_ptr<ReportSidebarView> standalone(const UiContext &ctx)
    {
        auto view = std::make_unique<ReportSidebarView>(ctx, m_desktop);
        view->resize(ReportSidebarView::kWidth, 900);
        view->show();
        QApplication::processEvents();
        return view;
    }

    // loud.mov has audio (a warning), quiet.mov is clean, twin_a and twin_b are one file twice.
    void addBusyPack()
    {
        const qsizetype before = vm().clips().size();
        VideoFacts loud = FakeProbe::defaultVideo();
        loud.audioTrackCount = 1;
        loud.audioCodecCode = FakeProbe::code("aac ");
        m_probe->setVideo(QStringLiteral("loud.mov"), loud);
        touch(QStringLiteral("twin_a.mov"), QByteArray(64, 't'));
        touch(QStringLiteral("twin_b.mov"), QByteArray(64, 't'));
        QList<QUrl> urls;
        for (const char *name : {"loud.mov", "quiet.mov"})
            urls.append(url(touch(QString::fromLatin1(name))));
        urls.append(url(path(QStringLiteral("twin_a.mov"))));
        urls.append(url(path(QStringLiteral("twin_b.mov"))));
        vm().handleDrop(urls);
        ASSERT_TRUE(waitUntil([this] { return !vm().isScanning(); }));
        ASSERT_EQ(vm().clips().size(), before + 4);
    }

    // Starts a problem-clip conversion that runs until cancelled.
    void holdConversion()
    {
        m_conversion->setDelay(std::chrono::milliseconds(20000));
        QDir().mkpath(path(QStringLiteral("out")));
        m_panels.folders.push_back(path(QStringLiteral("out")));
        batch().convertProblemsButton()->click();
        ASSERT_TRUE(waitUntil([this] { return vm().isConverting(); }));
    }
    void releaseConversion()
    {
        vm().cancelConversion();
        ASSERT_TRUE(waitUntil([this] { return !vm().isConverting(); }));
    }
};

TEST_F(Sidebar, SitsLeftOfTheDetailAt320Or280WithItsPadding)
{
    window();
    EXPECT_EQ(sidebar().width(), 320);
    EXPECT_EQ(sidebar().mapTo(&window(), QPoint(0, 0)).x(), 0);
    EXPECT_EQ(window().content()->detail()->mapTo(window().content(), QPoint(0, 0)).x(), 320);
    GlassCard *card = sidebar().checklistCard();
    EXPECT_EQ(card->mapTo(&sidebar(), card->faceRect().topLeft().toPoint()).x(), 16);

    m_preferences.setCompactMode(true);
    QApplication::processEvents();
    EXPECT_EQ(sidebar().width(), 280);
    card = sidebar().checklistCard();
    EXPECT_EQ(card->mapTo(&sidebar(), card->faceRect().topLeft().toPoint()).x(), 12);
}

TEST_F(Sidebar, EmptyPackDisablesEveryButtonThatNeedsClips)
{
    window();
    expectEnabled({
        {"Edit names", naming().editNamesButton(), false},
        {"Convert", naming().convertButton(), false},
        {"Export pack", naming().exportButton(), false},
        {"Strip audio", batch().stripAudioButton(), false},
        {"Convert warn/fail", batch().convertProblemsButton(), false},
        {"Remove duplicates", batch().removeDuplicatesButton(), false},
        {"16:9 stage", sidebar().profileCard()->rows()[0], true},
    });
    EXPECT_EQ(batch().stripAudioButton()->text(), u"Strip audio (0)");
    EXPECT_EQ(batch().convertProblemsButton()->text(), u"Convert warn/fail (0)");
    EXPECT_EQ(batch().removeDuplicatesButton()->text(), u"Remove duplicates (0)");
    EXPECT_FALSE(sidebar().clipCard()->showsClip());
    EXPECT_FALSE(sidebar().clipCard()->preview()->isVisibleTo(sidebar().clipCard()));
}

TEST_F(Sidebar, WithClipsEachButtonFollowsItsOwnCount)
{
    window();
    addClips({QStringLiteral("a.mov"), QStringLiteral("b.mov")});
    expectEnabled({
        {"Edit names", naming().editNamesButton(), true},
        {"Convert", naming().convertButton(), true},
        {"Export pack", naming().exportButton(), true},
        {"Strip audio", batch().stripAudioButton(), false},
        {"Convert warn/fail", batch().convertProblemsButton(), false},
        {"Remove duplicates", batch().removeDuplicatesButton(), false},
    });

    addBusyPack();
    EXPECT_EQ(batch().stripAudioButton()->text(), u"Strip audio (1)");
    EXPECT_EQ(batch().convertProblemsButton()->text(), u"Convert warn/fail (3)");
    EXPECT_EQ(batch().removeDuplicatesButton()->text(), u"Remove duplicates (2)");
    expectEnabled({
        {"Strip audio", batch().stripAudioButton(), true},
        {"Convert warn/fail", batch().convertProblemsButton(), true},
        {"Remove duplicates", batch().removeDuplicatesButton(), true},
    });

    batch().removeDuplicatesButton()->click();
    EXPECT_EQ(vm().clips().size(), 5);
    EXPECT_EQ(batch().removeDuplicatesButton()->text(), u"Remove duplicates (0)");
    EXPECT_FALSE(batch().removeDuplicatesButton()->isEnabled());
}

TEST_F(Sidebar, DuringAScanExportIsOffButConvertStaysOn)
{
    window();
    addBusyPack();
    m_probe->setDelay(std::chrono::milliseconds(400));
    vm().handleDrop({url(touch(QStringLiteral("late.mov")))});
    ASSERT_TRUE(vm().isScanning());
    expectEnabled({
        {"Edit names", naming().editNamesButton(), true},
        {"Convert", naming().convertButton(), true},
        {"Export pack", naming().exportButton(), false},
        {"Strip audio", batch().stripAudioButton(), true},
    });
    ASSERT_TRUE(waitUntil([this] { return !vm().isScanning(); }));
    EXPECT_TRUE(naming().exportButton()->isEnabled());
}

TEST_F(Sidebar, DuringAConversionOnlyNamesAndDuplicatesStayOn)
{
    window();
    addBusyPack();
    vm().setSelectedClipID(vm().clips()[0].id); // loud.mov, with audio
    ASSERT_NE(sidebar().clipCard()->removeAudioButton(), nullptr);
    EXPECT_TRUE(sidebar().clipCard()->removeAudioButton()->isEnabled());

    holdConversion();
    expectEnabled({
        {"Edit names", naming().editNamesButton(), true},
        {"Convert", naming().convertButton(), false},
        {"Export pack", naming().exportButton(), false},
        {"Strip audio", batch().stripAudioButton(), false},
        {"Convert warn/fail", batch().convertProblemsButton(), false},
        {"Remove duplicates", batch().removeDuplicatesButton(), true},
        {"Remove audio", sidebar().clipCard()->removeAudioButton(), false},
    });
    releaseConversion();
    expectEnabled({
        {"Convert", naming().convertButton(), true},
        {"Export pack", naming().exportButton(), true},
        {"Strip audio", batch().stripAudioButton(), true},
        {"Remove audio", sidebar().clipCard()->removeAudioButton(), true},
    });
}

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
    QApplication::processEvents(); // new rows show once the loop runs
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

TEST_F(Sidebar, StatusLineIsAbsentWhileIdle)
{
    window();
    QLabel *line = sidebar().statusLine();
    EXPECT_FALSE(line->isVisibleTo(&sidebar()));
    addClips({QStringLiteral("a.mov")});
    EXPECT_TRUE(line->isVisibleTo(&sidebar()));
    EXPECT_EQ(line->text(), u"Ready: 1 clips");
    vm().clear();
    EXPECT_FALSE(line->isVisibleTo(&sidebar()));
}

TEST_F(Sidebar, DismissedHintStaysHiddenAfterTheSettingsAreReadAgain)
{
    {
        auto view = standalone(context());
        EXPECT_EQ(visibleHints(view.get()),
                  (QStringList{u"hint.health"_qs, u"hint.naming"_qs, u"hint.selected"_qs}));
        auto *banner = view->findChild<HintBanner *>(QStringLiteral("hint.health"));
        ASSERT_NE(banner, nullptr);
        auto *close = banner->findChild<RoundIconButton *>();
        ASSERT_NE(close, nullptr);
        EXPECT_EQ(close->toolTip(), u"Hide this tip");
        close->click();
        ASSERT_TRUE(waitUntil(
            [this] { return m_localization.isHintDismissed(QStringLiteral("hint.health")); }));
        QApplication::processEvents();
        EXPECT_EQ(visibleHints(view.get()), (QStringList{u"hint.naming"_qs, u"hint.selected"_qs}));
    }
    m_settings.sync();

    // A later run: everything read afresh from the same file.
    QSettings store(path(QStringLiteral("prefs.conf")), QSettings::IniFormat);
    LocalizationManager localization(store);
    AppPreferences preferences(store);
    const UiContext later{vm(), localization, preferences, m_thumbnails};
    auto view = standalone(later);
    EXPECT_EQ(visibleHints(view.get()), (QStringList{u"hint.naming"_qs, u"hint.selected"_qs}));
}

TEST_F(Sidebar, DismissingTheClipHintLeavesThePlainText)
{
    auto view = standalone(context());
    auto *banner = view->findChild<HintBanner *>(QStringLiteral("hint.selected"));
    ASSERT_NE(banner, nullptr);
    banner->findChild<RoundIconButton *>()->click();
    ASSERT_TRUE(waitUntil(
        [this] { return m_localization.isHintDismissed(QStringLiteral("hint.selected")); }));
    QApplication::processEvents();
    const QList<QLabel *> plain =
        visibleLabels(view->clipCard(), QStringLiteral("selected.plainHint"));
    ASSERT_EQ(plain.size(), 1);
    EXPECT_EQ(plain[0]->text(),
              u"Click a row on the right. We’ll tell you if something may break the show.");
    EXPECT_TRUE(visibleHints(view->clipCard()).isEmpty());
}

TEST_F(Sidebar, EntersFromTheLeftWhenFirstShown)
{
    Motion::setInstant(false);
    auto restore = qScopeGuard([] { Motion::setInstant(true); });
    ReportSidebarView view(context(), m_desktop);
    view.resize(ReportSidebarView::kWidth, 700);
    QWidget *stage = view.findChild<QWidget *>(QStringLiteral("sidebar.stage"));
    ASSERT_NE(stage, nullptr);
    view.show();
    QApplication::processEvents();
    EXPECT_FALSE(view.hasAppeared());
    EXPECT_LT(stage->x(), 0);
    EXPECT_GE(stage->x(), -16);
    ASSERT_TRUE(waitUntil([&] { return view.hasAppeared(); }, 3000));
    EXPECT_EQ(stage->x(), 0);
    EXPECT_EQ(stage->graphicsEffect(), nullptr);
}

TEST_F(Sidebar, CreditLineSitsBelowTheScrollAreaAndOpensTheSite)
{
    auto view = standalone(context());
    CreditFooter *footer = view->creditFooter();
    ASSERT_NE(footer, nullptr);
    EXPECT_EQ(footer->text(), u"Designed by "_qs + QStringLiteral(CUEBOX_MAKER));
    EXPECT_EQ(footer->toolTip(), QUrl(QStringLiteral(CUEBOX_WEBSITE)).host());
    QScrollArea *scroll = view->scrollArea();
    EXPECT_FALSE(scroll->isAncestorOf(footer));
    const QRect scrollBox(scroll->mapTo(view.get(), QPoint(0, 0)), scroll->size());
    const QRect footerBox(footer->mapTo(view.get(), QPoint(0, 0)), footer->size());
    EXPECT_GE(footerBox.top(), scrollBox.bottom());
    EXPECT_EQ(footerBox.bottom(), view->height() - 1);

    footer->click();
    ASSERT_EQ(m_desktop.urls.size(), 1);
    EXPECT_EQ(m_desktop.urls.front(), QUrl(QStringLiteral(CUEBOX_WEBSITE)));
}

TEST_F(Sidebar, SwitchingTheLanguageRelabelsTheSidebar)
{
    window();
    m_localization.setLanguage(AppLanguage::german);
    QApplication::processEvents();
    const L10n german(AppLanguage::german);
    auto *title = sidebar().findChild<QLabel *>(QStringLiteral("sidebar.title"));
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(title->text(), german[u"sidebar.title"]);
    EXPECT_NE(german[u"sidebar.title"], u"Your show");
    EXPECT_EQ(naming().exportButton()->text(), german[u"naming.export"]);
    EXPECT_EQ(sidebar().creditFooter()->text(),
              german[u"credit.designed"] + u' ' + QStringLiteral(CUEBOX_MAKER));
}
