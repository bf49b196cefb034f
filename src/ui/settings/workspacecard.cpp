// The workspace page: laptop mode, backups before conversion, reading copies back and the
// recent export folders.
#include "settingscards.h"

#include "l10n/apppreferences.h"
#include "session/packviewmodel.h"
#include "ui/apptheme.h"
#include "ui/kitwidgets.h"
#include "ui/sidebar/panelparts.h"
#include "ui/symbols.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace {
constexpr int kSymbolPx = 14;
constexpr int kRowPadding = 8;
} // namespace

ExportFolderRow::ExportFolderRow(const QString &folder, QWidget *parent)
    : QAbstractButton(parent), m_folder(folder)
{
    setText(folder);
    setToolTip(folder);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setFont(AppTheme::font(12));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize ExportFolderRow::sizeHint() const
{
    const QFontMetrics fm(font());
    return {2 * kRowPadding + kSymbolPx + 8 + fm.horizontalAdvance(m_folder),
            std::max(28, fm.height() + 10)};
}

QSize ExportFolderRow::minimumSizeHint() const
{
    // Long paths elide; the row never widens the card.
    return {2 * kRowPadding + kSymbolPx + 60, sizeHint().height()};
}

void ExportFolderRow::enterEvent(QEnterEvent *event)
{
    m_hover = true;
    update();
    QAbstractButton::enterEvent(event);
}

void ExportFolderRow::leaveEvent(QEvent *event)
{
    m_hover = false;
    update();
    QAbstractButton::leaveEvent(event);
}

void ExportFolderRow::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        p.setOpacity(0.45);
    const QRectF face = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    const bool lit = (m_hover || isDown()) && isEnabled();
    p.setPen(lit ? QPen(AppTheme::stroke, 1) : Qt::NoPen);
    p.setBrush(AppTheme::white(isDown() ? 0.09 : (lit ? 0.06 : 0.03)));
    p.drawRoundedRect(face, 10, 10);
    Symbols::paint(&p, QStringLiteral("folder"), AppTheme::white(0.7),
                   QRectF(kRowPadding, (height() - kSymbolPx) / 2.0, kSymbolPx, kSymbolPx));
    const int left = kRowPadding + kSymbolPx + 8;
    const int room = width() - left - kRowPadding;
    p.setFont(font());
    p.setPen(AppTheme::white(0.85));
    p.drawText(QRectF(left, 0, room, height()), Qt::AlignVCenter | Qt::AlignLeft,
               fontMetrics().elidedText(m_folder, Qt::ElideMiddle, room));
}

WorkspaceSettingsCard::WorkspaceSettingsCard(const UiContext &context, QWidget *parent)
    : SettingsCard(context, SettingsSection::workspace, parent), m_history(new QVBoxLayout)
{
    AppPreferences &preferences = m_context.preferences;
    addHelpLine(QStringLiteral("settings.workspace.help"));

    m_compact = addToggleRow(QStringLiteral("settings.compact"),
                             QStringLiteral("settings.compact.help"), preferences.compactMode());
    connect(m_compact, &BentoToggleRow::toggled, this, [&preferences](bool on) {
        if (on != preferences.compactMode())
            preferences.setCompactMode(on);
    });
    connect(&preferences, &AppPreferences::compactModeChanged, this,
            [this](bool on) { m_compact->toggle()->setChecked(on); });

    m_autoBackup = addToggleRow(QStringLiteral("settings.autoBackup"),
                                QStringLiteral("settings.autoBackup.help"),
                                preferences.autoBackupBeforeConvert());
    connect(m_autoBackup, &BentoToggleRow::toggled, this, [&preferences](bool on) {
        if (on != preferences.autoBackupBeforeConvert())
            preferences.setAutoBackupBeforeConvert(on);
    });
    connect(&preferences, &AppPreferences::autoBackupBeforeConvertChanged, this,
            [this](bool on) { m_autoBackup->toggle()->setChecked(on); });

    m_verifyCopies =
        addToggleRow(QStringLiteral("settings.verifyCopies"),
                     QStringLiteral("settings.verifyCopies.help"), preferences.verifyCopies());
    connect(m_verifyCopies, &BentoToggleRow::toggled, this, [&preferences](bool on) {
        if (on != preferences.verifyCopies())
            preferences.setVerifyCopies(on);
    });
    connect(&preferences, &AppPreferences::verifyCopiesChanged, this,
            [this](bool on) { m_verifyCopies->toggle()->setChecked(on); });

    addCaption(QStringLiteral("settings.exportHistory"));
    m_history->setContentsMargins(0, 0, 0, 0);
    m_history->setSpacing(4);
    body()->addLayout(m_history);
    rebuildHistory();
    connect(&preferences, &AppPreferences::exportFolderHistoryChanged, this,
            &WorkspaceSettingsCard::rebuildHistory);

    PackViewModel &vm = m_context.viewModel;
    for (auto signal : {&PackViewModel::isScanningChanged, &PackViewModel::isConvertingChanged,
                        &PackViewModel::isExportingChanged})
        connect(&vm, signal, this, &WorkspaceSettingsCard::refreshRowsEnabled);
}

void WorkspaceSettingsCard::rebuildHistory()
{
    PanelParts::clear(m_history);
    m_folderRows.clear();
    m_emptyHistory = nullptr;
    const QStringList &folders = m_context.preferences.exportFolderHistory();
    if (folders.isEmpty()) {
        m_emptyHistory = PanelParts::label(text(u"settings.exportHistory.empty"), 12, 0.4);
        m_emptyHistory->setObjectName(QStringLiteral("settings.exportHistory.empty"));
        m_emptyHistory->setWordWrap(true);
        m_history->addWidget(m_emptyHistory);
        return;
    }
    PackViewModel &vm = m_context.viewModel;
    // Paths are shown as stored, even when a folder has gone: the export then reports why.
    for (const QString &folder : folders) {
        auto *row = new ExportFolderRow(folder);
        connect(row, &QAbstractButton::clicked, this, [&vm, folder] {
            vm.exportPackInto(folder); // no chooser; the export reports through the status line
        });
        m_history->addWidget(row);
        m_folderRows.append(row);
    }
    refreshRowsEnabled();
}

void WorkspaceSettingsCard::refreshRowsEnabled()
{
    // The same moments as the menu's export: a pack half scanned, being converted or already
    // on its way out is not one to write again.
    const PackViewModel &vm = m_context.viewModel;
    const bool busy = vm.isScanning() || vm.isConverting() || vm.isExporting();
    for (ExportFolderRow *row : std::as_const(m_folderRows))
        row->setEnabled(!busy);
}
