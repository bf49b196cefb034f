#pragma once

#include "media/thumbnailcache.h"
#include "session/sessionfixture.h"
#include "ui/appcommands.h"
#include "ui/mainwindow.h"
#include "ui/uicontext.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QTemporaryDir>

#include <memory>

// Every label's text below `widget`, in the order of its children.
inline QStringList labelTexts(const QWidget *widget)
{
    QStringList out;
    for (const QLabel *label : widget->findChildren<QLabel *>())
        out.append(label->text());
    return out;
}

// The texts of chips, rows or menu items, in order.
template<typename List>
QStringList textsOf(const List &items)
{
    QStringList out;
    for (const auto *item : items)
        out.append(item->text());
    return out;
}

// The positions of the selected chips.
template<typename List>
QList<int> selectedOf(const List &chips)
{
    QList<int> out;
    for (int i = 0; i < chips.size(); ++i)
        if (chips[i]->isSelected())
            out.append(i);
    return out;
}

// HOME and XDG_CONFIG_HOME in a temporary folder while this lives: the file dialogs' places
// and Alley's Wine folders are looked up there.
class FakeHome
{
public:
    FakeHome()
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
    const QByteArray m_home = qgetenv("HOME");
    const QByteArray m_config = qgetenv("XDG_CONFIG_HOME");
};

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
