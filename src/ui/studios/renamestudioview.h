#pragma once

#include "model/renamestudio.h"
#include "ui/uicontext.h"

#include <QSize>
#include <QWidget>

#include <functional>

class KitButton;
class QLabel;
class QLineEdit;
class RenameColumnHeads;
class RenameDraftModel;
class RenameRowsView;
class ToggleSwitch;

// The rename studio sheet: a private copy of every clip's name, the prefix and the padding
// switch, edited row by row and written to the pack only by "Apply names". Closing the sheet
// any other way drops the copy.
class RenameStudioView final : public QWidget
{
    Q_OBJECT
public:
    static constexpr QSize kSheetSize{860, 560};

    // `dismiss` closes the sheet that holds this view.
    RenameStudioView(const UiContext &context, std::function<void()> dismiss,
                     QWidget *parent = nullptr);

    const RenameStudio &studio() const { return m_studio; }
    RenameDraftModel *model() const { return m_model; }
    RenameRowsView *rows() const { return m_rows; }
    RenameColumnHeads *heads() const { return m_heads; }
    QLineEdit *prefixField() const { return m_prefix; }
    ToggleSwitch *zeroPadSwitch() const { return m_zeroPad; }
    KitButton *resetButton() const { return m_reset; }
    KitButton *closeButton() const { return m_close; }
    KitButton *applyButton() const { return m_apply; }
    QLabel *countLabel() const { return m_count; }

private:
    QWidget *buildTemplateBar();
    QWidget *buildFooter();
    void rebuilt();
    void apply();

    UiContext m_context;
    std::function<void()> m_dismiss;
    RenameStudio m_studio;
    RenameDraftModel *m_model;
    RenameRowsView *m_rows;
    RenameColumnHeads *m_heads = nullptr;
    QLineEdit *m_prefix = nullptr;
    ToggleSwitch *m_zeroPad = nullptr;
    KitButton *m_reset = nullptr;
    KitButton *m_close = nullptr;
    KitButton *m_apply = nullptr;
    QLabel *m_count = nullptr;
};
