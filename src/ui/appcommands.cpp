#include "appcommands.h"

#include "bugreport/bugreport.h"
#include "l10n/apppreferences.h"
#include "l10n/localizationmanager.h"
#include "mnemonics.h"
#include "session/packviewmodel.h"
#include "symbols.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

using Command = AppCommands::Command;

AppCommands::AppCommands(const UiContext &context, Desktop &desktop, QObject *parent)
    : QObject(parent), m_context(context), m_desktop(desktop)
{
    const auto ctrl = [](QKeyCombination keys) { return QKeySequence(keys); };
    add(Command::openFolder, QStringLiteral("folder"), ctrl(Qt::CTRL | Qt::Key_O));
    add(Command::openProject, QStringLiteral("doc"), ctrl(Qt::CTRL | Qt::SHIFT | Qt::Key_O));
    add(Command::saveProject, QStringLiteral("square.and.arrow.down"), ctrl(Qt::CTRL | Qt::Key_S));
    add(Command::verifyPack, QStringLiteral("checkmark.seal.fill"));
    add(Command::clearPack, QStringLiteral("trash"), ctrl(Qt::CTRL | Qt::Key_K));
    add(Command::settings, QStringLiteral("gearshape"), ctrl(Qt::CTRL | Qt::Key_Comma));
    add(Command::quit, {}, QKeySequence::Quit)->setMenuRole(QAction::QuitRole);
    add(Command::editNames, {}, ctrl(Qt::CTRL | Qt::Key_R));
    add(Command::convert, {}, ctrl(Qt::CTRL | Qt::Key_T));
    add(Command::exportPack, QStringLiteral("square.and.arrow.up"), ctrl(Qt::CTRL | Qt::Key_E));
    add(Command::stripAudio, {}, ctrl(Qt::CTRL | Qt::SHIFT | Qt::Key_A));
    add(Command::convertProblems, {}, ctrl(Qt::CTRL | Qt::SHIFT | Qt::Key_T));
    QAction *compact = add(Command::compactMode, {}, ctrl(Qt::CTRL | Qt::SHIFT | Qt::Key_M));
    compact->setCheckable(true);
    add(Command::reportBug, QStringLiteral("ladybug.fill"), ctrl(Qt::CTRL | Qt::SHIFT | Qt::Key_B));
    add(Command::toolbarOpen, QStringLiteral("folder"));
    add(Command::toolbarOpenProject, QStringLiteral("doc"));
    add(Command::toolbarSaveProject, QStringLiteral("square.and.arrow.down"));
    add(Command::toolbarExport, QStringLiteral("square.and.arrow.up"));
    add(Command::toolbarBug, QStringLiteral("ladybug.fill"));

    PackViewModel &vm = m_context.viewModel;
    for (auto changed : {&PackViewModel::clipsChanged, &PackViewModel::isScanningChanged,
                         &PackViewModel::isConvertingChanged, &PackViewModel::isVerifyingChanged})
        connect(&vm, changed, this, &AppCommands::updateEnabled);
    connect(&m_context.preferences, &AppPreferences::compactModeChanged, this,
            &AppCommands::updateEnabled);
    relabel();
    updateEnabled();
}

QAction *AppCommands::add(Command command, const QString &symbol, const QKeySequence &shortcut)
{
    auto *action = new QAction(this);
    if (!symbol.isEmpty())
        action->setIcon(Symbols::icon(symbol));
    action->setIconVisibleInMenu(false);
    if (!shortcut.isEmpty()) {
        action->setShortcut(shortcut);
        action->setShortcutContext(Qt::ApplicationShortcut);
    }
    connect(action, &QAction::triggered, this, [this, command] { trigger(command); });
    m_actions.insert(command, action);
    return action;
}

void AppCommands::trigger(Command command)
{
    PackViewModel &vm = m_context.viewModel;
    switch (command) {
    case Command::openFolder:
    case Command::toolbarOpen:
        vm.pickFolder();
        break;
    case Command::openProject:
    case Command::toolbarOpenProject:
        vm.openProject();
        break;
    case Command::saveProject:
    case Command::toolbarSaveProject:
        vm.saveProject();
        break;
    case Command::verifyPack:
        vm.verifyPack(); // reports through the status line
        break;
    case Command::clearPack:
        vm.clear(); // the detail area animates the change of emptiness itself
        break;
    case Command::settings:
        Q_EMIT settingsRequested();
        break;
    case Command::quit:
        Q_EMIT quitRequested();
        break;
    case Command::editNames:
        vm.setShowRenameStudio(true);
        break;
    case Command::convert:
        vm.setShowConvertStudio(true);
        break;
    case Command::exportPack:
    case Command::toolbarExport:
        vm.exportPack(); // the running task reports through the session; nothing to await here
        break;
    case Command::stripAudio:
        vm.stripAudioFromAll();
        break;
    case Command::convertProblems:
        vm.convertPack(true);
        break;
    case Command::compactMode:
        m_context.preferences.setCompactMode(action(Command::compactMode)->isChecked());
        break;
    case Command::reportBug:
    case Command::toolbarBug:
        BugReport::open(vm, m_context.localization, m_context.preferences, m_desktop);
        break;
    }
}

void AppCommands::updateEnabled()
{
    const PackViewModel &vm = m_context.viewModel;
    const bool empty = vm.clips().isEmpty();
    const bool scanning = vm.isScanning();
    const bool converting = vm.isConverting();
    const auto set = [this](Command c, bool enabled) { action(c)->setEnabled(enabled); };
    set(Command::saveProject, !empty);
    // A pack on disk needs no clips in the window; one check at a time.
    set(Command::verifyPack, !vm.isVerifying());
    set(Command::toolbarSaveProject, !empty);
    set(Command::editNames, !empty);
    set(Command::convert, !empty && !converting);
    set(Command::exportPack, !empty && !scanning && !converting);
    set(Command::toolbarExport, !empty && !scanning);
    set(Command::stripAudio, vm.clipsWithAudioCount() > 0 && !converting);
    set(Command::convertProblems, vm.problemClipsCount() > 0 && !converting);
    // The check mark follows the preference however it was changed (menu, settings, tests).
    QAction *compact = action(Command::compactMode);
    const QSignalBlocker quiet(compact);
    compact->setChecked(m_context.preferences.compactMode());
}

void AppCommands::relabel()
{
    const UiContext &c = m_context;
    const auto label = [this](Command command, const QString &text, const QString &tip = {}) {
        QAction *a = action(command);
        a->setText(withoutMnemonic(text));
        a->setToolTip(tip.isEmpty() ? QString(text).remove(u'…') : tip);
    };
    label(Command::openFolder, c.text(u"menu.open"));
    label(Command::openProject, c.text(u"project.open"));
    label(Command::saveProject, c.text(u"project.save"));
    label(Command::verifyPack, c.text(u"verify.menu"));
    label(Command::clearPack, c.text(u"menu.clear"));
    label(Command::settings, c.text(u"settings.title") + u'…');
    label(Command::quit, c.text(u"menu.quit"));
    label(Command::editNames, c.text(u"rename.open"));
    label(Command::convert, c.text(u"convert.open"));
    label(Command::exportPack, c.text(u"naming.export"));
    label(Command::stripAudio, c.text(u"batch.stripAudio.menu"));
    label(Command::convertProblems, c.text(u"batch.convertProblems.menu"));
    label(Command::compactMode, c.text(u"settings.compact"));
    label(Command::reportBug, c.text(u"bug.menu"));
    label(Command::toolbarOpen, c.text(u"toolbar.open"), c.text(u"toolbar.open.help"));
    label(Command::toolbarOpenProject, c.text(u"project.open"), c.text(u"project.open.message"));
    label(Command::toolbarSaveProject, c.text(u"project.save"), c.text(u"project.save.message"));
    label(Command::toolbarExport, c.text(u"toolbar.export"), c.text(u"toolbar.export.help"));
    label(Command::toolbarBug, c.text(u"bug.toolbar"),
          c.strings().format(u"bug.toolbar.help", {QStringLiteral(CUEBOX_BUG_EMAIL)}));
    if (m_fileMenu) {
        m_fileMenu->setText(c.text(u"menu.file"));
        m_packMenu->setText(c.text(u"menu.pack"));
        m_viewMenu->setText(c.text(u"menu.view"));
        m_helpMenu->setText(c.text(u"menu.help"));
    }
}

void AppCommands::fillMenuBar(QMenuBar *bar)
{
    QMenu *file = bar->addMenu(QString());
    file->addAction(action(Command::openFolder));
    file->addAction(action(Command::openProject));
    file->addAction(action(Command::saveProject));
    file->addSeparator();
    file->addAction(action(Command::verifyPack));
    file->addSeparator();
    file->addAction(action(Command::clearPack));
    file->addSeparator();
    file->addAction(action(Command::settings));
    file->addSeparator();
    file->addAction(action(Command::quit));
    QMenu *pack = bar->addMenu(QString());
    pack->addAction(action(Command::editNames));
    pack->addAction(action(Command::convert));
    pack->addAction(action(Command::exportPack));
    pack->addSeparator();
    pack->addAction(action(Command::stripAudio));
    pack->addAction(action(Command::convertProblems));
    QMenu *view = bar->addMenu(QString());
    view->addAction(action(Command::compactMode));
    QMenu *help = bar->addMenu(QString());
    help->addAction(action(Command::reportBug));
    m_fileMenu = file->menuAction();
    m_packMenu = pack->menuAction();
    m_viewMenu = view->menuAction();
    m_helpMenu = help->menuAction();
    relabel();
}

void AppCommands::fillToolBar(QToolBar *bar)
{
    bar->addAction(action(Command::toolbarOpen));
    bar->addAction(action(Command::toolbarOpenProject));
    bar->addAction(action(Command::toolbarSaveProject));
    bar->addAction(action(Command::toolbarExport));
    // The primary action sits apart at the trailing end.
    auto *spacer = new QWidget(bar);
    spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar->addWidget(spacer);
    bar->addAction(action(Command::toolbarBug));
}
