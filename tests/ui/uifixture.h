#pragma once

#include "media/thumbnailcache.h"
#include "session/sessionfixture.h"
#include "ui/appcommands.h"
#include "ui/mainwindow.h"
#include "ui/uicontext.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>

#include <memory>

// Every label's text below `widget`, in the order of its children.
inline QStringList labelTexts(const QWidget *widget)
{
    QStringList out;
    for (const QLabel *label : widget->findChildren<QLabel *>())
        out.append(label->text());
    return out;
}

// A main window over the session fixture: fake probe and converter, scripted panels, private
// preferences, and a thumbnail cache of its own that gives a coloured tile per file (the
// fixture's files are empty, so nothing could decode them).
class WindowTest : public SessionTest
{
protected:
    WindowTest()
        : m_thumbnails([](const QString &path, std::stop_token) {
            QImage image(160, 90, QImage::Format_RGB32);
            image.fill(QColor::fromHsv(static_cast<int>(qHash(path) % 360), 150, 200));
            return image;
        })
    {}

    UiContext &context()
    {
        if (!m_context)
            m_context = std::make_unique<UiContext>(
                UiContext{vm(), m_localization, m_preferences, m_thumbnails});
        return *m_context;
    }

    MainWindow &window()
    {
        if (!m_window) {
            m_window = std::make_unique<MainWindow>(context(), m_desktop);
            m_window->show();
            QApplication::processEvents();
        }
        return *m_window;
    }

    QAction *command(AppCommands::Command c) { return window().commands()->action(c); }

    // Adds files (empty; the fake probe answers for them) and waits for the ingest to end.
    void addClips(const QStringList &names)
    {
        QList<QUrl> urls;
        for (const QString &name : names)
            urls.append(url(touch(name)));
        vm().handleDrop(urls);
        ASSERT_TRUE(waitUntil([this] { return !vm().isScanning(); }));
    }

    // Opens the rename or the convert studio from the session's flag, as the menu and the
    // sidebar do, and waits until its sheet is on screen.
    QDialog *openSheet(bool rename)
    {
        window();
        rename ? vm().setShowRenameStudio(true) : vm().setShowConvertStudio(true);
        const auto sheet = [this, rename] {
            return rename ? window().renameSheet() : window().convertSheet();
        };
        EXPECT_TRUE(waitUntil([&] { return sheet() && sheet()->isVisible(); }));
        return sheet();
    }

    void TearDown() override
    {
        m_window.reset();
        SessionTest::TearDown();
    }

    ThumbnailCache m_thumbnails;
    std::unique_ptr<UiContext> m_context;
    std::unique_ptr<MainWindow> m_window;
};
