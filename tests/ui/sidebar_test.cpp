// The report sidebar in the window: every button's enabling rule, the hints that go for good,
// the status line and the credit line.
#include "sidebarfixture.h"

#include "ui/bugreport/creditfooter.h"

TEST_F(Sidebar, EachButtonFollowsThePackItsCountsAScanAndAConversion)
{
    // Per button, enabled (1) or not (0) or not looked at (-): an empty pack; two clean clips;
    // with audio, a warning and duplicates added; while a scan runs; while a batch runs; after.
    const struct {
        const char *name;
        std::function<QAbstractButton *()> button;
        const char *enabled;
    } rows[] = {
        {"Edit names", [this] { return naming().editNamesButton(); }, "01-11-"},
        {"Convert", [this] { return naming().convertButton(); }, "01-101"},
        {"Export pack", [this] { return naming().exportButton(); }, "01-001"},
        {"Strip audio", [this] { return batch().stripAudioButton(); }, "001101"},
        {"Convert warn/fail", [this] { return batch().convertProblemsButton(); }, "001-0-"},
        {"Remove duplicates", [this] { return batch().removeDuplicatesButton(); }, "001-1-"},
        {"16:9 stage", [this] { return sidebar().profileCard()->rows()[0]; }, "1-----"},
        {"Remove audio", [this] { return sidebar().clipCard()->removeAudioButton(); }, "--1-01"},
    };
    const auto expectState = [&](int state) {
        for (const auto &row : rows) {
            SCOPED_TRACE(testing::Message() << "state " << state << ", " << row.name);
            if (row.enabled[state] != '-') {
                ASSERT_NE(row.button(), nullptr);
                EXPECT_EQ(row.button()->isEnabled(), row.enabled[state] == '1');
            }
        }
    };
    const auto counts = [this] {
        return QStringList{batch().stripAudioButton()->text(),
                           batch().convertProblemsButton()->text(),
                           batch().removeDuplicatesButton()->text()};
    };
    window();
    expectState(0);
    QLabel *statusLine = sidebar().statusLine(); // absent while idle
    EXPECT_FALSE(statusLine->isVisibleTo(&sidebar()));
    EXPECT_EQ(counts(),
              (QStringList{"Strip audio (0)", "Convert warn/fail (0)", "Remove duplicates (0)"}));
    addClips({"a.mov", "b.mov"});
    expectState(1);
    EXPECT_EQ(statusLine->text(), u"Ready: 2 clips");
    addBusyPack();
    const QUuid loud = vm().clips()[2].id;
    ASSERT_EQ(vm().clips()[2].originalName, u"loud.mov");
    vm().setSelectedClipID(loud);
    EXPECT_EQ(counts(),
              (QStringList{"Strip audio (1)", "Convert warn/fail (3)", "Remove duplicates (2)"}));
    expectState(2);

    m_probe->setDelay(std::chrono::milliseconds(400));
    vm().handleDrop({url(touch(QStringLiteral("late.mov"), "late"))}); // no twin of quiet.mov
    ASSERT_TRUE(vm().isScanning());
    expectState(3);
    ASSERT_TRUE(waitUntil([this] { return !vm().isScanning(); }));
    m_probe->setDelay(std::chrono::milliseconds(0));
    vm().setSelectedClipID(loud);
    m_conversion->setDelay(std::chrono::milliseconds(20000)); // until cancelled
    QDir().mkpath(path(QStringLiteral("out")));
    m_panels.folders.push_back(path(QStringLiteral("out")));
    batch().convertProblemsButton()->click();
    ASSERT_TRUE(waitUntil([this] { return vm().isConverting(); }));
    expectState(4);
    vm().cancelConversion();
    ASSERT_TRUE(waitUntil([this] { return !vm().isConverting(); }));
    expectState(5);

    vm().clear();
    EXPECT_FALSE(statusLine->isVisibleTo(&sidebar()));
}

TEST_F(Sidebar, DismissedHintsStayHidden)
{
    {
        auto view = standalone(context());
        EXPECT_EQ(visibleHints(view.get()),
                  (QStringList{u"hint.health"_qs, u"hint.naming"_qs, u"hint.selected"_qs}));
        for (const char *id : {"hint.health", "hint.selected"}) {
            auto *banner = view->findChild<HintBanner *>(QString::fromLatin1(id));
            ASSERT_NE(banner, nullptr);
            auto *close = banner->findChild<RoundIconButton *>();
            EXPECT_EQ(close->toolTip(), u"Hide this tip");
            close->click();
            ASSERT_TRUE(waitUntil(
                [this, id] { return m_localization.isHintDismissed(QString::fromLatin1(id)); }));
        }
        QApplication::processEvents();
        EXPECT_EQ(visibleHints(view.get()), QStringList{u"hint.naming"_qs});
        const QList<QLabel *> plain =
            visibleLabels(view->clipCard(), QStringLiteral("selected.plainHint"));
        ASSERT_EQ(plain.size(), 1);
        EXPECT_EQ(plain[0]->text(),
                  u"Click a row on the right. We’ll tell you if something may break the show.");
    }
    // Dismissed hints are read back from the settings: a new sidebar does not show them.
    auto view = standalone(context());
    EXPECT_EQ(visibleHints(view.get()), QStringList{u"hint.naming"_qs});
}

TEST_F(Sidebar, CreditLineOpensTheSiteAndTheSidebarFollowsTheLanguage)
{
    CreditFooter *footer = sidebar().creditFooter();
    EXPECT_EQ(footer->text(), u"Designed by "_qs + QStringLiteral(CUEBOX_MAKER));
    EXPECT_EQ(footer->toolTip(), QUrl(QStringLiteral(CUEBOX_WEBSITE)).host());
    footer->click();
    EXPECT_EQ(m_desktop.urls, QList<QUrl>{QUrl(QStringLiteral(CUEBOX_WEBSITE))});

    m_localization.setLanguage(AppLanguage::german);
    QApplication::processEvents();
    const L10n german(AppLanguage::german);
    EXPECT_EQ(sidebar().findChild<QLabel *>(QStringLiteral("sidebar.title"))->text(),
              german[u"sidebar.title"]);
    EXPECT_EQ(sidebar().creditFooter()->text(),
              german[u"credit.designed"] + u' ' + QStringLiteral(CUEBOX_MAKER));
    // A full-width colon is not followed by a second, ASCII space.
    m_localization.setLanguage(AppLanguage::chinese);
    QApplication::processEvents();
    EXPECT_EQ(sidebar().creditFooter()->text(),
              QString::fromUtf8("设计：") + QStringLiteral(CUEBOX_MAKER));
}
