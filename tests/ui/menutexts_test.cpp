// The menu bar as the operator reads it in every language: one mnemonic per menu, none
// repeated, and no "&" of a table text taken for one (it showed "Convert Warn  Fail Only").
#include "uifixture.h"

#include "l10n/localizationmanager.h"

#include <QMenu>
#include <QMenuBar>

using MenuTexts = WindowTest;

TEST_F(MenuTexts, EachMenuHasItsOwnMnemonicAndItemsShowTheirTextsWhole)
{
    window();
    for (AppLanguage language : kAllLanguages) {
        SCOPED_TRACE(rawValue(language).toStdString());
        m_localization.setLanguage(language);
        QApplication::processEvents();
        const L10n strings(language);
        QStringList table;
        for (const QString &key : L10n::keys(language))
            table.append(strings[key]);
        QList<QKeySequence> mnemonics;
        for (QAction *title : window().menuBar()->actions()) {
            const QKeySequence mnemonic = QKeySequence::mnemonic(title->text());
            EXPECT_FALSE(mnemonic.isEmpty()) << qPrintable(title->text());
            EXPECT_FALSE(mnemonics.contains(mnemonic)) << qPrintable(title->text());
            mnemonics.append(mnemonic);
            ASSERT_NE(title->menu(), nullptr);
            for (QAction *item : title->menu()->actions()) {
                if (item->isSeparator())
                    continue;
                // iconText() is the text with Qt's mnemonic marks taken out, as it is drawn.
                QString shown = item->iconText();
                if (!table.contains(shown) && shown.endsWith(u'…')) // "Settings…"
                    shown.chop(1);
                EXPECT_TRUE(table.contains(shown)) << qPrintable(item->iconText());
                EXPECT_TRUE(QKeySequence::mnemonic(item->text()).isEmpty())
                    << qPrintable(item->text());
            }
        }
        EXPECT_EQ(mnemonics.size(), 4);
    }
}
