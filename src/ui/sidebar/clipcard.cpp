// Card 8 of the sidebar: what we know about the selected clip, or how to select one.
#include "sidebarcards.h"

#include "l10n/localizationmanager.h"
#include "panelparts.h"
#include "session/packviewmodel.h"
#include "ui/apptheme.h"
#include "ui/clippreviewview.h"
#include "ui/cliptablemodel.h"
#include "ui/kitbuttons.h"
#include "ui/kitwidgets.h"
#include "ui/motion.h"
#include "ui/symbols.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

QString shortHealthKey(ClipHealth health)
{
    switch (health) {
    case ClipHealth::ok:
        return QStringLiteral("health.ok.short");
    case ClipHealth::warn:
        return QStringLiteral("health.warn.short");
    case ClipHealth::fail:
        return QStringLiteral("health.fail.short");
    case ClipHealth::unknown:
        break;
    }
    return QStringLiteral("health.unknown.short");
}

QString severitySymbol(ClipHealth severity)
{
    switch (severity) {
    case ClipHealth::ok:
        return QStringLiteral("checkmark.circle.fill");
    case ClipHealth::warn:
        return QStringLiteral("exclamationmark.triangle.fill");
    case ClipHealth::fail:
        return QStringLiteral("xmark.octagon.fill");
    case ClipHealth::unknown:
        break;
    }
    return QStringLiteral("questionmark.circle");
}

} // namespace

ClipCard::ClipCard(const UiContext &context, QWidget *parent)
    : SidebarCard(context, QStringLiteral("film"), QStringLiteral("selected.title"),
                  QStringLiteral("selected.tooltip"), parent)
    , m_preview(new ClipPreviewView)
    , m_content(new QVBoxLayout)
{
    // One preview for the card's lifetime: it tears its player down itself when the clip's id
    // changes, and keeps playing when only the clip's findings change.
    m_preview->setCompact(context.compact());
    body()->insertWidget(0, m_preview);
    m_content->setSpacing(10);
    body()->addLayout(m_content);
    // The empty card swaps its banner for plain text once the tip is dismissed.
    connect(&context.localization, &LocalizationManager::dismissedHintsChanged, this, [this] {
        if (m_shownHintDismissed !=
            m_context.localization.isHintDismissed(QStringLiteral("hint.selected")))
            rebuild();
    });
    rebuild();
}

void ClipCard::refresh()
{
    if (m_context.viewModel.selectedClip() != m_shown) {
        rebuild();
        return;
    }
    if (m_removeAudio)
        m_removeAudio->setEnabled(!m_context.viewModel.isConverting());
}

void ClipCard::rebuild()
{
    const std::optional<MediaClip> before = m_shown;
    const bool hintDismissed =
        m_context.localization.isHintDismissed(QStringLiteral("hint.selected"));
    m_shown = m_context.viewModel.selectedClip();
    m_preview->setClip(m_shown);
    m_preview->setVisible(m_shown.has_value());
    if (m_shown && m_detailsBuilt && hintDismissed == m_shownHintDismissed) {
        fillDetails(*m_shown, before);
    } else {
        PanelParts::clear(m_content);
        m_detailsBuilt = false;
        m_shownHintDismissed = hintDismissed;
        if (m_shown) {
            buildDetails();
            fillDetails(*m_shown, std::nullopt);
        } else {
            buildEmpty();
        }
    }
    // Another clip's card fades in; new findings or a new name for the same clip do not.
    if (m_shown && (!before || m_shown->id != before->id))
        Motion::enter(this, Motion::Entrance::fade, AppTheme::Spring::soft);
}

void ClipCard::buildDetails()
{
    PanelParts::addHint(m_content, m_context, QStringLiteral("hint.selected"),
                        QStringLiteral("selected.hint"));
    m_name = PanelParts::label({}, 13, 0.92, QFont::DemiBold);
    m_name->setObjectName(QStringLiteral("selected.arenaName"));
    m_name->setWordWrap(true);
    m_content->addWidget(m_name);

    // A frame size such as "3840×2160" needs more room than a third of the card: status and
    // size share the first row, the frame rate takes the second.
    auto *tiles = new QGridLayout;
    tiles->setSpacing(8);
    m_status = new BentoMetric(text(u"table.status"), {}, AppTheme::white(0.92));
    m_resolution = new BentoMetric(text(u"table.res"), {}, AppTheme::white(0.92));
    m_frameRate = new BentoMetric(text(u"table.fps"), {}, AppTheme::white(0.92));
    tiles->addWidget(m_status, 0, 0);
    tiles->addWidget(m_resolution, 0, 1);
    tiles->addWidget(m_frameRate, 1, 0, 1, 2);
    tiles->setColumnStretch(0, 2);
    tiles->setColumnStretch(1, 3);
    m_content->addLayout(tiles);
    // Transparency is wanted on stage, so it is a property of the clip, not a finding.
    m_transparent = PanelParts::label(text(u"clip.transparent"), 12, 0.7, QFont::DemiBold);
    m_transparent->setObjectName(QStringLiteral("selected.transparent"));
    m_content->addWidget(m_transparent);

    m_findingLines.clear();
    m_findings = new QWidget;
    auto *findings = new QVBoxLayout(m_findings);
    findings->setContentsMargins(0, 0, 0, 0);
    findings->setSpacing(10);
    m_content->addWidget(m_findings);

    m_removeAudio = new KitButton(KitButton::Kind::ghost, QStringLiteral("speaker.slash"),
                                  text(u"audio.remove"));
    m_removeAudio->setToolTip(text(u"audio.remove.help"));
    m_removeAudio->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(m_removeAudio, &QAbstractButton::clicked, this, [this] {
        if (m_shown)
            m_context.viewModel.stripAudio({m_shown->id});
    });
    m_content->addWidget(m_removeAudio);
    m_detailsBuilt = true;
}

void ClipCard::fillDetails(const MediaClip &clip, const std::optional<MediaClip> &before)
{
    m_name->setText(clip.arenaName);
    const ClipHealth health = clip.health();
    m_status->setValue(text(shortHealthKey(health)), AppTheme::healthColor(health));
    m_resolution->setValue(clip.resolutionLabel(), AppTheme::white(0.92));
    m_frameRate->setValue(ClipTableModel::frameRateLabel(clip.frameRate), AppTheme::white(0.92));
    m_transparent->setVisible(clip.hasAlpha);
    m_removeAudio->setVisible(clip.hasAudio);
    m_removeAudio->setEnabled(!m_context.viewModel.isConverting());

    if (before && before->issues == clip.issues)
        return;
    const L10n strings = m_context.strings();
    const auto fill = [&](FindingLine &line, const QString &symbol, const QColor &tint,
                          const QString &text, bool clean) {
        line.icon->setPixmap(Symbols::pixmap(symbol, tint, 14, line.icon->devicePixelRatioF()));
        line.text->setText(text);
        if (clean)
            line.text->setObjectName(QStringLiteral("selected.clean"));
        else
            line.text->setObjectName(QStringLiteral("selected.issue"));
        line.row->show();
    };
    qsizetype used = 0;
    if (clip.issues.isEmpty()) {
        fill(findingLine(used++), QStringLiteral("checkmark.seal.fill"), AppTheme::accentGreen,
             text(u"selected.clean"), true);
    }
    for (const ClipIssue &issue : clip.issues) {
        fill(findingLine(used++), severitySymbol(issue.severity),
             AppTheme::healthColor(issue.severity), issue.localized(strings), false);
    }
    for (qsizetype i = used; i < m_findingLines.size(); ++i) {
        m_findingLines[i].row->hide();
        m_findingLines[i].text->setObjectName({}); // a hidden line is no finding
    }
}

ClipCard::FindingLine &ClipCard::findingLine(qsizetype index)
{
    while (m_findingLines.size() <= index) {
        auto *row = new QWidget;
        auto *line = new QHBoxLayout(row);
        line->setContentsMargins(0, 0, 0, 0);
        line->setSpacing(8);
        QLabel *icon =
            PanelParts::symbol(QStringLiteral("checkmark.seal.fill"), AppTheme::accentGreen, 14);
        line->addWidget(icon, 0, Qt::AlignTop);
        QLabel *message = PanelParts::label({}, 12, 0.85);
        message->setWordWrap(true);
        line->addWidget(message, 1);
        m_findings->layout()->addWidget(row);
        m_findingLines.append({row, icon, message});
    }
    return m_findingLines[index];
}

void ClipCard::buildEmpty()
{
    if (PanelParts::addHint(m_content, m_context, QStringLiteral("hint.selected"),
                            QStringLiteral("selected.hint")))
        return;
    auto *row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(PanelParts::symbol(QStringLiteral("hand.tap"), AppTheme::white(0.4), 14), 0,
                   Qt::AlignTop);
    auto *hint = PanelParts::label(text(u"selected.hint"), 12, 0.4);
    hint->setObjectName(QStringLiteral("selected.plainHint"));
    hint->setWordWrap(true);
    row->addWidget(hint, 1);
    m_content->addLayout(row);
}
