#pragma once

#include "l10n/applanguage.h"
#include "settingssection.h"
#include "ui/glasscard.h"
#include "ui/uicontext.h"

#include <QAbstractButton>
#include <QList>

#include <array>

class BentoToggleRow;
class QLabel;
class QLineEdit;
class QVBoxLayout;
class SelectChip;

// One page of the settings window: a glass card opening with its section's symbol and title.
// Every control writes the session or the preferences at once and follows them back, so a
// change made elsewhere (the View menu, the sidebar, a loaded project) shows here too.
class SettingsCard : public GlassCard
{
    Q_OBJECT
public:
    SettingsCard(const UiContext &context, SettingsSection section, QWidget *parent = nullptr);

    SettingsSection section() const { return m_section; }

protected:
    QVBoxLayout *body() const { return m_body; }
    QString text(QStringView key) const { return m_context.text(key); }
    // A short line under the header that says what the page is for.
    void addHelpLine(const QString &key);
    // A small caption above a control ("Show prefix", "Preferred width").
    void addCaption(const QString &key);
    // A switch row on its own quiet tile, named by its title key.
    BentoToggleRow *addToggleRow(const QString &titleKey, const QString &subtitleKey, bool on);

    UiContext m_context;

private:
    SettingsSection m_section;
    QVBoxLayout *m_body;
};

// The interface language: one chip per language, named in its own language.
class LanguageSettingsCard final : public SettingsCard
{
    Q_OBJECT
public:
    explicit LanguageSettingsCard(const UiContext &context, QWidget *parent = nullptr);
    SelectChip *chip(AppLanguage language) const;

private:
    void refresh();
    QList<SelectChip *> m_chips; // in language order
};

// The pack's naming defaults: show prefix and zero-padding.
class NamingSettingsCard final : public SettingsCard
{
    Q_OBJECT
public:
    explicit NamingSettingsCard(const UiContext &context, QWidget *parent = nullptr);
    QLineEdit *prefixField() const { return m_prefix; }
    BentoToggleRow *zeroPadRow() const { return m_zeroPad; }

private:
    QLineEdit *m_prefix;
    BentoToggleRow *m_zeroPad;
};

// The risk rules: the two warning switches and the preferred screen width.
class RiskSettingsCard final : public SettingsCard
{
    Q_OBJECT
public:
    static constexpr std::array<qint64, 3> kPreferredWidths{1920, 2560, 3840};

    explicit RiskSettingsCard(const UiContext &context, QWidget *parent = nullptr);
    BentoToggleRow *audioRow() const { return m_audio; }
    BentoToggleRow *hevcRow() const { return m_hevc; }
    const QList<SelectChip *> &widthChips() const { return m_widthChips; }

private:
    void refreshWidth();
    BentoToggleRow *m_audio;
    BentoToggleRow *m_hevc;
    QList<SelectChip *> m_widthChips; // in kPreferredWidths order
};

// One recent export folder: the folder symbol and the path on one line, elided in the middle
// so that both the volume and the last folder stay readable.
class ExportFolderRow final : public QAbstractButton
{
    Q_OBJECT
public:
    ExportFolderRow(const QString &folder, QWidget *parent = nullptr);
    const QString &folder() const { return m_folder; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    QString m_folder;
    bool m_hover = false;
};

// Laptop mode, backups and the recent export folders; a folder row exports the pack there.
class WorkspaceSettingsCard final : public SettingsCard
{
    Q_OBJECT
public:
    explicit WorkspaceSettingsCard(const UiContext &context, QWidget *parent = nullptr);
    BentoToggleRow *compactRow() const { return m_compact; }
    BentoToggleRow *autoBackupRow() const { return m_autoBackup; }
    BentoToggleRow *verifyCopiesRow() const { return m_verifyCopies; }
    // The empty-history text, or null while folders are listed.
    QLabel *emptyHistoryLabel() const { return m_emptyHistory; }
    const QList<ExportFolderRow *> &folderRows() const { return m_folderRows; }

private:
    void rebuildHistory();
    void refreshRowsEnabled();

    BentoToggleRow *m_compact;
    BentoToggleRow *m_autoBackup;
    BentoToggleRow *m_verifyCopies;
    QVBoxLayout *m_history;
    QLabel *m_emptyHistory = nullptr;
    QList<ExportFolderRow *> m_folderRows;
};
