#include "renamestudioview.h"

#include "renamedraftmodel.h"
#include "renamerowsview.h"
#include "session/packviewmodel.h"
#include "ui/apptheme.h"
#include "ui/kitbuttons.h"
#include "ui/kitwidgets.h"
#include "ui/sheetscaffold.h"
#include "ui/sidebar/panelparts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {
constexpr int kPaddingX = 20;
} // namespace

RenameStudioView::RenameStudioView(const UiContext &context, std::function<void()> dismiss,
                                   QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_dismiss(std::move(dismiss))
    , m_model(new RenameDraftModel(m_studio, this))
    , m_rows(new RenameRowsView)
{
    setObjectName(QStringLiteral("renameStudio"));
    const PackViewModel &vm = m_context.viewModel;
    // The copy is taken once, as the sheet opens; the pack may change underneath it.
    m_studio.open(vm.clips(), vm.showPrefix(), vm.zeroPad());

    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto *scaffold = new SheetScaffold(context.text(u"rename.studio"),
                                       context.text(u"rename.studio.help"), m_dismiss);
    outer->addWidget(scaffold);

    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(kPaddingX, 0, kPaddingX, 16);
    column->setSpacing(12);
    column->addWidget(buildTemplateBar());

    m_rows->setModel(m_model);
    m_rows->setItemDelegate(new RenameRowDelegate(m_rows));
    m_heads = new RenameColumnHeads(m_rows, {QString(), context.text(u"table.original"),
                                             context.text(u"rename.stem"),
                                             context.text(u"rename.preview")});
    auto *list = new QVBoxLayout;
    list->setSpacing(6);
    list->addWidget(m_heads);
    list->addWidget(m_rows, 1);
    column->addLayout(list, 1);
    column->addWidget(buildFooter());
    scaffold->setContent(content);
}

QWidget *RenameStudioView::buildTemplateBar()
{
    auto *bar = new QWidget;
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(14);

    m_prefix = new QLineEdit(m_studio.localPrefix());
    m_prefix->setObjectName(QStringLiteral("renamePrefix"));
    m_prefix->setPlaceholderText(m_context.text(u"naming.prefix.placeholder"));
    m_prefix->setFont(AppTheme::font(12));
    m_prefix->setTextMargins(7, 0, 7, 0);
    m_prefix->setFixedSize(240, 34);
    m_prefix->setClearButtonEnabled(false);
    // Every change of the prefix renames every row from the template.
    connect(m_prefix, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_studio.setLocalPrefix(text);
        rebuilt();
    });
    row->addWidget(m_prefix);

    const PanelParts::SwitchLine zeroPad =
        PanelParts::switchLine(m_context.text(u"naming.zeropad"), m_studio.localZeroPad());
    m_zeroPad = zeroPad.toggle;
    m_zeroPad->setObjectName(QStringLiteral("renameZeroPad"));
    connect(m_zeroPad, &QAbstractButton::toggled, this, [this](bool on) {
        m_studio.setLocalZeroPad(on);
        rebuilt();
    });
    row->addWidget(zeroPad.row);
    row->addStretch(1);

    m_reset = new KitButton(KitButton::Kind::ghost, QString(), m_context.text(u"rename.reset"));
    m_reset->setObjectName(QStringLiteral("renameReset"));
    m_reset->setMinimumWidth(120);
    m_reset->setToolTip(m_context.text(u"rename.reset.help"));
    connect(m_reset, &QAbstractButton::clicked, this, [this] {
        m_studio.rebuildAllFromTemplate();
        rebuilt();
    });
    row->addWidget(m_reset);
    return bar;
}

QWidget *RenameStudioView::buildFooter()
{
    auto *footer = new QWidget;
    auto *row = new QHBoxLayout(footer);
    row->setContentsMargins(0, 4, 0, 0);
    row->setSpacing(10);
    m_count = PanelParts::label(
        m_context.strings().format(u"rename.count", {qint64(m_studio.drafts().size())}), 12, 0.45);
    m_count->setObjectName(QStringLiteral("renameCount"));
    row->addWidget(m_count);
    row->addStretch(1);

    m_close = new KitButton(KitButton::Kind::ghost, QString(), m_context.text(u"rename.close"));
    m_close->setObjectName(QStringLiteral("renameClose"));
    m_close->setMinimumWidth(120);
    connect(m_close, &QAbstractButton::clicked, this, [this] { m_dismiss(); });
    row->addWidget(m_close);

    m_apply = new KitButton(KitButton::Kind::primary, QString(), m_context.text(u"rename.apply"));
    m_apply->setObjectName(QStringLiteral("renameApply"));
    m_apply->setMinimumWidth(160);
    connect(m_apply, &QAbstractButton::clicked, this, &RenameStudioView::apply);
    row->addWidget(m_apply);
    return footer;
}

void RenameStudioView::rebuilt()
{
    m_model->refreshAll();
    // A field still open on a stem would otherwise show the hand edit the rebuild dropped.
    if (QLineEdit *editor = m_rows->openEditor()) {
        const QModelIndex current = m_rows->currentIndex();
        if (current.isValid())
            editor->setText(current.data(Qt::EditRole).toString());
    }
}

void RenameStudioView::apply()
{
    PackViewModel &vm = m_context.viewModel;
    // Applied to the pack as it is now: clips that left meanwhile are skipped, new ones keep
    // their names.
    QList<MediaClip> clips = vm.clips();
    QString prefix;
    bool zeroPad = true;
    m_studio.apply(clips, prefix, zeroPad);
    vm.applyNames(clips, prefix, zeroPad);
    m_dismiss();
}
