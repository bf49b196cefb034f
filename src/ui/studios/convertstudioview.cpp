#include "convertstudioview.h"

#include "convertparts.h"
#include "l10n/apppreferences.h"
#include "session/alley.h"
#include "session/packviewmodel.h"
#include "session/platform.h"
#include "session/transparencyloss.h"
#include "ui/apptheme.h"
#include "ui/glasscard.h"
#include "ui/kitbuttons.h"
#include "ui/kitwidgets.h"
#include "ui/sheetscaffold.h"
#include "ui/sidebar/panelparts.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

constexpr int kPaddingX = 20;
constexpr int kCardPadding = 14;

GlassCard *card(QVBoxLayout **body, int padding = kCardPadding)
{
    auto *glass = new GlassCard(14);
    auto *layout = new QVBoxLayout(glass);
    layout->setContentsMargins(padding, padding, padding, padding);
    layout->setSpacing(8);
    *body = layout;
    return glass;
}

QFrame *hairline()
{
    auto *line = new QFrame;
    line->setFixedHeight(1);
    line->setAutoFillBackground(true);
    QPalette pal = line->palette();
    pal.setColor(QPalette::Window, AppTheme::white(0.06));
    line->setPalette(pal);
    return line;
}

void setOn(BentoToggleRow *row, bool on)
{
    // The switch's own animation listens to its toggled signal, so it is not blocked; the
    // write-back that follows finds the value unchanged and stops there.
    if (row->toggle()->isChecked() != on)
        row->toggle()->setChecked(on);
}

} // namespace

ConvertStudioView::ConvertStudioView(const UiContext &context, Desktop &desktop,
                                     std::function<void()> dismiss, const QString &alleyHome,
                                     QWidget *parent)
    : QWidget(parent), m_context(context), m_desktop(desktop), m_dismiss(std::move(dismiss))
{
    setObjectName(QStringLiteral("convertStudio"));
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto *scaffold = new SheetScaffold(context.text(u"convert.studio"),
                                       context.text(u"convert.studio.help"), m_dismiss);
    outer->addWidget(scaffold);

    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(kPaddingX - GlassCard::kShadowMargin, 0,
                               kPaddingX - GlassCard::kShadowMargin, 16);
    column->setSpacing(8);

    // The cards scroll; progress and the buttons stay in view below them.
    auto *cards = new QWidget;
    auto *stack = new QVBoxLayout(cards);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(2);
    stack->addWidget(buildFormatCard());
    stack->addWidget(buildOptionsCard());
    stack->addWidget(buildDxvCard(alleyHome));
    stack->addStretch(1);
    auto *scroll = new QScrollArea;
    scroll->setObjectName(QStringLiteral("convertCards"));
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(cards);
    scroll->viewport()->setAutoFillBackground(false);
    cards->setAutoFillBackground(false);
    column->addWidget(scroll, 1);

    auto *bottom = new QVBoxLayout;
    bottom->setContentsMargins(GlassCard::kShadowMargin, 0, GlassCard::kShadowMargin, 0);
    bottom->setSpacing(12);
    bottom->addWidget(buildProgress());
    bottom->addWidget(buildFooter());
    column->addLayout(bottom);
    scaffold->setContent(content);

    PackViewModel &vm = m_context.viewModel;
    for (auto signal :
         {&PackViewModel::convertFormatChanged, &PackViewModel::stripAudioOnConvertChanged,
          &PackViewModel::forceEvenDimensionsChanged, &PackViewModel::convertOnlyProblemsChanged,
          &PackViewModel::clipsChanged})
        connect(&vm, signal, this, &ConvertStudioView::refreshChoices);
    connect(&m_context.preferences, &AppPreferences::autoBackupBeforeConvertChanged, this,
            &ConvertStudioView::refreshChoices);
    for (auto signal : {&PackViewModel::isConvertingChanged, &PackViewModel::convertProgressChanged,
                        &PackViewModel::statusChanged, &PackViewModel::clipsChanged})
        connect(&vm, signal, this, &ConvertStudioView::refreshProgress);
    refreshChoices();
    refreshProgress();
}

QWidget *ConvertStudioView::buildFormatCard()
{
    QVBoxLayout *body = nullptr;
    GlassCard *glass = card(&body);
    glass->setObjectName(QStringLiteral("convertFormatCard"));
    auto *heading = PanelParts::label(m_context.text(u"convert.format"), 13, 0.88, QFont::DemiBold);
    heading->setFont(AppTheme::font(13, QFont::DemiBold, AppTheme::Face::rounded));
    body->addWidget(heading);
    auto *help = PanelParts::label(m_context.text(u"convert.format.help"), 11, 0.4);
    help->setWordWrap(true);
    body->addWidget(help);
    body->addSpacing(4);
    for (ArenaConvertFormat format : kAllConvertFormats) {
        auto *chip = new FormatChip(m_context.text(labelKey(format)));
        chip->setObjectName(QStringLiteral("format_") + rawValue(format));
        if (const QString chipHelp = helpKey(format); !chipHelp.isEmpty())
            chip->setHelp(m_context.text(chipHelp));
        connect(chip, &QAbstractButton::clicked, this,
                [this, format] { m_context.viewModel.setConvertFormat(format); });
        m_chips.append(chip);
        body->addWidget(chip);
    }
    // Said before the run, which still goes ahead if the operator starts it.
    m_alphaLoss = PanelParts::colouredLabel(QString(), 12, AppTheme::warn);
    m_alphaLoss->setObjectName(QStringLiteral("convertAlphaLoss"));
    m_alphaLoss->setWordWrap(true);
    body->addWidget(m_alphaLoss);
    return glass;
}

QWidget *ConvertStudioView::buildOptionsCard()
{
    QVBoxLayout *body = nullptr;
    GlassCard *glass = card(&body, 4);
    glass->setObjectName(QStringLiteral("convertOptionsCard"));
    body->setSpacing(0);
    PackViewModel &vm = m_context.viewModel;
    AppPreferences &preferences = m_context.preferences;
    const auto row = [&](const char16_t *title, const char16_t *subtitle, bool on, auto write) {
        if (body->count() > 0)
            body->addWidget(hairline());
        auto *toggleRow = new BentoToggleRow(m_context.text(title), m_context.text(subtitle), on);
        connect(toggleRow, &BentoToggleRow::toggled, this, write);
        body->addWidget(toggleRow);
        return toggleRow;
    };
    m_stripAudio = row(u"convert.stripAudio", u"convert.stripAudio.help", vm.stripAudioOnConvert(),
                       [&vm](bool on) { vm.setStripAudioOnConvert(on); });
    m_evenDimensions = row(u"convert.evenDims", u"convert.evenDims.help", vm.forceEvenDimensions(),
                           [&vm](bool on) { vm.setForceEvenDimensions(on); });
    m_onlyProblems =
        row(u"convert.onlyProblems", u"convert.onlyProblems.help", vm.convertOnlyProblems(),
            [&vm](bool on) { vm.setConvertOnlyProblems(on); });
    m_autoBackup = row(u"settings.autoBackup", u"settings.autoBackup.help",
                       preferences.autoBackupBeforeConvert(),
                       [&preferences](bool on) { preferences.setAutoBackupBeforeConvert(on); });
    m_stripAudio->setObjectName(QStringLiteral("convertStripAudio"));
    m_evenDimensions->setObjectName(QStringLiteral("convertEvenDimensions"));
    m_onlyProblems->setObjectName(QStringLiteral("convertOnlyProblems"));
    m_autoBackup->setObjectName(QStringLiteral("convertAutoBackup"));
    return glass;
}

QWidget *ConvertStudioView::buildDxvCard(const QString &alleyHome)
{
    QVBoxLayout *body = nullptr;
    GlassCard *glass = card(&body);
    glass->setObjectName(QStringLiteral("convertDxvCard"));
    auto *title = new QHBoxLayout;
    title->setSpacing(8);
    title->addWidget(PanelParts::symbol(QStringLiteral("bolt.horizontal.circle.fill"),
                                        AppTheme::accentGreen, 18));
    auto *heading = PanelParts::label(m_context.text(u"convert.dxv.title"), 14, 0.9);
    heading->setFont(AppTheme::font(14, QFont::DemiBold, AppTheme::Face::rounded));
    title->addWidget(heading, 1);
    body->addLayout(title);
    auto *help = PanelParts::label(m_context.text(u"convert.dxv.help"), 12, 0.45);
    help->setWordWrap(true);
    body->addWidget(help);

    // Looked up once as the sheet opens; installing Alley meanwhile shows on the next opening.
    if (Alley::isResolumeAlleyInstalled(alleyHome)) {
        m_alley = new KitButton(KitButton::Kind::ghost, QStringLiteral("arrow.up.forward.app"),
                                m_context.text(u"convert.dxv.open"));
        connect(m_alley, &QAbstractButton::clicked, this,
                [this] { m_context.viewModel.openSelectedInAlley(); });
    } else {
        m_alley =
            new KitButton(KitButton::Kind::ghost, QString(), m_context.text(u"convert.dxv.get"));
        connect(m_alley, &QAbstractButton::clicked, this,
                [this] { m_desktop.openUrl(Alley::downloadPage()); });
    }
    m_alley->setObjectName(QStringLiteral("convertAlley"));
    body->addSpacing(2);
    body->addWidget(m_alley, 0, Qt::AlignLeft);
    return glass;
}

QWidget *ConvertStudioView::buildProgress()
{
    m_progress = new QWidget;
    m_progress->setObjectName(QStringLiteral("convertProgress"));
    auto *layout = new QVBoxLayout(m_progress);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    m_progressText = PanelParts::label(QString(), 12, 0.75);
    m_progressText->setObjectName(QStringLiteral("convertStatus"));
    m_progressText->setWordWrap(true);
    layout->addWidget(m_progressText);
    auto *barRow = new QHBoxLayout;
    barRow->setSpacing(12);
    m_progressBar = new ConvertProgressBar;
    m_progressBar->setObjectName(QStringLiteral("convertProgressBar"));
    barRow->addWidget(m_progressBar, 1);
    m_cancel = new KitButton(KitButton::Kind::ghostCompact, QStringLiteral("xmark"),
                             m_context.text(u"convert.cancel"));
    m_cancel->setObjectName(QStringLiteral("convertCancel"));
    connect(m_cancel, &QAbstractButton::clicked, this,
            [this] { m_context.viewModel.cancelConversion(); });
    barRow->addWidget(m_cancel);
    layout->addLayout(barRow);
    return m_progress;
}

QWidget *ConvertStudioView::buildFooter()
{
    auto *footer = new QWidget;
    auto *row = new QHBoxLayout(footer);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    row->addStretch(1);
    m_close = new KitButton(KitButton::Kind::ghost, QString(), m_context.text(u"rename.close"));
    m_close->setObjectName(QStringLiteral("convertClose"));
    m_close->setMinimumWidth(120);
    connect(m_close, &QAbstractButton::clicked, this, [this] { m_dismiss(); });
    row->addWidget(m_close);
    m_convert =
        new KitButton(KitButton::Kind::primary, QStringLiteral("arrow.triangle.2.circlepath"),
                      m_context.text(u"convert.start"));
    m_convert->setObjectName(QStringLiteral("convertStart"));
    m_convert->setMinimumWidth(220);
    // No explicit selection: the session's "only warn / fail" switch decides.
    connect(m_convert, &QAbstractButton::clicked, this,
            [this] { m_context.viewModel.convertPack(); });
    row->addWidget(m_convert);
    return footer;
}

void ConvertStudioView::refreshChoices()
{
    const PackViewModel &vm = m_context.viewModel;
    for (qsizetype i = 0; i < m_chips.size(); ++i)
        m_chips[i]->setSelected(kAllConvertFormats[i] == vm.convertFormat());
    setOn(m_stripAudio, vm.stripAudioOnConvert());
    setOn(m_evenDimensions, vm.forceEvenDimensions());
    setOn(m_onlyProblems, vm.convertOnlyProblems());
    setOn(m_autoBackup, m_context.preferences.autoBackupBeforeConvert());
    const qint64 losing =
        clipsLosingTransparency(vm.clips(), vm.convertFormat(), vm.convertOnlyProblems());
    m_alphaLoss->setText(losing > 0 ? m_context.strings().format(u"convert.alphaLoss", {losing})
                                    : QString());
    m_alphaLoss->setVisible(losing > 0);
}

void ConvertStudioView::refreshProgress()
{
    const PackViewModel &vm = m_context.viewModel;
    const bool running = vm.isConverting();
    if (running)
        m_watchedRun = true;
    m_progressText->setText(vm.statusText());
    m_progressBar->setFraction(vm.convertProgress());
    m_progressBar->setVisible(running);
    m_cancel->setVisible(running);
    m_progress->setVisible(running || m_watchedRun);
    m_convert->setEnabled(!vm.clips().isEmpty() && !running);
}
