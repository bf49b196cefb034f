#pragma once

#include "platform.h"

// The real desktop: the freedesktop file manager over D-Bus, QDesktopServices for links, and
// a detached process for another application (Wine for Windows programs).
class SystemDesktop final : public Desktop
{
public:
    void reveal(const QString &path) override;
    void openWithApplication(const QStringList &files, const QString &application) override;
    void openUrl(const QUrl &url) override;
};
