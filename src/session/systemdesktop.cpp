#include "systemdesktop.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>

void SystemDesktop::reveal(const QString &path)
{
    // File managers that implement org.freedesktop.FileManager1 open the folder with the item
    // selected; without one, opening the parent folder is the next best thing.
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QUrl::fromLocalFile(path).toString()} << QString();
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, 2000);
    if (reply.type() == QDBusMessage::ReplyMessage)
        return;
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absolutePath()));
}

void SystemDesktop::openWithApplication(const QStringList &files, const QString &application)
{
    if (application.endsWith(QStringLiteral(".exe"), Qt::CaseInsensitive))
        QProcess::startDetached(QStringLiteral("wine"), QStringList{application} + files);
    else
        QProcess::startDetached(application, files);
}

void SystemDesktop::openUrl(const QUrl &url)
{
    QDesktopServices::openUrl(url);
}
