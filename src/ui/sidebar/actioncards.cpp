// The acting cards of the sidebar: file names, watch folder and batch fixes.
#include "sidebarcards.h"

#include "l10n/localizationmanager.h"
#include "model/pathnames.h"
#include "panelparts.h"
#include "selectchip.h"
#include "session/packviewmodel.h"
#include "session/watchfoldermonitor.h"
#include "ui/apptheme.h"
#include "ui/buttonrowlayout.h"
#include "ui/kitbuttons.h"
#include "ui/kitwidgets.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

NamingCard::NamingCard(const UiContext &context, QWidget *parent)
    : SidebarCard(context, QStringLiteral("textformat.abc"), QStringLiteral("naming.title"),
                  QStringLiteral("naming.tooltip"), parent)
    , m_prefix(new QLineEdit)
{
    PackViewModel &vm = m_context.viewModel;
    PanelParts::addHint(body(), context, QStringLiteral("hint.naming"),
                        QStringLiteral("naming.hint"));
    body()->addWidget(PanelParts::label(text(u"naming.prefix"), 11, 0.4));

    m_prefix->setObjectName(QStringLiteral("naming.prefixField"));
    m_prefix->setPlaceholderText(text(u"naming.prefix.placeholder"));
    m_prefix->setToolTip(text(u"naming.tooltip"));
    m_prefix->setFont(AppTheme::font(12));
    // The soft field: 11 points from the rounded edge to the text (the frame gives the rest).
    m_prefix->setTextMargins(9, 0, 9, 0);
    m_prefix->setMinimumHeight(34);
    m_prefix->setText(vm.showPrefix());
    // Typing only stores the prefix; the clips are renamed when the operator confirms.
    connect(m_prefix, &QLineEdit::textEdited, this,
            [&vm](const QString &t) { vm.setShowPrefix(t); });
    connect(m_prefix, &QLineEdit::returnPressed, this, [&vm] { vm.renameAll(); });
    body()->addWidget(m_prefix);

    auto *chips = new QGridLayout;
    chips->setSpacing(6);
    int index = 0;
    for (PrefixTemplate prefixTemplate : kAllPrefixTemplates) {
        auto *chip = new SelectChip(SelectChip::Look::chip, text(labelKey(prefixTemplate)));
        chip->setObjectName(QStringLiteral("prefix.") + rawValue(prefixTemplate));
        chip->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        chip->setTextFont(AppTheme::font(11, QFont::DemiBold, AppTheme::Face::rounded));
        connect(chip, &QAbstractButton::clicked, this,
                [&vm, prefixTemplate] { vm.applyPrefixTemplate(prefixTemplate); });
        chips->addWidget(chip, index / 3, index % 3);
        m_chips.append(chip);
        ++index;
    }
    body()->addLayout(chips);

    const PanelParts::SwitchLine zeroPad =
        PanelParts::switchLine(text(u"naming.zeropad"), vm.zeroPad());
    m_zeroPad = zeroPad.toggle;
    m_zeroPad->setObjectName(QStringLiteral("naming.zeropad"));
    connect(m_zeroPad, &QAbstractButton::toggled, this, [&vm](bool on) { vm.setZeroPad(on); });
    body()->addWidget(zeroPad.row);

    m_editNames =
        new KitButton(KitButton::Kind::ghost, QStringLiteral("pencil"), text(u"rename.open"));
    m_editNames->setToolTip(text(u"rename.studio.help"));
    m_convert = new KitButton(KitButton::Kind::ghost, QStringLiteral("arrow.triangle.2.circlepath"),
                              text(u"convert.open"));
    m_convert->setToolTip(text(u"convert.studio.help"));
    m_export = new KitButton(KitButton::Kind::primary, QStringLiteral("square.and.arrow.up"),
                             text(u"naming.export"));
    m_export->setToolTip(text(u"toolbar.export.help"));
    connect(m_editNames, &QAbstractButton::clicked, this, [&vm] { vm.setShowRenameStudio(true); });
    connect(m_convert, &QAbstractButton::clicked, this, [&vm] { vm.setShowConvertStudio(true); });
    connect(m_export, &QAbstractButton::clicked, this, [&vm] { vm.exportPack(); });
    auto *studios = new ButtonRowLayout;
    for (KitButton *button : {m_editNames, m_convert})
        studios->addWidget(button);
    body()->addLayout(studios);
    m_export->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    body()->addWidget(m_export);
    refresh();
}

void NamingCard::refresh()
{
    const PackViewModel &vm = m_context.viewModel;
    if (m_prefix->text() != vm.showPrefix()) // never while it already matches: keeps the caret
        m_prefix->setText(vm.showPrefix());
    for (qsizetype i = 0; i < m_chips.size(); ++i)
        m_chips[i]->setSelected(prefixValue(kAllPrefixTemplates[i]) == vm.showPrefix());
    if (m_zeroPad->isChecked() != vm.zeroPad()) {
        const QSignalBlocker quiet(m_zeroPad);
        m_zeroPad->setChecked(vm.zeroPad());
    }
    const bool empty = vm.clips().isEmpty();
    m_editNames->setEnabled(!empty);
    m_convert->setEnabled(!empty && !vm.isConverting());
    m_export->setEnabled(!empty && !vm.isScanning() && !vm.isConverting());
}

WatchCard::WatchCard(const UiContext &context, QWidget *parent)
    : SidebarCard(context, QStringLiteral("eye"), QStringLiteral("watch.title"),
                  QStringLiteral("watch.tooltip"), parent)
    , m_folder(PanelParts::label({}, 12, 0.9))
    , m_hint(PanelParts::label(context.text(u"watch.hint"), 11, 0.4))
{
    PackViewModel &vm = m_context.viewModel;
    auto *tile = new EqualTile(44);
    auto *tileLayout = new QVBoxLayout(tile);
    tileLayout->setContentsMargins(0, 0, 0, 0);
    m_folder->setObjectName(QStringLiteral("watch.folderName"));
    m_hint->setWordWrap(true);
    tileLayout->addWidget(m_folder);
    tileLayout->addWidget(m_hint);
    body()->addWidget(tile);

    auto *pick = new KitButton(KitButton::Kind::ghost, QStringLiteral("folder.badge.plus"),
                               text(u"watch.pick"));
    pick->setObjectName(QStringLiteral("watch.pick"));
    m_stop = new KitButton(KitButton::Kind::ghost, QStringLiteral("xmark"), text(u"watch.stop"));
    m_stop->setObjectName(QStringLiteral("watch.stop"));
    connect(pick, &QAbstractButton::clicked, this, [&vm] { vm.pickWatchFolder(); });
    connect(m_stop, &QAbstractButton::clicked, this, [&vm] { vm.stopWatching(); });
    auto *buttons = new ButtonRowLayout;
    for (KitButton *button : {pick, m_stop})
        buttons->addWidget(button);
    body()->addLayout(buttons);
    refresh();
}

void WatchCard::refresh()
{
    const WatchFolderMonitor &watch = m_context.viewModel.watchFolder();
    const bool watching = watch.isWatching() && watch.folder().has_value();
    m_folder->setVisible(watching);
    m_hint->setVisible(!watching);
    m_stop->setVisible(watch.isWatching());
    if (watching) {
        m_folder->setText(PathNames::lastComponent(*watch.folder()));
        m_folder->setToolTip(*watch.folder());
    }
}

BatchCard::BatchCard(const UiContext &context, QWidget *parent)
    : SidebarCard(context, QStringLiteral("rectangle.stack.badge.minus"),
                  QStringLiteral("batch.title"), QStringLiteral("batch.tooltip"), parent)
    , m_stripAudio(new KitButton(KitButton::Kind::ghost, QStringLiteral("speaker.slash"), {}))
    , m_convertProblems(
          new KitButton(KitButton::Kind::ghost, QStringLiteral("exclamationmark.triangle"), {}))
    , m_removeDuplicates(new KitButton(KitButton::Kind::ghost, QStringLiteral("doc.on.doc"), {}))
{
    PackViewModel &vm = m_context.viewModel;
    // The tasks run on by themselves; the session reports through its status.
    connect(m_stripAudio, &QAbstractButton::clicked, this, [&vm] { vm.stripAudioFromAll(); });
    connect(m_convertProblems, &QAbstractButton::clicked, this, [&vm] { vm.convertPack(true); });
    connect(m_removeDuplicates, &QAbstractButton::clicked, this,
            [&vm] { vm.removeDuplicatesKeepingFirst(); });
    for (KitButton *button : {m_stripAudio, m_convertProblems, m_removeDuplicates}) {
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        button->setMinimumWidth(0);
        body()->addWidget(button);
    }
    refresh();
}

void BatchCard::refresh()
{
    const PackViewModel &vm = m_context.viewModel;
    const L10n strings = m_context.strings();
    const qint64 audio = vm.clipsWithAudioCount();
    const qint64 problems = vm.problemClipsCount();
    const qint64 duplicates = vm.duplicateCount();
    m_stripAudio->setText(strings.format(u"batch.stripAudio", {audio}));
    m_convertProblems->setText(strings.format(u"batch.convertProblems", {problems}));
    m_removeDuplicates->setText(strings.format(u"batch.removeDuplicates", {duplicates}));
    m_stripAudio->setEnabled(audio > 0 && !vm.isConverting());
    m_convertProblems->setEnabled(problems > 0 && !vm.isConverting());
    m_removeDuplicates->setEnabled(duplicates > 0);
}
