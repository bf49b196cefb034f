#pragma once

#include "uicontext.h"

#include <QWidget>

#include <memory>

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
    // Without a desktop of the caller's, links go through the system's own services.
    explicit ContentView(const UiContext &context, QWidget *parent = nullptr);
    ~ContentView() override;

    AmbientBackground *background() const { return m_background; }
    ReportSidebarView *sidebar() const { return m_sidebar; }
    DetailArea *detail() const { return m_detail; }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    ContentView(const UiContext &context, std::unique_ptr<Desktop> ownDesktop, Desktop *desktop,
                QWidget *parent);

    std::unique_ptr<Desktop> m_ownDesktop;
    AmbientBackground *m_background;
    ReportSidebarView *m_sidebar;
    DetailArea *m_detail;
};
