#include "uifixture.h"

#include "model/arenanamer.h"
#include "ui/cliptabledelegate.h"
#include "ui/cliptablemodel.h"
#include "ui/cliptableview.h"
#include "ui/clipthumbs.h"
#include "ui/contentview.h"
#include "ui/detailarea.h"
#include "ui/packview.h"

#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPointer>
#include <QTest>

class ClipTable : public WindowTest
{
protected:
    ClipTableView &table() { return *window().content()->detail()->packView()->table(); }
    ClipTableModel &model() { return *table().clipModel(); }
    QStringList cueAndNames()
    {
        QStringList out;
        for (const MediaClip &c : vm().clips())
            out.append(QString::number(c.cueIndex) + u':' + c.arenaName);
        return out;
    }
};

TEST_F(ClipTable, ShowsOneRowPerClipAndSelectsWithTheSession)
{
    addClips({"b.mov", "a.mov", "c.png"});
    EXPECT_EQ(model().index(0, ClipTableModel::CueColumn).data().toInt(), 1);
    EXPECT_EQ(model().index(0, ClipTableModel::OriginalColumn).data().toString(), u"a.mov");
    EXPECT_EQ(model().index(0, ClipTableModel::ResolutionColumn).data().toString(),
              u"1920\u00d71080");
    EXPECT_EQ(model().index(0, ClipTableModel::FrameRateColumn).data().toString(), u"25.00");
    EXPECT_EQ(model().index(2, 0).data(ClipTableModel::IsImageRole), true);
    EXPECT_EQ(model().index(0, ClipTableModel::HandleColumn).data(Qt::ToolTipRole).toString(),
              L10n()[u"table.drag.help"]);
    // The ingest selected its first clip; the selection follows the session both ways.
    EXPECT_EQ(table().currentIndex().row(), 0);
    table().selectRow(2);
    EXPECT_EQ(vm().selectedClipID(), vm().clips()[2].id);
    vm().setSelectedClipID(vm().clips()[1].id);
    EXPECT_EQ(table().currentIndex().row(), 1);
}

TEST_F(ClipTable, InlineRenameIsSanitizedOnEveryKeystroke)
{
    addClips({"a.mov", "b.mov"});
    const QModelIndex name = model().index(1, ClipTableModel::NameColumn);
    table().setCurrentIndex(name);
    table().edit(name);
    auto *editor = table().findChild<QLineEdit *>(QStringLiteral("arenaNameEditor"));
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    // Each keystroke is cleaned at once: capitals fold, "!" goes, and a word break typed at the
    // end shows as a pending "_" (the stored name never ends in one) so the next word joins.
    const struct {
        const char *keys, *field, *stored;
    } steps[] = {{"Big", "big", "big"},
                 {" ", "big_", "big"},
                 {"D", "big_d", "big_d"},
                 {"rop!", "big_drop", "big_drop"}};
    for (const auto &step : steps) {
        SCOPED_TRACE(step.keys);
        QTest::keyClicks(editor, QString::fromLatin1(step.keys));
        EXPECT_EQ(editor->text(), QString::fromLatin1(step.field));
        EXPECT_EQ(vm().clips()[1].arenaName, QString::fromLatin1(step.stored));
    }
    EXPECT_EQ(model().index(1, ClipTableModel::NameColumn).data().toString(), editor->text());
    // A capital typed between letters folds, and the caret stays after it.
    editor->setCursorPosition(3);
    QTest::keyClick(editor, 'X');
    EXPECT_EQ(editor->text(), u"bigx_drop");
    EXPECT_EQ(editor->cursorPosition(), 4);
    EXPECT_EQ(vm().clips()[1].arenaName, editor->text());
    EXPECT_TRUE(editor->isVisible());
}

TEST_F(ClipTable, DragReorderRenumbersEveryClip)
{
    addClips({"a.mov", "b.mov", "c.mov", "d.mov"});
    ASSERT_EQ(cueAndNames(), QStringList({u"1:01_a"_qs, u"2:02_b"_qs, u"3:03_c"_qs, u"4:04_d"_qs}));
    // Row 0 dropped into the gap before row 3: the way the view hands a drag to the model.
    std::unique_ptr<QMimeData> drag(model().mimeData({model().index(0, 0)}));
    model().dropMimeData(drag.get(), Qt::MoveAction, 3, 0, {});
    EXPECT_EQ(cueAndNames(), QStringList({u"1:01_b"_qs, u"2:02_c"_qs, u"3:03_a"_qs, u"4:04_d"_qs}));
}

TEST_F(ClipTable, RowMenuOffersMovesDeleteAndAudioOnlyWithAudio)
{
    withAudio(QStringLiteral("b.mov"));
    addClips({"a.mov", "b.mov"});
    const auto titles = [this](int row) {
        std::unique_ptr<QMenu> menu(table().makeRowMenu(row));
        QStringList out;
        for (QAction *a : menu->actions())
            out.append(a->isSeparator() ? QStringLiteral("|") : a->text());
        return out;
    };
    const L10n en;
    EXPECT_EQ(titles(0),
              QStringList({en[u"table.up"], en[u"table.down"], u"|"_qs, en[u"table.delete"]}));
    EXPECT_EQ(titles(1), QStringList({en[u"table.up"], en[u"table.down"], u"|"_qs,
                                      en[u"table.delete"], en[u"audio.remove"]}));
    std::unique_ptr<QMenu> menu(table().makeRowMenu(0));
    menu->actions()[1]->trigger(); // Move down
    EXPECT_EQ(vm().clips()[1].originalName, u"a.mov");
    menu.reset(table().makeRowMenu(1));
    menu->actions()[3]->trigger(); // Delete
    ASSERT_EQ(vm().clips().size(), 1);
    EXPECT_EQ(vm().clips()[0].originalName, u"b.mov");
}

TEST_F(ClipTable, ThumbnailsLoadOnlyForPaintedRows)
{
    QStringList names;
    for (int i = 0; i < 60; ++i)
        names.append(QStringLiteral("clip%1.mov").arg(i, 2, 10, QChar(u'0')));
    addClips(names);
    window().resize(1180, 740);
    table().viewport()->repaint();
    const qsizetype asked = table().thumbs()->requestCount();
    EXPECT_GT(asked, 0);
    EXPECT_LT(asked, 30); // a window shows about a dozen rows, not sixty
    ASSERT_TRUE(waitUntil([this] { return m_thumbnails.count() >= 1; }));
}

TEST_F(ClipTable, EditOfARemovedClipIsDropped)
{
    addClips({"a.mov", "b.mov"});
    const QModelIndex name = model().index(1, ClipTableModel::NameColumn);
    table().setCurrentIndex(name);
    table().edit(name);
    QPointer<QLineEdit> editor = table().findChild<QLineEdit *>(QStringLiteral("arenaNameEditor"));
    ASSERT_NE(editor, nullptr);
    vm().remove(vm().clips()[1].id);
    if (editor) // the table may already have closed it
        QTest::keyClicks(editor, QStringLiteral("x"));
    ASSERT_EQ(vm().clips().size(), 1);
    EXPECT_EQ(vm().clips()[0].arenaName, u"01_a");
}
