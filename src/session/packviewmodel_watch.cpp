// The watch folder: its media joins the pack at once, later changes after a quiet period.
#include "packviewmodel.h"

#include "model/pathnames.h"
#include "session/platform.h"
#include "session/watchfoldermonitor.h"

#include <QPointer>

void PackViewModel::pickWatchFolder()
{
    if (!m_services.panels)
        return;
    const std::optional<QString> folder = m_services.panels->chooseFolder(
        text("watch.pick.message"), text("watch.pick.prompt"), std::nullopt);
    if (folder)
        startWatching(*folder);
}

void PackViewModel::startWatching(const QString &folder)
{
    QPointer<PackViewModel> self(this);
    m_watchFolder->start(folder, [self](const QString &changed) {
        if (self) // a report after the session has gone is dropped
            self->ingest({QUrl::fromLocalFile(changed)});
    });
    ingest({QUrl::fromLocalFile(folder)});
    setStatus(PackStatus::watching(PathNames::lastComponent(folder)));
}

void PackViewModel::stopWatching()
{
    m_watchFolder->stop();
    setStatus(m_clips.isEmpty() ? PackStatus::idle() : PackStatus::ready(m_clips.size()));
}
