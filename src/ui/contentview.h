#pragma once

#include "uicontext.h"

#include <QWidget>

class AmbientBackground;
class DetailArea;
class Desktop;
class ReportSidebarView;

// Everything inside the main window: the backdrop, the sidebar and the detail area. It is
// rebuilt from scratch when the language changes, so every text is looked up again; all that
// matters lives in the session and survives.
class ContentView final : public QWidget
{
    Q_OBJECT
public:
    // `desktop` opens the links of the sidebar (the maker's site).
    ContentView(const UiContext &context, Desktop &desktop, QWidget *parent = nullptr);

    AmbientBackground *background() const { return m_background; }
    ReportSidebarView *sidebar() const { return m_sidebar; }
    DetailArea *detail() const { return m_detail; }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    AmbientBackground *m_background;
    ReportSidebarView *m_sidebar;
    DetailArea *m_detail;
};
