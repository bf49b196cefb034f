#pragma once

#include "settings/settingssection.h"
#include "uicontext.h"

#include <QPointer>
#include <QWidget>

class AmbientBackground;
class Desktop;
class SettingsView;

// The settings window: a fixed 620 × 500 page over the ambient backdrop. Every change takes
// effect at once; there is nothing to apply or cancel. A language switch rebuilds the page in
// the new language on the section that was showing.
class SettingsWindow final : public QWidget
{
    Q_OBJECT
public:
    SettingsWindow(const UiContext &context, Desktop &desktop, QWidget *parent = nullptr);

    static constexpr QSize kSize{620, 500};

    void rebuild();
    SettingsView *view() const;
    AmbientBackground *background() const { return m_background; }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    UiContext m_context;
    Desktop &m_desktop;
    AmbientBackground *m_background;
    QPointer<SettingsView> m_view;
};
