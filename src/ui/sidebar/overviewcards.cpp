// The reading cards of the sidebar: pre-show checklist, screen profile and pack health.
#include "sidebarcards.h"

#include "l10n/localizationmanager.h"
#include "output/packreport.h"
#include "panelparts.h"
#include "selectchip.h"
#include "session/packviewmodel.h"
#include "ui/apptheme.h"
#include "ui/cliptablemodel.h"
#include "ui/kitwidgets.h"
#include "ui/segmentbar.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

ChecklistCard::ChecklistCard(const UiContext &context, QWidget *parent)
    : SidebarCard(context, QStringLiteral("checklist"), QStringLiteral("checklist.title"),
                  QStringLiteral("checklist.tooltip"), parent)
    , m_progress(PanelParts::label({}, 11, 0.45, QFont::DemiBold))
    , m_seal(PanelParts::symbol(QStringLiteral("checkmark.seal.fill"), AppTheme::accentGreen, 13))
    , m_rows(new QVBoxLayout)
{
    m_progress->setObjectName(QStringLiteral("checklist.progress"));
    auto *progressRow = new QHBoxLayout;
    progressRow->setSpacing(6);
    progressRow->addWidget(m_progress);
    progressRow->addWidget(m_seal);
    progressRow->addStretch(1);
    body()->addLayout(progressRow);
    m_rows->setSpacing(8);
    body()->addLayout(m_rows);
    refresh();
}

void ChecklistCard::refresh()
{
    const PreShowChecklist checklist = m_context.viewModel.checklist();
    // Every edit of the pack lands here; rebuilding the rows and their layout each time made a
    // keystroke in a big pack miss frames.
    if (checklist == m_shown)
        return;
    m_shown = checklist;
    const qint64 ready = checklist.readyCount();
    const auto total = static_cast<qint64>(checklist.items.size());
    const bool allReady = ready == total;
    m_progress->setText(m_context.strings().format(u"checklist.progress", {ready, total}));
    PanelParts::setTextColor(m_progress, allReady ? AppTheme::accentGreen : AppTheme::white(0.45));
    m_seal->setVisible(allReady);

    PanelParts::clear(m_rows);
    for (const ChecklistItem &item : checklist.items) {
        const QColor tint = item.ok ? AppTheme::accentGreen : AppTheme::warn;
        auto *row = new QWidget;
        row->setObjectName(QStringLiteral("checklist.") + item.id);
        auto *line = new QHBoxLayout(row);
        line->setContentsMargins(0, 0, 0, 0);
        line->setSpacing(8);
        line->addWidget(PanelParts::symbol(item.ok ? QStringLiteral("checkmark.circle.fill")
                                                   : QStringLiteral("circle"),
                                           tint, 14),
                        0, Qt::AlignTop);
        auto *texts = new QVBoxLayout;
        texts->setSpacing(1);
        auto *title = PanelParts::label(text(item.titleKey), 12, 0.9);
        auto *detail = PanelParts::label(text(item.detailKey), 10, 0.4);
        detail->setWordWrap(true);
        texts->addWidget(title);
        texts->addWidget(detail);
        line->addLayout(texts, 1);
        if (item.count) {
            auto *count =
                PanelParts::colouredLabel(QString::number(*item.count), 12, tint, QFont::DemiBold);
            line->addWidget(count, 0, Qt::AlignTop);
        }
        m_rows->addWidget(row);
    }
}

namespace {
QString profileSymbol(ScreenProfile profile)
{
    switch (profile) {
    case ScreenProfile::ledWall:
        return QStringLiteral("tv");
    case ScreenProfile::vertical:
        return QStringLiteral("rectangle.portrait");
    case ScreenProfile::landscape169:
        break;
    }
    return QStringLiteral("rectangle");
}
} // namespace

ProfileCard::ProfileCard(const UiContext &context, QWidget *parent)
    : SidebarCard(context, QStringLiteral("display"), QStringLiteral("profile.title"),
                  QStringLiteral("profile.tooltip"), parent)
{
    for (ScreenProfile profile : kAllScreenProfiles) {
        auto *row = new SelectChip(SelectChip::Look::row, text(labelKey(profile)));
        row->setObjectName(QStringLiteral("profile.") + rawValue(profile));
        row->setSymbol(profileSymbol(profile));
        row->setHelpText(text(helpKey(profile)));
        PackViewModel &vm = m_context.viewModel;
        connect(row, &QAbstractButton::clicked, this,
                [&vm, profile] { vm.setScreenProfile(profile); });
        body()->addWidget(row);
        m_rows.append(row);
    }
    refresh();
}

void ProfileCard::refresh()
{
    for (qsizetype i = 0; i < m_rows.size(); ++i)
        m_rows[i]->setSelected(kAllScreenProfiles[i] == m_context.viewModel.screenProfile());
}

HealthCard::HealthCard(const UiContext &context, QWidget *parent)
    : SidebarCard(context, QStringLiteral("heart.text.clipboard"), QStringLiteral("health.title"),
                  QStringLiteral("health.tooltip"), parent)
    , m_total(new BentoMetric(text(u"health.total"), {}, Qt::white,
                              QStringLiteral("square.stack.3d.up")))
    , m_ok(new BentoMetric(text(u"health.ok"), {}, AppTheme::ok, QStringLiteral("checkmark")))
    , m_warn(new BentoMetric(text(u"health.warn"), {}, AppTheme::warn,
                             QStringLiteral("exclamationmark")))
    , m_fail(new BentoMetric(text(u"health.fail"), {}, AppTheme::fail, QStringLiteral("xmark")))
    , m_bar(new SegmentBar(120, 7))
    , m_size(PanelParts::label({}, 12, 0.9))
{
    PanelParts::addHint(body(), context, QStringLiteral("hint.health"),
                        QStringLiteral("health.hint"));
    auto *grid = new QGridLayout;
    grid->setSpacing(8);
    grid->addWidget(m_total, 0, 0);
    grid->addWidget(m_ok, 0, 1);
    grid->addWidget(m_warn, 1, 0);
    grid->addWidget(m_fail, 1, 1);
    body()->addLayout(grid);
    m_bar->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_bar->setMinimumWidth(0);
    m_bar->setMaximumWidth(QWIDGETSIZE_MAX);
    body()->addWidget(m_bar);
    auto *sizeRow = new QHBoxLayout;
    sizeRow->addWidget(PanelParts::label(text(u"health.size"), 11, 0.4));
    sizeRow->addStretch(1);
    m_size->setObjectName(QStringLiteral("health.sizeValue"));
    sizeRow->addWidget(m_size);
    body()->addLayout(sizeRow);
    refresh();
}

void HealthCard::refresh()
{
    const PackReport report = PackReport::from(m_context.viewModel.clips());
    m_total->setValue(QString::number(report.total), AppTheme::white(0.92));
    m_ok->setValue(QString::number(report.okCount), AppTheme::ok);
    m_warn->setValue(QString::number(report.warnCount), AppTheme::warn);
    m_fail->setValue(QString::number(report.failCount), AppTheme::fail);
    m_bar->setSegments({{double(report.okCount), AppTheme::ok},
                        {double(report.warnCount), AppTheme::warn},
                        {double(report.failCount), AppTheme::fail}});
    // The same file-size style as the table's size column.
    m_size->setText(ClipTableModel::sizeLabel(report.totalBytes));
}
