// The Qt file dialogs behind the session's panels, answered the way an operator would, and the
// places they offer: home, Videos, Desktop and every removable or network volume, read again
// each time a dialog opens.
#include "ui/qtpanels.h"

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

QUrl local(const QString &path)
{
    return QUrl::fromLocalFile(path);
}

class FakeHome
{
public:
    FakeHome()
    {
        qputenv("HOME", m_dir.path().toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", (m_dir.path() + QStringLiteral("/.config")).toLocal8Bit());
    }
    ~FakeHome()
    {
        qputenv("HOME", m_home);
        m_config.isEmpty() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", m_config);
    }
    QString path(const QString &name = {}) const
    {
        return name.isEmpty() ? m_dir.path() : m_dir.filePath(name);
    }

private:
    QTemporaryDir m_dir;
    const QByteArray m_home = qgetenv("HOME");
    const QByteArray m_config = qgetenv("XDG_CONFIG_HOME");
};

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
        dialog.selectFile(QStringLiteral("\"show\" \"intro.mov\""));
        accept(dialog);
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

TEST(QtPanels, CancelledPanelsGiveNothing)
{
    const auto reject = [](QFileDialog &dialog) { dialog.reject(); };
    whenDialogOpens(reject);
    EXPECT_TRUE(QtPanels().openMedia(QStringLiteral("m"), QStringLiteral("p")).isEmpty());
    whenDialogOpens(reject);
    EXPECT_FALSE(QtPanels().chooseFolder(QStringLiteral("m"), QStringLiteral("p"), std::nullopt));
    whenDialogOpens(reject);
    EXPECT_FALSE(QtPanels().chooseOpenFile(QStringLiteral("m"), QStringLiteral("p")));
}

TEST(QtPanels, SaveProposesTheNameInTheStartFolder)
{
    QTemporaryDir root;
    QString directory, typed;
    QFileDialog::AcceptMode mode = QFileDialog::AcceptOpen;
    whenDialogOpens([&](QFileDialog &dialog) {
        directory = dialog.directory().absolutePath();
        mode = dialog.acceptMode();
        typed = dialog.selectedFiles().value(0);
        accept(dialog);
    });
    const std::optional<QString> saved =
        QtPanels().chooseSaveFile(QStringLiteral("Save project"), QStringLiteral("Save"),
                                  QStringLiteral("Show.cuebox.json"), root.path());
    EXPECT_EQ(directory, QDir(root.path()).absolutePath());
    EXPECT_EQ(mode, QFileDialog::AcceptSave);
    EXPECT_EQ(typed, root.filePath(QStringLiteral("Show.cuebox.json")));
    EXPECT_EQ(saved, root.filePath(QStringLiteral("Show.cuebox.json")));
}

TEST(QtPanels, ChooseFolderOpensAtTheStartFolderAndReturnsTheChoice)
{
    QTemporaryDir root;
    ASSERT_TRUE(QDir(root.path()).mkpath(QStringLiteral("packs")));
    QString directory;
    whenDialogOpens([&](QFileDialog &dialog) {
        directory = dialog.directory().absolutePath();
        dialog.selectFile(root.filePath(QStringLiteral("packs")));
        accept(dialog);
    });
    const std::optional<QString> folder =
        QtPanels().chooseFolder(QStringLiteral("Export to"), QStringLiteral("Choose"), root.path());
    EXPECT_EQ(directory, QDir(root.path()).absolutePath());
    EXPECT_EQ(folder, root.filePath(QStringLiteral("packs")));
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
    QList<QUrl> before, after;
    whenDialogOpens([&](QFileDialog &dialog) {
        before = dialog.sidebarUrls();
        dialog.reject();
    });
    EXPECT_FALSE(panels.chooseFolder(QStringLiteral("Watch"), QStringLiteral("Watch"), {}));
    mounted.append({"/media/op/NEW_DRIVE", "exfat", true});
    whenDialogOpens([&](QFileDialog &dialog) {
        after = dialog.sidebarUrls();
        dialog.reject();
    });
    EXPECT_TRUE(panels.openMedia(QStringLiteral("Add"), QStringLiteral("Add")).isEmpty());
    EXPECT_EQ(before, (QList<QUrl>{local(home.path()), local(home.path("Desktop"))}));
    EXPECT_EQ(after, (QList<QUrl>{local(home.path()), local(home.path("Desktop")),
                                  local("/media/op/NEW_DRIVE")}));
}
