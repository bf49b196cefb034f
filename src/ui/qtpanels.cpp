#include "qtpanels.h"

#include "model/mediaclip.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

// Qt's file dialog chooses files or folders, not both. This one accepts whatever is selected
// when the button is pressed, so a show folder and loose clips can be added in one go; a
// double click on a folder still opens it.
class MediaDialog final : public QFileDialog
{
public:
    using QFileDialog::QFileDialog;

    void accept() override
    {
        const QStringList chosen = selectedFiles();
        const bool allExist =
            !chosen.isEmpty() && std::all_of(chosen.begin(), chosen.end(),
                                             [](const QString &p) { return QFileInfo::exists(p); });
        if (allExist)
            QDialog::accept();
        else
            QFileDialog::accept();
    }
};

void prepare(QFileDialog &dialog, const QString &message, const QString &prompt)
{
    // Qt's own dialog: the portal's native one drops the prompt and ignores the dark palette.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setWindowTitle(message);
    dialog.setLabelText(QFileDialog::Accept, prompt);
    dialog.setWindowModality(Qt::WindowModal);
}

QString homeFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::HomeLocation);
}

} // namespace

QString QtPanels::mediaNameFilter(const QString &label)
{
    QStringList patterns;
    for (const QString &ext : MediaClip::videoExtensions())
        patterns.append(QStringLiteral("*.") + ext);
    for (const QString &ext : MediaClip::imageExtensions())
        patterns.append(QStringLiteral("*.") + ext);
    patterns.sort();
    return QStringLiteral("%1 (%2)").arg(label, patterns.join(u' '));
}

QList<QUrl> QtPanels::openMedia(const QString &message, const QString &prompt)
{
    MediaDialog dialog(m_parent);
    prepare(dialog, message, prompt);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setNameFilter(mediaNameFilter(prompt));
    dialog.setDirectory(homeFolder());
    if (dialog.exec() != QDialog::Accepted)
        return {};
    return dialog.selectedUrls();
}

std::optional<QString> QtPanels::chooseFolder(const QString &message, const QString &prompt,
                                              const std::optional<QString> &startFolder)
{
    QFileDialog dialog(m_parent);
    prepare(dialog, message, prompt);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setDirectory(startFolder.value_or(homeFolder()));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().front();
}

std::optional<QString> QtPanels::chooseSaveFile(const QString &message, const QString &prompt,
                                                const QString &proposedName,
                                                const std::optional<QString> &startFolder)
{
    QFileDialog dialog(m_parent);
    prepare(dialog, message, prompt);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilter(QStringLiteral("Cuebox (*.cuebox.json *.json)"));
    dialog.setDirectory(startFolder.value_or(homeFolder()));
    dialog.selectFile(proposedName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().front();
}

std::optional<QString> QtPanels::chooseOpenFile(const QString &message, const QString &prompt)
{
    QFileDialog dialog(m_parent);
    prepare(dialog, message, prompt);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilter(QStringLiteral("Cuebox (*.cuebox.json *.json)"));
    dialog.setDirectory(homeFolder());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().front();
}
