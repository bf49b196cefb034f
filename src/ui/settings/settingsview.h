#pragma once

#include "settingssection.h"
#include "ui/uicontext.h"

#include <QWidget>

class Desktop;
class SelectChip;
class SettingsCard;

// The settings page in one language: the rail of sections beside the title and the selected
// section's card, the credit line below. The window builds a new one when the language changes;
// the section chosen on the rail is the view's own state.
class SettingsView final : public QWidget
{
    Q_OBJECT
public:
    SettingsView(const UiContext &context, Desktop &desktop,
                 SettingsSection section = SettingsSection::language, QWidget *parent = nullptr);

    SettingsSection section() const { return m_section; }
    void setSection(SettingsSection section);

    SelectChip *railButton(SettingsSection section) const;
    SettingsCard *card(SettingsSection section) const;
    // The card on show.
    SettingsCard *currentCard() const { return card(m_section); }

    static constexpr int kRailWidth = 168;
    static constexpr int kRailGap = 22;

Q_SIGNALS:
    void sectionChanged(SettingsSection section);

private:
    UiContext m_context;
    SettingsSection m_section;
    QList<SelectChip *> m_rail;    // in section order
    QList<SettingsCard *> m_cards; // in section order
};
