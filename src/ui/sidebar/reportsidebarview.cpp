#include "reportsidebarview.h"

#include "l10n/apppreferences.h"
#include "l10n/localizationmanager.h"
#include "panelparts.h"
#include "session/packviewmodel.h"
#include "session/watchfoldermonitor.h"
#include "sidebarcards.h"
#include "ui/apptheme.h"
#include "ui/bugreport/creditfooter.h"
#include "ui/motion.h"

#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {
constexpr int kEntranceShift = 16;
}

ReportSidebarView::ReportSidebarView(const UiContext &context, Desktop &desktop, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_desktop(desktop)
    , m_stage(new QWidget(this))
    , m_stageLayout(new QVBoxLayout(m_stage))
{
    setObjectName(QStringLiteral("reportSidebar"));
    m_stageLayout->setContentsMargins(0, 0, 1, 0); // the trailing line stays visible
    m_stageLayout->setSpacing(0);
    m_stage->setGraphicsEffect(new QGraphicsOpacityEffect(m_stage));
    static_cast<QGraphicsOpacityEffect *>(m_stage->graphicsEffect())->setOpacity(0);

    m_enter.setStartValue(0.0);
    m_enter.setEndValue(1.0);
    m_enter.setDuration(AppTheme::springDurationMs(AppTheme::Spring::soft));
    m_enter.setEasingCurve(AppTheme::springCurve(AppTheme::Spring::soft));
    connect(&m_enter, &QVariantAnimation::valueChanged, this, [this](const QVariant &v) {
        m_entrance = v.toReal();
        placeStage();
    });
    connect(&m_enter, &QVariantAnimation::finished, this, &ReportSidebarView::finishEntrance);

    PackViewModel &vm = context.viewModel;
    for (auto signal :
         {&PackViewModel::clipsChanged, &PackViewModel::isScanningChanged,
          &PackViewModel::isConvertingChanged, &PackViewModel::screenProfileChanged,
          &PackViewModel::showPrefixChanged, &PackViewModel::zeroPadChanged,
          &PackViewModel::selectedClipIDChanged, &PackViewModel::duplicateCountChanged,
          &PackViewModel::lastExportURLChanged, &PackViewModel::lastBackupURLChanged})
        connect(&vm, signal, this, &ReportSidebarView::refreshAll);
    connect(&vm, &PackViewModel::statusChanged, this, &ReportSidebarView::refreshStatus);
    connect(&vm.watchFolder(), &WatchFolderMonitor::isWatchingChanged, this,
            &ReportSidebarView::refreshAll);
    connect(&vm.watchFolder(), &WatchFolderMonitor::folderChanged, this,
            &ReportSidebarView::refreshAll);
    connect(&context.localization, &LocalizationManager::languageChanged, this,
            &ReportSidebarView::rebuild);
    connect(&context.preferences, &AppPreferences::compactModeChanged, this,
            &ReportSidebarView::rebuild);
    rebuild();
}

void ReportSidebarView::rebuild()
{
    PanelParts::clear(m_stageLayout);
    m_cards.clear();
    const bool compact = m_context.compact();
    setFixedWidth(compact ? kCompactWidth : kWidth);

    m_scroll = new QScrollArea;
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->viewport()->setAutoFillBackground(false);
    auto *column = new QWidget;
    column->setAutoFillBackground(false);
    auto *stack = new QVBoxLayout(column);
    // The cards' shadow margin is part of the padding around them.
    const int pad = (compact ? 12 : 16) - 6;
    stack->setContentsMargins(pad, pad + 4, pad, pad);
    stack->setSpacing(compact ? 2 : 4);

    // 1. Brand header.
    auto *brand = new QVBoxLayout;
    brand->setContentsMargins(6, 0, 6, 8);
    brand->setSpacing(2);
    auto *kicker = PanelParts::colouredLabel(m_context.text(u"sidebar.kicker"), 10,
                                             AppTheme::accentGreen, QFont::Bold);
    QFont kickerFont = kicker->font();
    kickerFont.setLetterSpacing(QFont::AbsoluteSpacing, 2.4);
    kicker->setFont(kickerFont);
    brand->addWidget(kicker);
    auto *title = PanelParts::label(m_context.text(u"sidebar.title"), 22, 0.95, QFont::Bold);
    title->setFont(AppTheme::font(22, QFont::Bold, AppTheme::Face::rounded));
    brand->addWidget(title);
    brand->addWidget(PanelParts::label(m_context.text(u"sidebar.subtitle"), 12, 0.45));
    stack->addLayout(brand);

    // 2–8. The cards.
    m_checklist = new ChecklistCard(m_context);
    m_profile = new ProfileCard(m_context);
    m_health = new HealthCard(m_context);
    m_naming = new NamingCard(m_context);
    m_watch = new WatchCard(m_context);
    m_batch = new BatchCard(m_context);
    m_clip = new ClipCard(m_context);
    for (SidebarCard *card : std::initializer_list<SidebarCard *>{
             m_checklist, m_profile, m_health, m_naming, m_watch, m_batch, m_clip}) {
        stack->addWidget(card);
        m_cards.append(card);
    }

    // 9. Status line.
    m_status = PanelParts::label({}, 11, 0.6);
    m_status->setObjectName(QStringLiteral("sidebar.status"));
    m_status->setWordWrap(true);
    m_status->setContentsMargins(6, 4, 6, 0);
    stack->addWidget(m_status);
    stack->addStretch(1);
    m_scroll->setWidget(column);
    m_stageLayout->addWidget(m_scroll, 1);

    auto *footer = new CreditFooter(m_context.text(u"credit.designed"), m_desktop);
    m_stageLayout->addWidget(footer);
    refreshStatus();
}

void ReportSidebarView::refreshAll()
{
    for (const QPointer<SidebarCard> &card : std::as_const(m_cards)) {
        if (card)
            card->refresh();
    }
}

void ReportSidebarView::refreshStatus()
{
    if (!m_status)
        return;
    const PackViewModel &vm = m_context.viewModel;
    const bool idle = vm.status().kind() == PackStatus::Kind::idle;
    m_status->setVisible(!idle);
    m_status->setText(idle ? QString() : vm.statusText());
}

void ReportSidebarView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_appeared || m_enter.state() == QAbstractAnimation::Running)
        return;
    if (Motion::isInstant())
        finishEntrance();
    else
        m_enter.start();
}

void ReportSidebarView::finishEntrance()
{
    m_enter.stop();
    m_appeared = true;
    m_entrance = 1;
    // The effect renders through an offscreen buffer; once in place it is no longer needed.
    m_stage->setGraphicsEffect(nullptr);
    placeStage();
}

void ReportSidebarView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeStage();
}

void ReportSidebarView::placeStage()
{
    const int shift = static_cast<int>(std::lround(-kEntranceShift * (1.0 - m_entrance)));
    m_stage->setGeometry(shift, 0, width(), height());
    if (auto *effect = qobject_cast<QGraphicsOpacityEffect *>(m_stage->graphicsEffect()))
        effect->setOpacity(std::clamp(m_entrance, 0.0, 1.0));
}

void ReportSidebarView::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.fillRect(rect(), AppTheme::withAlpha(AppTheme::ink, 0.92));
    QLinearGradient tint(0, 0, width(), height());
    tint.setColorAt(0, AppTheme::withAlpha(AppTheme::accentGreen, 0.06));
    tint.setColorAt(0.6, AppTheme::withAlpha(AppTheme::accentGreen, 0.015));
    tint.setColorAt(1, Qt::transparent);
    p.fillRect(rect(), tint);
    QLinearGradient edge(0, 0, 0, height());
    edge.setColorAt(0, AppTheme::white(0.25));
    edge.setColorAt(1, AppTheme::white(0.02));
    p.fillRect(QRectF(width() - 1, 0, 1, height()), edge);
}
