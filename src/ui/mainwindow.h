#pragma once

#include "uicontext.h"

#include <QDialog>
#include <QMainWindow>
#include <QPointer>

#include <functional>

class AppCommands;
class ContentView;
class Desktop;

// The main window: menus, toolbar, the content view and the two studio sheets. The content is
// rebuilt on a language switch; the minimum size follows compact mode at once.
class MainWindow final : public QMainWindow
{
    Q_OBJECT
public:
    MainWindow(const UiContext &context, Desktop &desktop, QWidget *parent = nullptr);

    static QSize defaultSize(bool compact);
    static QSize minimumSizeFor(bool compact);

    AppCommands *commands() const { return m_commands; }
    ContentView *content() const { return m_content; }
    QToolBar *toolBar() const { return m_toolBar; }
    QDialog *renameSheet() const { return m_renameSheet; }
    QDialog *convertSheet() const { return m_convertSheet; }

Q_SIGNALS:
    void settingsRequested();

private:
    void rebuildContent();
    void applyCompact();
    void syncSheets();
    QDialog *openSheet(const QString &title, QSize size, void (PackViewModel::*closeFlag)(bool),
                       const std::function<QWidget *(QDialog *sheet)> &makeContent);

    UiContext m_context;
    Desktop &m_desktop;
    AppCommands *m_commands;
    QToolBar *m_toolBar;
    ContentView *m_content = nullptr;
    QPointer<QDialog> m_renameSheet;
    QPointer<QDialog> m_convertSheet;
};
