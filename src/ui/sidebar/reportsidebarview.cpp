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
} // namespace

ReportSidebarView::ReportSidebarView(const UiContext &context, Desktop &desktop, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_desktop(desktop)
    , m_stage(new QWidget(this))
    , m_stageLayout(new QVBoxLayout(m_stage))
{
    setObjectName(QStringLiteral("reportSidebar"));
    m_stage->setObjectName(QStringLiteral("sidebar.stage"));
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
          &PackViewModel::duplicateCountChanged,
          &PackViewModel::lastExportURLChanged, &PackViewModel::lastBackupURLChanged})
        connect(&vm, signal, this, &ReportSidebarView::refreshAll);
    // A new selection only concerns the clip card; the other cards read the whole pack, which
    // costs more with thousands of clips than a click should.
    connect(&vm, &PackViewModel::selectedClipIDChanged, this, [this] {
        if (m_clip)
            m_clip->refresh();
    });
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
    m_scroll->setObjectName(QStringLiteral("sidebar.scroll"));
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->viewport()->setAutoFillBackground(false);
    auto *column = new QWidget;
    column->setObjectName(QStringLiteral("sidebar.column"));
    column->setAutoFillBackground(false);
    auto *stack = new QVBoxLayout(column);
    // The cards paint their shadows inside their own margins; the padding counts to the faces.
    const int pad = compact ? kCompactPadding : kPadding;
    const int side = pad - GlassCard::kShadowMargin;
    stack->setContentsMargins(side, pad, side, pad - GlassCard::kShadowMargin);
    stack->setSpacing(0);

    // 1. Brand header, aligned with the faces of the cards below.
    auto *brand = new QVBoxLayout;
    brand->setContentsMargins(GlassCard::kShadowMargin, 0, GlassCard::kShadowMargin, 8);
    brand->setSpacing(2);
    QWidget *kicker = PanelParts::kicker(m_context.text(u"sidebar.kicker"), 10, 2.4);
    kicker->setObjectName(QStringLiteral("sidebar.kicker"));
    brand->addWidget(kicker);
    auto *title = PanelParts::label(m_context.text(u"sidebar.title"), 22, 0.95, QFont::Bold);
    title->setObjectName(QStringLiteral("sidebar.title"));
    title->setFont(AppTheme::font(22, QFont::Bold, AppTheme::Face::rounded));
    brand->addWidget(title);
    auto *subtitle = PanelParts::label(m_context.text(u"sidebar.subtitle"), 12, 0.45);
    subtitle->setObjectName(QStringLiteral("sidebar.subtitle"));
    subtitle->setWordWrap(true);
    brand->addWidget(subtitle);
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

    // 9. Status line, under the last card's shadow.
    m_status = PanelParts::label({}, 11, 0.6);
    m_status->setObjectName(QStringLiteral("sidebar.status"));
    m_status->setWordWrap(true);
    m_status->setContentsMargins(GlassCard::kShadowMargin, 0, GlassCard::kShadowMargin, 0);
    stack->addWidget(m_status);
    stack->addStretch(1);
    m_scroll->setWidget(column);
    m_stageLayout->addWidget(m_scroll, 1);

    // Outside the scroll area: always in view, whatever the length of the cards.
    m_footer = new CreditFooter(m_context.text(u"credit.designed"), m_desktop);
    m_footer->setObjectName(QStringLiteral("sidebar.credit"));
    m_stageLayout->addWidget(m_footer);
    m_shownStatus.clear();
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
    const QString text = idle ? QString() : vm.statusText();
    if (idle) {
        m_status->hide();
        m_status->clear();
    } else if (text != m_shownStatus) {
        m_status->setText(text);
        // A new text fades in over the old place rather than jumping.
        Motion::enter(m_status, Motion::Entrance::fade, AppTheme::Spring::snappy);
    }
    m_shownStatus = text;
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
