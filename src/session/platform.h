#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

// Dialogs the session needs. The window answers them with real panels, tests with a script.
// Every call is modal and returns on the GUI thread; nothing (or an empty list) means
// cancelled.
class Panels
{
public:
    virtual ~Panels() = default;
    // Files and folders, several at once, filtered to movies, images and folders.
    virtual QList<QUrl> openMedia(const QString &message, const QString &prompt) = 0;
    // One folder; new folders may be created. `startFolder` is where the chooser opens.
    virtual std::optional<QString> chooseFolder(const QString &message, const QString &prompt,
                                                const std::optional<QString> &startFolder) = 0;
    // A file name to save a project under.
    virtual std::optional<QString> chooseSaveFile(const QString &message, const QString &prompt,
                                                  const QString &proposedName,
                                                  const std::optional<QString> &startFolder) = 0;
    // One existing project file.
    virtual std::optional<QString> chooseOpenFile(const QString &message,
                                                  const QString &prompt) = 0;
};

// Desktop services: the file manager, other applications, the browser and the mail client.
class Desktop
{
public:
    virtual ~Desktop() = default;
    virtual void reveal(const QString &path) = 0;
    virtual void openWithApplication(const QStringList &files, const QString &application) = 0;
    virtual void openUrl(const QUrl &url) = 0;
};
