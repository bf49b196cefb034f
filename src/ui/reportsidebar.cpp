#include "reportsidebar.h"

#include "apptheme.h"
#include "clippreviewview.h"
#include "cliptablemodel.h"
#include "glasscard.h"
#include "kitwidgets.h"
#include "l10n/apppreferences.h"
#include "session/packviewmodel.h"
#include "statusbadge.h"

#include <QGridLayout>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QScrollArea>
#include <QVBoxLayout>

ReportSidebar::ReportSidebar(const UiContext &context, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_selectedCard(new GlassCard(14, GlassCard::Elevation::flat))
    , m_hint(new QLabel(context.text(u"selected.hint")))
    , m_preview(new ClipPreviewView)
    , m_name(new QLabel)
    , m_status(new BentoMetric(context.text(u"table.status"), {}, AppTheme::ok))
    , m_resolution(new BentoMetric(context.text(u"table.res"), {}, AppTheme::white(0.9)))
    , m_frameRate(new BentoMetric(context.text(u"table.fps"), {}, AppTheme::white(0.9)))
    , m_details(new QWidget)
{
    setObjectName(QStringLiteral("reportSidebar"));
    auto *scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->viewport()->setAutoFillBackground(false);
    auto *stack = new QWidget;
    stack->setAutoFillBackground(false);
    scroll->setWidget(stack);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 1, 0);
    outer->addWidget(scroll);

    auto *cards = new QVBoxLayout(stack);
    cards->setObjectName(QStringLiteral("sidebarCards"));
    cards->addWidget(m_selectedCard);
    cards->addStretch(1);

    auto *card = new QVBoxLayout(m_selectedCard);
    card->setContentsMargins(m_selectedCard->contentsMargins() + QMargins(14, 14, 14, 14));
    card->setSpacing(10);
    card->addWidget(new SectionHeader(QStringLiteral("film"), context.text(u"selected.title"),
                                      context.text(u"selected.tooltip")));
    m_hint->setWordWrap(true);
    m_hint->setFont(AppTheme::font(11));
    QPalette pal = m_hint->palette();
    pal.setColor(QPalette::WindowText, AppTheme::white(0.45));
    m_hint->setPalette(pal);
    card->addWidget(m_hint);
    auto *details = new QVBoxLayout(m_details);
    details->setContentsMargins(0, 0, 0, 0);
    details->setSpacing(10);
    details->addWidget(m_preview);
    m_name->setFont(AppTheme::font(13, QFont::DemiBold, AppTheme::Face::mono));
    m_name->setWordWrap(true);
    details->addWidget(m_name);
    auto *grid = new QGridLayout;
    grid->setSpacing(8);
    grid->addWidget(m_status, 0, 0);
    grid->addWidget(m_resolution, 0, 1);
    grid->addWidget(m_frameRate, 0, 2);
    details->addLayout(grid);
    card->addWidget(m_details);

    PackViewModel &vm = m_context.viewModel;
    connect(&vm, &PackViewModel::selectedClipIDChanged, this, &ReportSidebar::refresh);
    connect(&vm, &PackViewModel::clipsChanged, this, &ReportSidebar::refresh);
    connect(&m_context.preferences, &AppPreferences::compactModeChanged, this,
            &ReportSidebar::applyCompact);
    applyCompact();
    refresh();
}

void ReportSidebar::applyCompact()
{
    const bool compact = m_context.compact();
    setFixedWidth(widthFor(compact));
    const int pad = compact ? 12 : 16;
    if (auto *cards = findChild<QVBoxLayout *>(QStringLiteral("sidebarCards")))
        cards->setContentsMargins(pad - GlassCard::kShadowMargin, pad,
                                  pad - GlassCard::kShadowMargin, pad);
    m_preview->setCompact(compact);
}

void ReportSidebar::refresh()
{
    const std::optional<MediaClip> clip = m_context.viewModel.selectedClip();
    m_hint->setVisible(!clip);
    m_details->setVisible(clip.has_value());
    m_preview->setClip(clip);
    if (!clip)
        return;
    m_name->setText(clip->arenaName);
    const ClipHealth health = clip->health();
    m_status->setValue(StatusBadgeLook::label(health, m_context.strings()),
                       AppTheme::healthColor(health));
    m_resolution->setValue(clip->resolutionLabel(), AppTheme::white(0.9));
    m_frameRate->setValue(ClipTableModel::frameRateLabel(clip->frameRate), AppTheme::white(0.9));
}

void ReportSidebar::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.fillRect(rect(), QColor::fromRgbF(0.05f, 0.05f, 0.055f, 0.92f));
    QLinearGradient tint(0, 0, 0, height());
    tint.setColorAt(0, AppTheme::withAlpha(AppTheme::accentGreen, 0.06));
    tint.setColorAt(1, AppTheme::withAlpha(AppTheme::accentGreen, 0.0));
    p.fillRect(rect(), tint);
    QLinearGradient edge(0, 0, 0, height());
    edge.setColorAt(0, AppTheme::white(0.25));
    edge.setColorAt(1, AppTheme::white(0.02));
    p.fillRect(QRect(width() - 1, 0, 1, height()), edge);
}
