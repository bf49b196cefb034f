#pragma once

#include "session/platform.h"

#include <QUrl>

#include <functional>

class QFileDialog;
class QWidget;

// A mounted file system as the dialogs' sidebar needs to know it.
struct MountedVolume {
    QString rootPath;
    QString fileSystemType;
    bool removableDevice = false; // the kernel marks the disk removable (USB sticks, cards)
};

// The session's dialogs as Qt's own file dialogs, modal over the main window and styled like
// it. The message is the dialog's title and the prompt its accept button, as the session asks.
class QtPanels final : public Panels
{
public:
    using VolumeSource = std::function<QList<MountedVolume>()>;

    explicit QtPanels(QWidget *parent = nullptr, VolumeSource volumes = mountedVolumes)
        : m_parent(parent), m_volumes(std::move(volumes))
    {}
    void setParent(QWidget *parent) { m_parent = parent; }

    QList<QUrl> openMedia(const QString &message, const QString &prompt) override;
    std::optional<QString> chooseFolder(const QString &message, const QString &prompt,
                                        const std::optional<QString> &startFolder) override;
    std::optional<QString> chooseSaveFile(const QString &message, const QString &prompt,
                                          const QString &proposedName,
                                          const std::optional<QString> &startFolder) override;
    std::optional<QString> chooseOpenFile(const QString &message, const QString &prompt) override;

    // "Movies and images (*.mov *.mp4 …)": every extension media discovery accepts.
    static QString mediaNameFilter(const QString &label);

    // Where operators keep media, for the dialogs' sidebar: home, Videos and Desktop (those
    // that exist), then every removable or network volume, in mount order. Read again each
    // time a dialog opens, so a drive plugged in meanwhile shows the next time.
    static QList<QUrl> places(const QList<MountedVolume> &volumes);
    static bool isRemovableOrNetwork(const MountedVolume &volume);
    static QList<MountedVolume> mountedVolumes();

private:
    void prepare(QFileDialog &dialog, const QString &message, const QString &prompt) const;

    QWidget *m_parent;
    VolumeSource m_volumes;
};
