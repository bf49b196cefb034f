// Every button, chip and one-line label of the sidebar and of both studios shows its text
// whole in all six languages, normal and compact, at the window's minimum size: the text's
// advance against the room its widget gives it, and the widget inside what is on screen.
#include "sidebarfixture.h"

#include "l10n/localizationmanager.h"
#include "session/watchfoldermonitor.h"

#include <QDialog>
#include <QScrollArea>
#include <QtMath>

namespace {

// "Class "text": needs N px, has M, at x A..B of W" for each text below `root` that does not
// show whole; `frame` is the area on screen the widgets must lie in.
QStringList cutTexts(QWidget *root, QWidget *frame)
{
    QStringList cut;
    const auto check = [&](QWidget *w, const QString &text, qreal needs, int room) {
        if (!w->isVisibleTo(root) || text.isEmpty())
            return;
        const QRect box(w->mapTo(frame, QPoint(0, 0)), w->size());
        if (needs > room || box.left() < 0 || box.right() >= frame->width())
            cut.append(QString::asprintf("%s \"%s\": needs %g px, has %d, at x %d..%d of %d",
                                         w->metaObject()->className(), qPrintable(text), needs,
                                         room, box.left(), box.right(), frame->width()));
    };
    // Buttons and chips ask for their text's advance plus their padding and symbol; whatever
    // they get below that comes off the text, which they elide even for a fraction of a pixel.
    for (QAbstractButton *button : root->findChildren<QAbstractButton *>()) {
        if (qobject_cast<KitButton *>(button) || qobject_cast<SelectChip *>(button)) {
            const qreal advance = QFontMetricsF(button->font()).horizontalAdvance(button->text());
            const int padding = button->sizeHint().width() - qCeil(advance);
            check(button, button->text(), advance, button->width() - padding);
        }
    }
    // One-line labels do not elide: a cut shows as clipped glyphs.
    for (QLabel *label : root->findChildren<QLabel *>()) {
        if (label->wordWrap() || Qt::mightBeRichText(label->text()))
            continue;
        int needs = 0;
        for (const QString &line : label->text().split(u'\n'))
            needs = std::max(needs, label->fontMetrics().horizontalAdvance(line));
        check(label, label->text(), needs, label->contentsRect().width() - 2 * label->margin());
    }
    return cut;
}

} // namespace

class LabelsFit : public Sidebar
{
protected:
    // A pack with counts on every batch button, a warn clip selected and a folder watched, so
    // that every button of the sidebar is on screen.
    void SetUp() override
    {
        Sidebar::SetUp();
        window();
        addBusyPack();
        vm().setSelectedClipID(vm().clips()[0].id); // loud.mov: a finding and remove-audio
        QDir().mkpath(path(QStringLiteral("Show Drop")));
        m_panels.folders.push_back(path(QStringLiteral("Show Drop")));
        vm().pickWatchFolder();
        ASSERT_TRUE(vm().watchFolder().isWatching());
    }

    // Layouts settle over a few rounds (the sidebar's scroll bar appears after its cards
    // have grown, and narrows them).
    static void settle()
    {
        for (int round = 0; round < 4; ++round)
            QApplication::processEvents();
    }

    void atMinimumSize(bool compact)
    {
        m_preferences.setCompactMode(compact);
        settle();
        window().resize(window().minimumSize());
        settle();
    }

    QStringList cutInSheet(bool rename)
    {
        QDialog *dialog = openSheet(rename);
        if (!dialog)
            return {QStringLiteral("the sheet did not open")};
        settle();
        const QStringList cut = cutTexts(dialog, dialog);
        rename ? vm().setShowRenameStudio(false) : vm().setShowConvertStudio(false);
        waitUntil([&] { return !window().renameSheet() && !window().convertSheet(); });
        return cut;
    }
};

TEST_F(LabelsFit, SidebarAndStudiosShowEveryTextWholeInEveryLanguage)
{
    for (bool compact : {false, true}) {
        atMinimumSize(compact);
        for (AppLanguage language : kAllLanguages) {
            SCOPED_TRACE(rawValue(language).toStdString() + (compact ? " compact" : ""));
            m_localization.setLanguage(language);
            settle();
            EXPECT_EQ(cutTexts(&sidebar(), sidebar().scrollArea()->viewport()), QStringList());
            EXPECT_EQ(cutInSheet(true), QStringList());
            EXPECT_EQ(cutInSheet(false), QStringList());
        }
    }
}
