// The language, naming and risk-rule pages of the settings window.
#include "settingscards.h"

#include "l10n/localizationmanager.h"
#include "session/packviewmodel.h"
#include "ui/apptheme.h"
#include "ui/kitwidgets.h"
#include "ui/sidebar/panelparts.h"
#include "ui/sidebar/selectchip.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

constexpr int kCardPadding = 16;

} // namespace

SettingsCard::SettingsCard(const UiContext &context, SettingsSection section, QWidget *parent)
    : GlassCard(14, Elevation::flat, parent)
    , m_context(context)
    , m_section(section)
    , m_body(new QVBoxLayout(this))
{
    setObjectName(QStringLiteral("settings.card.") + rawValue(section));
    m_body->setContentsMargins(kCardPadding, kCardPadding, kCardPadding, kCardPadding);
    m_body->setSpacing(10);
    m_body->addWidget(new SectionHeader(symbolName(section), text(titleKey(section)), QString()));
}

void SettingsCard::addHelpLine(const QString &key)
{
    QLabel *line = PanelParts::label(text(key), 12, 0.6);
    line->setObjectName(key);
    line->setWordWrap(true);
    m_body->addWidget(line);
}

void SettingsCard::addCaption(const QString &key)
{
    QLabel *caption = PanelParts::label(text(key), 10, 0.7, QFont::DemiBold);
    QFont f = AppTheme::font(10, QFont::DemiBold, AppTheme::Face::rounded);
    f.setLetterSpacing(QFont::AbsoluteSpacing, 0.38);
    caption->setFont(f);
    caption->setObjectName(key);
    m_body->addSpacing(2);
    m_body->addWidget(caption);
}

BentoToggleRow *SettingsCard::addToggleRow(const QString &titleKey, const QString &subtitleKey,
                                           bool on)
{
    // The tile gives the tall row an edge, so that the switch reads as belonging to its title.
    auto *tile = new EqualTile(68);
    tile->setContentsMargins(0, 0, 0, 0);
    auto *inside = new QVBoxLayout(tile);
    inside->setContentsMargins(0, 0, 0, 0);
    auto *row = new BentoToggleRow(text(titleKey),
                                   subtitleKey.isEmpty() ? QString() : text(subtitleKey), on);
    row->setObjectName(titleKey);
    inside->addWidget(row);
    m_body->addWidget(tile);
    return row;
}

// --- Language -------------------------------------------------------------------------------

LanguageSettingsCard::LanguageSettingsCard(const UiContext &context, QWidget *parent)
    : SettingsCard(context, SettingsSection::language, parent)
{
    addHelpLine(QStringLiteral("settings.language.help"));
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(8);
    LocalizationManager &localization = m_context.localization;
    int index = 0;
    for (AppLanguage language : kAllLanguages) {
        // Each language is named in itself, so a reader finds their own whatever is showing.
        auto *chip = new SelectChip(SelectChip::Look::chip, displayName(language));
        chip->setObjectName(QStringLiteral("language.") + ::rawValue(language));
        chip->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        chip->setTextFont(AppTheme::font(13, QFont::DemiBold, AppTheme::Face::rounded));
        connect(chip, &QAbstractButton::clicked, this,
                [&localization, language] { localization.setLanguage(language); });
        grid->addWidget(chip, index / 3, index % 3);
        m_chips.append(chip);
        ++index;
    }
    body()->addLayout(grid);
    refresh();
    connect(&localization, &LocalizationManager::languageChanged, this,
            &LanguageSettingsCard::refresh);
}

SelectChip *LanguageSettingsCard::chip(AppLanguage language) const
{
    for (qsizetype i = 0; i < m_chips.size(); ++i)
        if (kAllLanguages[static_cast<size_t>(i)] == language)
            return m_chips[i];
    return nullptr;
}

void LanguageSettingsCard::refresh()
{
    const AppLanguage current = m_context.localization.language();
    for (AppLanguage language : kAllLanguages)
        chip(language)->setSelected(language == current);
}

// --- Naming ---------------------------------------------------------------------------------

NamingSettingsCard::NamingSettingsCard(const UiContext &context, QWidget *parent)
    : SettingsCard(context, SettingsSection::naming, parent), m_prefix(new QLineEdit)
{
    PackViewModel &vm = m_context.viewModel;
    addHelpLine(QStringLiteral("naming.tooltip"));
    addCaption(QStringLiteral("settings.prefix"));

    m_prefix->setObjectName(QStringLiteral("settings.prefixField"));
    m_prefix->setPlaceholderText(text(u"naming.prefix.placeholder"));
    m_prefix->setFont(AppTheme::font(13));
    m_prefix->setTextMargins(5, 4, 5, 4); // with the style's own inset: 11 from the edge
    m_prefix->setText(vm.showPrefix());
    connect(m_prefix, &QLineEdit::textEdited, this,
            [&vm](const QString &typed) { vm.setShowPrefix(typed); });
    connect(&vm, &PackViewModel::showPrefixChanged, this, [this, &vm] {
        // Only a change from elsewhere (a template chip, a project) replaces the text; the
        // field's own edits already match and keep the cursor where it is.
        if (m_prefix->text() != vm.showPrefix())
            m_prefix->setText(vm.showPrefix());
    });
    body()->addWidget(m_prefix);

    m_zeroPad = addToggleRow(QStringLiteral("settings.zeropad"), QString(), vm.zeroPad());
    connect(m_zeroPad, &BentoToggleRow::toggled, this, [&vm](bool on) {
        if (on != vm.zeroPad())
            vm.setZeroPad(on);
    });
    connect(&vm, &PackViewModel::zeroPadChanged, this,
            [this, &vm] { m_zeroPad->toggle()->setChecked(vm.zeroPad()); });
}

// --- Risk rules -----------------------------------------------------------------------------

RiskSettingsCard::RiskSettingsCard(const UiContext &context, QWidget *parent)
    : SettingsCard(context, SettingsSection::risks, parent)
{
    PackViewModel &vm = m_context.viewModel;
    m_audio = addToggleRow(QStringLiteral("settings.audio"), QString(), vm.warnOnEmbeddedAudio());
    connect(m_audio, &BentoToggleRow::toggled, this, [&vm](bool on) {
        if (on != vm.warnOnEmbeddedAudio())
            vm.setWarnOnEmbeddedAudio(on);
    });
    connect(&vm, &PackViewModel::warnOnEmbeddedAudioChanged, this,
            [this, &vm] { m_audio->toggle()->setChecked(vm.warnOnEmbeddedAudio()); });

    m_hevc = addToggleRow(QStringLiteral("settings.hevc"), QString(), vm.warnOnHEVC());
    connect(m_hevc, &BentoToggleRow::toggled, this, [&vm](bool on) {
        if (on != vm.warnOnHEVC())
            vm.setWarnOnHEVC(on);
    });
    connect(&vm, &PackViewModel::warnOnHEVCChanged, this,
            [this, &vm] { m_hevc->toggle()->setChecked(vm.warnOnHEVC()); });

    addCaption(QStringLiteral("settings.width"));
    auto *chips = new QHBoxLayout;
    chips->setSpacing(8);
    for (qint64 width : kPreferredWidths) {
        auto *chip = new SelectChip(SelectChip::Look::chip, QString::number(width));
        chip->setObjectName(QStringLiteral("settings.width.%1").arg(width));
        chip->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        // Noto Sans draws lining digits of one width, so the three numbers line up.
        chip->setTextFont(AppTheme::font(13, QFont::DemiBold));
        chip->setAccent(AppTheme::accentGreen);
        connect(chip, &QAbstractButton::clicked, this,
                [&vm, width] { vm.setPreferredWidth(width); });
        chips->addWidget(chip);
        m_widthChips.append(chip);
    }
    body()->addLayout(chips);
    refreshWidth();
    connect(&vm, &PackViewModel::preferredWidthChanged, this, &RiskSettingsCard::refreshWidth);
}

void RiskSettingsCard::refreshWidth()
{
    const qint64 current = m_context.viewModel.preferredWidth();
    for (qsizetype i = 0; i < m_widthChips.size(); ++i)
        m_widthChips[i]->setSelected(kPreferredWidths[static_cast<size_t>(i)] == current);
}
