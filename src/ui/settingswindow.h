#pragma once

#include "uicontext.h"

#include <QWidget>

// The settings window: a fixed 620 × 500 page over the ambient backdrop. Its sections arrive
// with the settings work; the frame, title and relabelling are here.
class SettingsWindow final : public QWidget
{
    Q_OBJECT
public:
    explicit SettingsWindow(const UiContext &context, QWidget *parent = nullptr);
    void rebuild();

private:
    UiContext m_context;
    QWidget *m_content = nullptr;
};
