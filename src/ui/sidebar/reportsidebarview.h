#pragma once

#include "ui/bugreport/creditfooter.h"
#include "ui/sidebar/sidebarcards.h"
#include "ui/uicontext.h"

#include <QLabel>
#include <QList>
#include <QPointer>
#include <QVariantAnimation>
#include <QWidget>

class Desktop;
class QScrollArea;
class QVBoxLayout;

// The left column of the main window: brand header and the cards that summarise the pack and
// act on all of it, the status line, and the credit line below the scroll area. It keeps no
// state of the pack; it reads the session again whenever one of the values it shows changes,
// and rebuilds its texts when the language or compact mode changes.
class ReportSidebarView final : public QWidget
{
    Q_OBJECT
public:
    ReportSidebarView(const UiContext &context, Desktop &desktop, QWidget *parent = nullptr);

    static constexpr int kWidth = 320;
    static constexpr int kCompactWidth = 280;
    // From the sidebar's edges to the faces of the cards.
    static constexpr int kPadding = 16;
    static constexpr int kCompactPadding = 12;

    // Puts the sidebar in its final place at once (screenshots, tests).
    void finishEntrance();
    bool hasAppeared() const { return m_appeared; }

    ChecklistCard *checklistCard() const { return m_checklist; }
    ProfileCard *profileCard() const { return m_profile; }
    HealthCard *healthCard() const { return m_health; }
    NamingCard *namingCard() const { return m_naming; }
    WatchCard *watchCard() const { return m_watch; }
    BatchCard *batchCard() const { return m_batch; }
    ClipCard *clipCard() const { return m_clip; }
    QLabel *statusLine() const { return m_status; }
    QScrollArea *scrollArea() const { return m_scroll; }
    CreditFooter *creditFooter() const { return m_footer; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void rebuild();
    void refreshAll();
    void refreshStatus();
    void placeStage();

    UiContext m_context;
    Desktop &m_desktop;
    QWidget *m_stage; // everything that slides in
    QVBoxLayout *m_stageLayout;
    QScrollArea *m_scroll = nullptr;
    QPointer<ChecklistCard> m_checklist;
    QPointer<ProfileCard> m_profile;
    QPointer<HealthCard> m_health;
    QPointer<NamingCard> m_naming;
    QPointer<WatchCard> m_watch;
    QPointer<BatchCard> m_batch;
    QPointer<ClipCard> m_clip;
    QPointer<QLabel> m_status;
    QPointer<CreditFooter> m_footer;
    QString m_shownStatus;
    QList<QPointer<SidebarCard>> m_cards;

    bool m_appeared = false;
    qreal m_entrance = 0; // 0 hidden and shifted, 1 in place
    QVariantAnimation m_enter;
};
