// The Qt file dialogs behind the session's panels, answered the way an operator would, and the
// places they offer: home, Videos, Desktop and every removable or network volume, read again
// each time a dialog opens.
#include "ui/qtpanels.h"
#include "uifixture.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace {

// Runs `answer` on the file dialog as soon as it is shown, from inside its own event loop.
void whenDialogOpens(std::function<void(QFileDialog &)> answer)
{
    auto *timer = new QTimer;
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, [timer, answer] {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            auto *dialog = qobject_cast<QFileDialog *>(widget);
            if (dialog && dialog->isVisible()) {
                timer->stop();
                timer->deleteLater();
                answer(*dialog);
                return;
            }
        }
    });
    timer->start();
}

void accept(QFileDialog &dialog)
{
    QMetaObject::invokeMethod(&dialog, "accept");
}

// Qt leaves the name field alone while it has the focus, and offscreen the focus arrives late,
// not always before the answer runs: the selection is made with the field unfocused, again
// until it holds. A selection that never holds rejects the dialog, so the test fails instead
// of waiting on a dialog that an empty selection keeps open.
void selectAndAccept(QFileDialog &dialog, const QString &typed, const QStringList &expected)
{
    const bool held = waitUntil([&] {
        if (QWidget *focused = dialog.focusWidget())
            focused->clearFocus();
        dialog.selectFile(typed);
        return dialog.selectedFiles() == expected;
    });
    EXPECT_TRUE(held) << dialog.selectedFiles().join(u' ').toStdString();
    held ? accept(dialog) : dialog.reject();
}

QUrl local(const QString &path)
{
    return QUrl::fromLocalFile(path);
}

} // namespace

TEST(QtPanels, OpenMediaTakesFoldersAndFilesWithTheSessionsTexts)
{
    QTemporaryDir root;
    ASSERT_TRUE(QDir(root.path()).mkpath(QStringLiteral("show")));
    ASSERT_TRUE(QFile(root.filePath(QStringLiteral("intro.mov"))).open(QIODevice::WriteOnly));
    QString title, acceptText;
    QStringList filters;
    whenDialogOpens([&](QFileDialog &dialog) {
        title = dialog.windowTitle();
        acceptText = dialog.labelText(QFileDialog::Accept);
        filters = dialog.nameFilters();
        dialog.setDirectory(root.path());
        selectAndAccept(
            dialog, QStringLiteral("\"show\" \"intro.mov\""),
            {root.filePath(QStringLiteral("show")), root.filePath(QStringLiteral("intro.mov"))});
    });
    const QList<QUrl> chosen =
        QtPanels().openMedia(QStringLiteral("Choose a show folder"), QStringLiteral("Add"));
    EXPECT_EQ(title, QStringLiteral("Choose a show folder"));
    EXPECT_EQ(acceptText, QStringLiteral("Add"));
    ASSERT_EQ(filters.size(), 1);
    EXPECT_TRUE(filters[0].startsWith(QStringLiteral("Add (")));
    EXPECT_EQ(chosen, (QList<QUrl>{local(root.filePath(QStringLiteral("show"))),
                                   local(root.filePath(QStringLiteral("intro.mov")))}));
}

TEST(QtPanels, SaveAndFolderPanelsOpenAtTheStartFolderAndReturnTheChoice)
{
    QTemporaryDir root;
    ASSERT_TRUE(QDir(root.path()).mkpath(QStringLiteral("packs")));
    const QString start = QDir(root.path()).absolutePath();
    QString typed;
    QFileDialog::AcceptMode mode = QFileDialog::AcceptOpen;
    whenDialogOpens([&](QFileDialog &dialog) {
        EXPECT_EQ(dialog.directory().absolutePath(), start);
        mode = dialog.acceptMode();
        typed = dialog.selectedFiles().value(0); // the proposed name, already typed in
        accept(dialog);
    });
    EXPECT_EQ(QtPanels().chooseSaveFile(QStringLiteral("Save project"), QStringLiteral("Save"),
                                        QStringLiteral("Show.cuebox.json"), root.path()),
              root.filePath(QStringLiteral("Show.cuebox.json")));
    EXPECT_EQ(mode, QFileDialog::AcceptSave);
    EXPECT_EQ(typed, root.filePath(QStringLiteral("Show.cuebox.json")));

    whenDialogOpens([&](QFileDialog &dialog) {
        EXPECT_EQ(dialog.directory().absolutePath(), start);
        const QString packs = root.filePath(QStringLiteral("packs"));
        selectAndAccept(dialog, packs, {packs});
    });
    EXPECT_EQ(
        QtPanels().chooseFolder(QStringLiteral("Export to"), QStringLiteral("Choose"), root.path()),
        root.filePath(QStringLiteral("packs")));
}

TEST(FilePlaces, HomeVideosThenRemovableAndNetworkVolumesInMountOrder)
{
    FakeHome home;
    ASSERT_TRUE(QDir(home.path()).mkdir(QStringLiteral("Videos"))); // no Desktop folder
    const QList<MountedVolume> volumes{
        {"/", "ext4", false},
        {"/media/op/SHOW_USB", "vfat", true},
        {"/boot/efi", "vfat", false},
        {"/srv/nas", "nfs4", false},
        {"/proc", "proc", false},
        {"/run/media/op/CARD", "exfat", false},
        {"/run/user/1000/doc", "fuse.portal", false},
        {"/data", "ext4", true}, // a USB disk mounted by fstab
        {"/home/op/share", "cifs", false},
        {"/media/op/SHOW_USB", "vfat", true}, // mounted twice: listed once
    };
    EXPECT_EQ(QtPanels::places(volumes),
              (QList<QUrl>{local(home.path()), local(home.path("Videos")),
                           local("/media/op/SHOW_USB"), local("/srv/nas"),
                           local("/run/media/op/CARD"), local("/data"), local("/home/op/share")}));
}

TEST(FilePlaces, AVolumePluggedInShowsWhenTheDialogOpensAgain)
{
    FakeHome home;
    ASSERT_TRUE(QDir(home.path()).mkdir(QStringLiteral("Desktop")));
    QList<MountedVolume> mounted{{"/", "ext4", false}};
    QtPanels panels(nullptr, [&mounted] { return mounted; });
    // Each kind of panel, cancelled, gives nothing.
    QList<QList<QUrl>> places;
    const auto cancel = [&places] {
        whenDialogOpens([&places](QFileDialog &dialog) {
            places.append(dialog.sidebarUrls());
            dialog.reject();
        });
    };
    cancel();
    EXPECT_FALSE(panels.chooseFolder(QStringLiteral("Watch"), QStringLiteral("Watch"), {}));
    mounted.append({"/media/op/NEW_DRIVE", "exfat", true});
    cancel();
    EXPECT_TRUE(panels.openMedia(QStringLiteral("Add"), QStringLiteral("Add")).isEmpty());
    cancel();
    EXPECT_FALSE(panels.chooseOpenFile(QStringLiteral("Open"), QStringLiteral("Open")));
    const QList<QUrl> before{local(home.path()), local(home.path("Desktop"))};
    const QList<QUrl> after = before + QList<QUrl>{local("/media/op/NEW_DRIVE")};
    EXPECT_EQ(places, (QList<QList<QUrl>>{before, after, after}));
}
