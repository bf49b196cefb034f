// The file dialogs open where operators keep media: home, Videos, Desktop and every removable
// or network volume, read again each time a dialog opens.
#include "ui/qtpanels.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

// The sidebar of the next file dialog that opens; the dialog is then cancelled.
QList<QUrl> *sidebarOfNextDialog(QList<QUrl> *out)
{
    auto *timer = new QTimer;
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, [timer, out] {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            auto *dialog = qobject_cast<QFileDialog *>(widget);
            if (dialog && dialog->isVisible()) {
                timer->stop();
                timer->deleteLater();
                *out = dialog->sidebarUrls();
                dialog->reject();
                return;
            }
        }
    });
    timer->start();
    return out;
}

QUrl local(const QString &path)
{
    return QUrl::fromLocalFile(path);
}

// Home and the XDG folders follow HOME; restored when the test ends.
class FakeHome
{
public:
    FakeHome() : m_home(qgetenv("HOME")), m_config(qgetenv("XDG_CONFIG_HOME"))
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
    QByteArray m_home;
    QByteArray m_config;
};

} // namespace

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
    sidebarOfNextDialog(&before);
    EXPECT_FALSE(panels.chooseFolder(QStringLiteral("Watch"), QStringLiteral("Watch"), {}));
    mounted.append({"/media/op/NEW_DRIVE", "exfat", true});
    sidebarOfNextDialog(&after);
    EXPECT_TRUE(panels.openMedia(QStringLiteral("Add"), QStringLiteral("Add")).isEmpty());
    EXPECT_EQ(before, (QList<QUrl>{local(home.path()), local(home.path("Desktop"))}));
    EXPECT_EQ(after, (QList<QUrl>{local(home.path()), local(home.path("Desktop")),
                                  local("/media/op/NEW_DRIVE")}));
}
