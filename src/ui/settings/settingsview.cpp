#include "settingsview.h"

#include "settingscards.h"
#include "ui/apptheme.h"
#include "ui/bugreport/creditfooter.h"
#include "ui/sidebar/panelparts.h"
#include "ui/sidebar/selectchip.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

qsizetype indexOf(SettingsSection section)
{
    return static_cast<qsizetype>(section);
}

SettingsCard *makeCard(const UiContext &context, SettingsSection section)
{
    switch (section) {
    case SettingsSection::language:
        return new LanguageSettingsCard(context);
    case SettingsSection::naming:
        return new NamingSettingsCard(context);
    case SettingsSection::risks:
        return new RiskSettingsCard(context);
    case SettingsSection::workspace:
        return new WorkspaceSettingsCard(context);
    }
    return nullptr;
}

} // namespace

SettingsView::SettingsView(const UiContext &context, Desktop &desktop, SettingsSection section,
                           QWidget *parent)
    : QWidget(parent), m_context(context), m_section(section)
{
    setObjectName(QStringLiteral("settingsView"));
    auto *page = new QVBoxLayout(this);
    page->setContentsMargins(20, 20, 20, 8);
    page->setSpacing(6);

    auto *row = new QHBoxLayout;
    row->setSpacing(kRailGap);
    page->addLayout(row, 1);

    auto *rail = new QVBoxLayout;
    rail->setSpacing(6);
    // The rail starts level with the cards, below the title.
    rail->setContentsMargins(0, 48, 0, 0);
    for (SettingsSection s : kAllSettingsSections) {
        auto *button = new SelectChip(SelectChip::Look::rail, context.text(titleKey(s)));
        button->setObjectName(QStringLiteral("settings.rail.") + rawValue(s));
        button->setSymbol(symbolName(s));
        button->setFixedWidth(kRailWidth);
        connect(button, &QAbstractButton::clicked, this, [this, s] { setSection(s); });
        rail->addWidget(button);
        m_rail.append(button);
    }
    rail->addStretch(1);
    row->addLayout(rail);

    auto *column = new QVBoxLayout;
    column->setSpacing(8);
    QLabel *title = PanelParts::label(context.text(u"settings.title"), 22, 1.0, QFont::DemiBold);
    title->setFont(AppTheme::font(22, QFont::DemiBold, AppTheme::Face::rounded));
    title->setObjectName(QStringLiteral("settings.title"));
    // Level with the cards' faces, which sit inside their shadow margin.
    title->setContentsMargins(GlassCard::kShadowMargin, 0, 0, 0);
    column->addWidget(title);

    // A long list of recent folders can outgrow the fixed window; then the card scrolls.
    auto *scroll = new QScrollArea;
    scroll->setObjectName(QStringLiteral("settings.scroll"));
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setAttribute(Qt::WA_TranslucentBackground);
    scroll->viewport()->setAutoFillBackground(false);
    auto *cards = new QWidget;
    auto *stack = new QVBoxLayout(cards);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(0);
    for (SettingsSection s : kAllSettingsSections) {
        SettingsCard *card = makeCard(context, s);
        card->setVisible(s == m_section);
        stack->addWidget(card);
        m_cards.append(card);
    }
    stack->addStretch(1);
    scroll->setWidget(cards);
    cards->setAutoFillBackground(false); // setWidget turns it on; the backdrop shows through
    column->addWidget(scroll, 1);
    row->addLayout(column, 1);

    auto *footer = new CreditFooter(context.text(u"credit.designed"), desktop);
    footer->setObjectName(QStringLiteral("settings.credit"));
    page->addWidget(footer);

    setSection(section);
}

void SettingsView::setSection(SettingsSection section)
{
    const bool changed = section != m_section;
    m_section = section;
    for (SettingsSection s : kAllSettingsSections) {
        m_rail[indexOf(s)]->setSelected(s == section);
        m_cards[indexOf(s)]->setVisible(s == section);
    }
    if (changed)
        Q_EMIT sectionChanged(section);
}

SelectChip *SettingsView::railButton(SettingsSection section) const
{
    return m_rail.value(indexOf(section));
}

SettingsCard *SettingsView::card(SettingsSection section) const
{
    return m_cards.value(indexOf(section));
}
