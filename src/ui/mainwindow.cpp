#include "mainwindow.h"

#include "appcommands.h"
#include "apptheme.h"
#include "contentview.h"
#include "l10n/apppreferences.h"
#include "l10n/localizationmanager.h"
#include "session/packviewmodel.h"
#include "studios/convertstudioview.h"
#include "studios/renamestudioview.h"
#include "symbols.h"

#include <QDialog>
#include <QDir>
#include <QMenuBar>
#include <QToolBar>
#include <QVBoxLayout>

MainWindow::MainWindow(const UiContext &context, Desktop &desktop, QWidget *parent)
    : QMainWindow(parent)
    , m_context(context)
    , m_desktop(desktop)
    , m_commands(new AppCommands(context, desktop, this))
    , m_toolBar(new QToolBar(this))
{
    setObjectName(QStringLiteral("mainWindow"));
    setWindowTitle(QStringLiteral("Cuebox"));
    setWindowIcon(Symbols::applicationIcon());
    setUnifiedTitleAndToolBarOnMac(true);
    m_commands->fillMenuBar(menuBar());
    m_toolBar->setObjectName(QStringLiteral("mainToolBar"));
    m_toolBar->setMovable(false);
    m_toolBar->setFloatable(false);
    m_toolBar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_toolBar->setContextMenuPolicy(Qt::PreventContextMenu);
    m_commands->fillToolBar(m_toolBar);
    addToolBar(Qt::TopToolBarArea, m_toolBar);
    connect(m_commands, &AppCommands::settingsRequested, this, &MainWindow::settingsRequested);
    connect(m_commands, &AppCommands::quitRequested, this, &QWidget::close);

    rebuildContent();
    applyCompact();
    resize(defaultSize(m_context.compact()));

    connect(&m_context.localization, &LocalizationManager::languageChanged, this, [this] {
        m_commands->relabel();
        rebuildContent();
    });
    connect(&m_context.preferences, &AppPreferences::compactModeChanged, this,
            &MainWindow::applyCompact);
    PackViewModel &vm = m_context.viewModel;
    connect(&vm, &PackViewModel::showRenameStudioChanged, this, &MainWindow::syncSheets);
    connect(&vm, &PackViewModel::showConvertStudioChanged, this, &MainWindow::syncSheets);
}

QSize MainWindow::defaultSize(bool compact)
{
    return compact ? QSize(1020, 680) : QSize(1180, 740);
}

QSize MainWindow::minimumSizeFor(bool compact)
{
    return compact ? QSize(900, 600) : QSize(1040, 680);
}

void MainWindow::rebuildContent()
{
    // The language is the content's identity: a new one means new views, with every text
    // looked up again. Session state (clips, selection) lives in the view model.
    auto *fresh = new ContentView(m_context, m_desktop);
    QWidget *old = takeCentralWidget();
    setCentralWidget(fresh);
    m_content = fresh;
    if (old)
        old->deleteLater();
}

void MainWindow::applyCompact()
{
    // The content's minimum; menu bar and toolbar come on top of it.
    const QSize content = minimumSizeFor(m_context.compact());
    const int chrome = menuBar()->sizeHint().height() + m_toolBar->sizeHint().height();
    setMinimumSize(content.width(), content.height() + chrome);
}

QDialog *MainWindow::openSheet(const QString &title, QSize size,
                               void (PackViewModel::*closeFlag)(bool),
                               const std::function<QWidget *(QDialog *sheet)> &makeContent)
{
    auto *sheet = new QDialog(this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->setWindowTitle(title);
    // They open at their designed size and may grow; a little smaller still fits small screens.
    sheet->setMinimumSize(size.width() * 5 / 6, size.height() * 3 / 4);
    sheet->resize(size);
    PackViewModel &vm = m_context.viewModel;
    auto *layout = new QVBoxLayout(sheet);
    layout->setContentsMargins(0, 0, 0, 0);
    // The studio closes its sheet itself (close button, Close, or after applying); every way
    // out clears the session's flag.
    layout->addWidget(makeContent(sheet));
    connect(sheet, &QDialog::finished, &vm, [&vm, closeFlag] { (vm.*closeFlag)(false); });
    sheet->open();
    return sheet;
}

void MainWindow::syncSheets()
{
    const PackViewModel &vm = m_context.viewModel;
    if (vm.showRenameStudio() && !m_renameSheet)
        m_renameSheet =
            openSheet(m_context.text(u"rename.studio"), RenameStudioView::kSheetSize,
                      &PackViewModel::setShowRenameStudio, [this](QDialog *sheet) {
                          return new RenameStudioView(m_context, [sheet] { sheet->close(); });
                      });
    else if (!vm.showRenameStudio() && m_renameSheet)
        m_renameSheet->close();
    if (vm.showConvertStudio() && !m_convertSheet)
        m_convertSheet =
            openSheet(m_context.text(u"convert.studio"), ConvertStudioView::kSheetSize,
                      &PackViewModel::setShowConvertStudio, [this](QDialog *sheet) {
                          return new ConvertStudioView(
                              m_context, m_desktop, [sheet] { sheet->close(); }, QDir::homePath());
                      });
    else if (!vm.showConvertStudio() && m_convertSheet)
        m_convertSheet->close();
}
