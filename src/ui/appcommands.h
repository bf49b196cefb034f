#pragma once

#include "uicontext.h"

#include <QHash>
#include <QKeySequence>
#include <QObject>

class Desktop;
class QAction;
class QMenuBar;
class QToolBar;

// Every command of the menus and the toolbar as a QAction. Each one only calls the session,
// flips one of its flags or flips a preference. Titles come from the string tables and are
// looked up again on a language switch; enabling is re-evaluated whenever a value it reads
// changes, so a batch cannot start while a conversion runs.
class AppCommands final : public QObject
{
    Q_OBJECT
public:
    enum class Command {
        // File
        openFolder,
        openProject,
        saveProject,
        verifyPack,
        clearPack,
        settings,
        quit,
        // Pack
        editNames,
        convert,
        exportPack,
        stripAudio,
        convertProblems,
        // View
        compactMode,
        // Help
        reportBug,
        // Toolbar: separate actions, because their titles, tooltips and rules differ.
        toolbarOpen,
        toolbarOpenProject,
        toolbarSaveProject,
        toolbarExport,
        toolbarBug,
    };

    AppCommands(const UiContext &context, Desktop &desktop, QObject *parent = nullptr);

    QAction *action(Command command) const { return m_actions.value(command); }
    QList<Command> all() const { return m_actions.keys(); }

    void fillMenuBar(QMenuBar *bar);
    void fillToolBar(QToolBar *bar);
    void relabel();
    void updateEnabled();

Q_SIGNALS:
    void settingsRequested();
    void quitRequested();

private:
    QAction *add(Command command, const QString &symbol, const QKeySequence &shortcut = {});
    void trigger(Command command);

    UiContext m_context;
    Desktop &m_desktop;
    QHash<Command, QAction *> m_actions;
    QHash<Command, QAction *> m_menuTitles; // menu actions of the menu bar, for relabelling
    QAction *m_fileMenu = nullptr;
    QAction *m_packMenu = nullptr;
    QAction *m_viewMenu = nullptr;
    QAction *m_helpMenu = nullptr;
};
