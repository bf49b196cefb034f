#include "alley.h"

#include "platform.h"

#include <QDir>
#include <QFileInfo>

namespace Alley {

QStringList candidatePaths(const QString &home)
{
    const QString wine = home + QStringLiteral("/.wine/drive_c/");
    return {QStringLiteral("/Applications/Resolume Alley/Alley.app"),
            QStringLiteral("/Applications/Alley.app"),
            QStringLiteral("/Applications/Resolume Arena/Alley.app"),
            wine + QStringLiteral("Program Files/Resolume Alley/Alley.exe"),
            wine + QStringLiteral("Program Files/Resolume Arena/Alley.exe")};
}

std::optional<QString> alleyURL(const QString &home)
{
    for (const QString &path : candidatePaths(home)) {
        if (QFileInfo::exists(path))
            return path;
    }
    return std::nullopt;
}

bool isResolumeAlleyInstalled(const QString &home)
{
    return alleyURL(home).has_value();
}

QUrl downloadPage()
{
    return QUrl(QStringLiteral("https://resolume.com/software/alley"));
}

void open(const QStringList &files, Desktop &desktop, const QString &home)
{
    if (const std::optional<QString> app = alleyURL(home))
        desktop.openWithApplication(files, *app);
    else
        desktop.openUrl(downloadPage());
}

void open(const QStringList &files, Desktop &desktop)
{
    open(files, desktop, QDir::homePath());
}

} // namespace Alley
