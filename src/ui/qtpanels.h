#pragma once

#include "session/platform.h"

class QWidget;

// The session's dialogs as Qt's own file dialogs, modal over the main window and styled like
// it. The message is the dialog's title and the prompt its accept button, as the session asks.
class QtPanels final : public Panels
{
public:
    explicit QtPanels(QWidget *parent = nullptr) : m_parent(parent) {}
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

private:
    QWidget *m_parent;
};
