#pragma once

#include "media/convert/convertformat.h"
#include "ui/uicontext.h"

#include <QList>
#include <QSize>
#include <QWidget>

#include <functional>

class BentoToggleRow;
class ConvertProgressBar;
class Desktop;
class FormatChip;
class KitButton;
class QLabel;

// The convert studio sheet. It keeps nothing of its own: every chip and switch writes straight
// into the session (or the preferences) and shows their current value, so the choices hold for
// the menu's batch command too. "Convert pack…" hands over to the session's conversion, whose
// progress shows here while it runs, with a Cancel button.
class ConvertStudioView final : public QWidget
{
    Q_OBJECT
public:
    static constexpr QSize kSheetSize{540, 620};

    // `dismiss` closes the sheet that holds this view; `alleyHome` is the home folder under
    // which Resolume Alley is looked for.
    ConvertStudioView(const UiContext &context, Desktop &desktop, std::function<void()> dismiss,
                      const QString &alleyHome, QWidget *parent = nullptr);

    const QList<FormatChip *> &formatChips() const { return m_chips; } // kAllConvertFormats order
    QLabel *alphaLossText() const { return m_alphaLoss; } // hidden when no clip loses alpha
    BentoToggleRow *stripAudioRow() const { return m_stripAudio; }
    BentoToggleRow *evenDimensionsRow() const { return m_evenDimensions; }
    BentoToggleRow *onlyProblemsRow() const { return m_onlyProblems; }
    BentoToggleRow *autoBackupRow() const { return m_autoBackup; }
    KitButton *alleyButton() const { return m_alley; }
    QLabel *progressText() const { return m_progressText; }
    ConvertProgressBar *progressBar() const { return m_progressBar; }
    KitButton *cancelButton() const { return m_cancel; }
    KitButton *closeButton() const { return m_close; }
    KitButton *convertButton() const { return m_convert; }

private:
    QWidget *buildFormatCard();
    QWidget *buildOptionsCard();
    QWidget *buildDxvCard(const QString &alleyHome);
    QWidget *buildProgress();
    QWidget *buildFooter();
    void refreshChoices();
    void refreshProgress();

    UiContext m_context;
    Desktop &m_desktop;
    std::function<void()> m_dismiss;
    QList<FormatChip *> m_chips;
    QLabel *m_alphaLoss = nullptr;
    BentoToggleRow *m_stripAudio = nullptr;
    BentoToggleRow *m_evenDimensions = nullptr;
    BentoToggleRow *m_onlyProblems = nullptr;
    BentoToggleRow *m_autoBackup = nullptr;
    KitButton *m_alley = nullptr;
    QWidget *m_progress = nullptr;
    QLabel *m_progressText = nullptr;
    ConvertProgressBar *m_progressBar = nullptr;
    KitButton *m_cancel = nullptr;
    KitButton *m_close = nullptr;
    KitButton *m_convert = nullptr;
    // Once a run has been watched here, its outcome line ("Converted 3 files", "Cancelled")
    // stays in view until the sheet closes.
    bool m_watchedRun = false;
};
