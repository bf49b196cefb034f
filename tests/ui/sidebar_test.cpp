// The report sidebar in the window: its place and padding, every button's enabling rule, the
// hints that go for good, the status line, the entrance and the credit line.
#include "sidebarfixture.h"

#include "l10n/localizationmanager.h"
#include "ui/bugreport/creditfooter.h"
#include "ui/clippreviewview.h"
#include "ui/detailarea.h"
#include "ui/motion.h"

#include <QScrollArea>

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
    // A full-width colon is not followed by a second, ASCII space.
    m_localization.setLanguage(AppLanguage::chinese);
    QApplication::processEvents();
    EXPECT_EQ(sidebar().creditFooter()->text(),
              QString::fromUtf8("设计：") + QStringLiteral(CUEBOX_MAKER));
}
