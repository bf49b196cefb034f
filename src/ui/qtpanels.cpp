#include "qtpanels.h"

#include "model/mediaclip.h"
#include "mnemonics.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStorageInfo>

namespace {

// Qt's file dialog chooses files or folders, not both. This one accepts whatever is selected
// when the button is pressed, so a show folder and loose clips can be added in one go; a
// double click on a folder still opens it.
class MediaDialog final : public QFileDialog
{
public:
    using QFileDialog::QFileDialog;

    void accept() override
    {
        const QStringList chosen = selectedFiles();
        const bool allExist =
            !chosen.isEmpty() && std::all_of(chosen.begin(), chosen.end(),
                                             [](const QString &p) { return QFileInfo::exists(p); });
        if (allExist)
            QDialog::accept();
        else
            QFileDialog::accept();
    }
};

QString homeFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::HomeLocation);
}

} // namespace

void QtPanels::prepare(QFileDialog &dialog, const QString &message, const QString &prompt) const
{
    // Qt's own dialog: the portal's native one drops the prompt and ignores the dark palette.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setWindowTitle(message);
    dialog.setLabelText(QFileDialog::Accept, withoutMnemonic(prompt));
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setSidebarUrls(places(m_volumes ? m_volumes() : QList<MountedVolume>{}));
}

QList<QUrl> QtPanels::places(const QList<MountedVolume> &volumes)
{
    QStringList paths{homeFolder()};
    for (auto location : {QStandardPaths::MoviesLocation, QStandardPaths::DesktopLocation}) {
        const QString folder = QStandardPaths::writableLocation(location);
        // Without XDG folders both fall back to home itself.
        if (QFileInfo(folder).isDir() && !paths.contains(folder))
            paths.append(folder);
    }
    for (const MountedVolume &volume : volumes)
        if (isRemovableOrNetwork(volume) && !paths.contains(volume.rootPath))
            paths.append(volume.rootPath);
    QList<QUrl> urls;
    for (const QString &path : std::as_const(paths))
        urls.append(QUrl::fromLocalFile(path));
    return urls;
}

bool QtPanels::isRemovableOrNetwork(const MountedVolume &volume)
{
    static const QStringList network{
        "nfs",           "nfs4",       "cifs",        "smb3",
        "smbfs",         "ncpfs",      "afs",         "9p",
        "davfs",         "fuse.sshfs", "fuse.rclone", "fuse.smbnetfs",
        "ceph",          "glusterfs",  "fuse.davfs2", "fuse.gvfsd-fuse",
        "fuse.glusterfs"};
    if (network.contains(volume.fileSystemType))
        return true;
    // Desktops mount plugged-in drives below these (udisks: /media/USER or /run/media/USER).
    const QString root = volume.rootPath;
    for (const char *parent : {"/media/", "/run/media/", "/mnt/"})
        if (root.startsWith(QLatin1String(parent)))
            return true;
    return volume.removableDevice && root != u"/";
}

QList<MountedVolume> QtPanels::mountedVolumes()
{
    QList<MountedVolume> volumes;
    for (const QStorageInfo &storage : QStorageInfo::mountedVolumes()) {
        if (!storage.isValid() || !storage.isReady())
            continue;
        // /dev/sdb1 -> /sys/class/block/sdb1; a partition's "removable" flag sits on its disk.
        const QString name = QFileInfo(QString::fromLocal8Bit(storage.device())).fileName();
        const QString block =
            QFileInfo(QStringLiteral("/sys/class/block/") + name).canonicalFilePath();
        bool removable = false;
        for (const QString &flag : {block + QStringLiteral("/removable"),
                                    QFileInfo(block).path() + QStringLiteral("/removable")}) {
            QFile file(flag);
            if (!block.isEmpty() && file.open(QIODevice::ReadOnly)) {
                removable = file.read(1) == "1";
                break;
            }
        }
        volumes.append(
            {storage.rootPath(), QString::fromLatin1(storage.fileSystemType()), removable});
    }
    return volumes;
}

QString QtPanels::mediaNameFilter(const QString &label)
{
    QStringList patterns;
    for (const QString &ext : MediaClip::videoExtensions())
        patterns.append(QStringLiteral("*.") + ext);
    for (const QString &ext : MediaClip::imageExtensions())
        patterns.append(QStringLiteral("*.") + ext);
    patterns.sort();
    return QStringLiteral("%1 (%2)").arg(label, patterns.join(u' '));
}

QList<QUrl> QtPanels::openMedia(const QString &message, const QString &prompt)
{
    MediaDialog dialog(m_parent);
    prepare(dialog, message, prompt);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setNameFilter(mediaNameFilter(prompt));
    dialog.setDirectory(homeFolder());
    if (dialog.exec() != QDialog::Accepted)
        return {};
    return dialog.selectedUrls();
}

std::optional<QString> QtPanels::chooseFolder(const QString &message, const QString &prompt,
                                              const std::optional<QString> &startFolder)
{
    QFileDialog dialog(m_parent);
    prepare(dialog, message, prompt);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setDirectory(startFolder.value_or(homeFolder()));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().front();
}

std::optional<QString> QtPanels::chooseSaveFile(const QString &message, const QString &prompt,
                                                const QString &proposedName,
                                                const std::optional<QString> &startFolder)
{
    QFileDialog dialog(m_parent);
    prepare(dialog, message, prompt);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilter(QStringLiteral("Cuebox (*.cuebox.json *.json)"));
    dialog.setDirectory(startFolder.value_or(homeFolder()));
    dialog.selectFile(proposedName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().front();
}

std::optional<QString> QtPanels::chooseOpenFile(const QString &message, const QString &prompt)
{
    QFileDialog dialog(m_parent);
    prepare(dialog, message, prompt);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilter(QStringLiteral("Cuebox (*.cuebox.json *.json)"));
    dialog.setDirectory(homeFolder());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().front();
}
