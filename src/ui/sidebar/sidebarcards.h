#pragma once

#include "sidebarcard.h"

#include "model/mediaclip.h"
#include "session/preshowchecklist.h"
#include "ui/kitbuttons.h"

#include <QList>
#include <QPointer>

#include <optional>

class BentoMetric;
class ClipPreviewView;
class QGridLayout;
class QLabel;
class QLineEdit;
class QVBoxLayout;
class SegmentBar;
class SelectChip;
class ToggleSwitch;

// The cards of the report sidebar, top to bottom. Each only reads the session and calls its
// operations; none keeps state of the pack.

class ChecklistCard final : public SidebarCard
{
    Q_OBJECT
public:
    explicit ChecklistCard(const UiContext &context, QWidget *parent = nullptr);
    void refresh() override;

private:
    QLabel *m_progress;
    QLabel *m_seal;
    QVBoxLayout *m_rows;
    std::optional<PreShowChecklist> m_shown; // rows are rebuilt only when this changes
};

class ProfileCard final : public SidebarCard
{
    Q_OBJECT
public:
    explicit ProfileCard(const UiContext &context, QWidget *parent = nullptr);
    void refresh() override;
    const QList<SelectChip *> &rows() const { return m_rows; }

private:
    QList<SelectChip *> m_rows; // in the order of kAllScreenProfiles
};

class HealthCard final : public SidebarCard
{
    Q_OBJECT
public:
    explicit HealthCard(const UiContext &context, QWidget *parent = nullptr);
    void refresh() override;

private:
    BentoMetric *m_total;
    BentoMetric *m_ok;
    BentoMetric *m_warn;
    BentoMetric *m_fail;
    SegmentBar *m_bar;
    QLabel *m_size;
};

class NamingCard final : public SidebarCard
{
    Q_OBJECT
public:
    explicit NamingCard(const UiContext &context, QWidget *parent = nullptr);
    void refresh() override;

    QLineEdit *prefixField() const { return m_prefix; }
    const QList<SelectChip *> &chips() const { return m_chips; }
    ToggleSwitch *zeroPadSwitch() const { return m_zeroPad; }
    KitButton *editNamesButton() const { return m_editNames; }
    KitButton *convertButton() const { return m_convert; }
    KitButton *exportButton() const { return m_export; }

private:
    QLineEdit *m_prefix;
    QList<SelectChip *> m_chips; // in the order of kAllPrefixTemplates
    ToggleSwitch *m_zeroPad;
    KitButton *m_editNames;
    KitButton *m_convert;
    KitButton *m_export;
};

class WatchCard final : public SidebarCard
{
    Q_OBJECT
public:
    explicit WatchCard(const UiContext &context, QWidget *parent = nullptr);
    void refresh() override;
    KitButton *stopButton() const { return m_stop; }

private:
    QLabel *m_folder;
    QLabel *m_hint;
    KitButton *m_stop;
};

class BatchCard final : public SidebarCard
{
    Q_OBJECT
public:
    explicit BatchCard(const UiContext &context, QWidget *parent = nullptr);
    void refresh() override;

    KitButton *stripAudioButton() const { return m_stripAudio; }
    KitButton *convertProblemsButton() const { return m_convertProblems; }
    KitButton *removeDuplicatesButton() const { return m_removeDuplicates; }

private:
    KitButton *m_stripAudio;
    KitButton *m_convertProblems;
    KitButton *m_removeDuplicates;
};

// Card 8: the selected clip's details, or the empty-selection card. Rebuilt whenever the
// selection or the selected clip changes; its remove-audio button only follows isConverting.
class ClipCard final : public SidebarCard
{
    Q_OBJECT
public:
    explicit ClipCard(const UiContext &context, QWidget *parent = nullptr);
    void refresh() override;

    bool showsClip() const { return m_shown.has_value(); }
    ClipPreviewView *preview() const { return m_preview; }
    // Null unless the shown clip has audio.
    KitButton *removeAudioButton() const
    {
        return m_shown && m_shown->hasAudio ? m_removeAudio.data() : nullptr;
    }

private:
    void rebuild();
    void buildDetails();
    void fillDetails(const MediaClip &clip, const std::optional<MediaClip> &before);
    void buildEmpty();

    ClipPreviewView *m_preview;
    QVBoxLayout *m_content;
    std::optional<MediaClip> m_shown;
    bool m_shownHintDismissed = false;
    // The details' widgets, built once and refilled for each clip: a click on another row
    // must not cost a new set of widgets and a new layout.
    bool m_detailsBuilt = false;
    QPointer<QLabel> m_name;
    QPointer<BentoMetric> m_status;
    QPointer<BentoMetric> m_resolution;
    QPointer<BentoMetric> m_frameRate;
    QPointer<QLabel> m_transparent; // shown for clips with an alpha channel
    QPointer<QWidget> m_findings;
    // One line per finding (or the clean line), kept and refilled: new labels cost more than
    // a click can spend.
    struct FindingLine {
        QWidget *row;
        QLabel *icon;
        QLabel *text;
    };
    QList<FindingLine> m_findingLines;
    QPointer<KitButton> m_removeAudio;

    FindingLine &findingLine(qsizetype index);
};
