// The Qt file dialogs behind the session's panels, answered the way an operator would.
#include "ui/qtpanels.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace {

// Runs `answer` on the file dialog as soon as it is shown, from inside its own event loop.
void whenDialogOpens(std::function<void(QFileDialog &)> answer)
{
    auto *timer = new QTimer;
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, [timer, answer] {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            auto *dialog = qobject_cast<QFileDialog *>(widget);
            if (dialog && dialog->isVisible()) {
                timer->stop();
                timer->deleteLater();
                answer(*dialog);
                return;
            }
        }
    });
    timer->start();
}

void touch(const QString &path)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
}

} // namespace

TEST(QtPanels, OpenMediaTakesFoldersAndFilesWithTheSessionsTexts)
{
    QTemporaryDir root;
    ASSERT_TRUE(QDir(root.path()).mkpath(QStringLiteral("show")));
    touch(root.filePath(QStringLiteral("intro.mov")));
    QString title, accept;
    QStringList filters;
    whenDialogOpens([&](QFileDialog &dialog) {
        title = dialog.windowTitle();
        accept = dialog.labelText(QFileDialog::Accept);
        filters = dialog.nameFilters();
        dialog.setDirectory(root.path());
        dialog.selectFile(QStringLiteral("\"show\" \"intro.mov\""));
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    const QList<QUrl> chosen =
        QtPanels().openMedia(QStringLiteral("Choose a show folder"), QStringLiteral("Add"));
    EXPECT_EQ(title, QStringLiteral("Choose a show folder"));
    EXPECT_EQ(accept, QStringLiteral("Add"));
    ASSERT_EQ(filters.size(), 1);
    EXPECT_TRUE(filters[0].startsWith(QStringLiteral("Add (")));
    for (const char *pattern : {"*.mov", "*.mp4", "*.png", "*.heic", "*.webm"})
        EXPECT_TRUE(filters[0].split(u' ').contains(QLatin1String(pattern))) << pattern;
    EXPECT_EQ(chosen,
              (QList<QUrl>{QUrl::fromLocalFile(root.filePath(QStringLiteral("show"))),
                           QUrl::fromLocalFile(root.filePath(QStringLiteral("intro.mov")))}));
}

TEST(QtPanels, CancelledPanelsGiveNothing)
{
    whenDialogOpens([](QFileDialog &dialog) { dialog.reject(); });
    EXPECT_TRUE(QtPanels().openMedia(QStringLiteral("m"), QStringLiteral("p")).isEmpty());
    whenDialogOpens([](QFileDialog &dialog) { dialog.reject(); });
    EXPECT_FALSE(QtPanels().chooseFolder(QStringLiteral("m"), QStringLiteral("p"), std::nullopt));
    whenDialogOpens([](QFileDialog &dialog) { dialog.reject(); });
    EXPECT_FALSE(QtPanels().chooseOpenFile(QStringLiteral("m"), QStringLiteral("p")));
}

TEST(QtPanels, SaveProposesTheNameInTheStartFolder)
{
    QTemporaryDir root;
    QString directory, typed;
    QFileDialog::AcceptMode mode = QFileDialog::AcceptOpen;
    whenDialogOpens([&](QFileDialog &dialog) {
        directory = dialog.directory().absolutePath();
        mode = dialog.acceptMode();
        typed = dialog.selectedFiles().value(0);
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    const std::optional<QString> saved =
        QtPanels().chooseSaveFile(QStringLiteral("Save project"), QStringLiteral("Save"),
                                  QStringLiteral("Show.cuebox.json"), root.path());
    EXPECT_EQ(directory, QDir(root.path()).absolutePath());
    EXPECT_EQ(mode, QFileDialog::AcceptSave);
    EXPECT_EQ(typed, root.filePath(QStringLiteral("Show.cuebox.json")));
    EXPECT_EQ(saved, root.filePath(QStringLiteral("Show.cuebox.json")));
}

TEST(QtPanels, ChooseFolderOpensAtTheStartFolderAndReturnsTheChoice)
{
    QTemporaryDir root;
    ASSERT_TRUE(QDir(root.path()).mkpath(QStringLiteral("packs")));
    QString directory;
    whenDialogOpens([&](QFileDialog &dialog) {
        directory = dialog.directory().absolutePath();
        dialog.selectFile(root.filePath(QStringLiteral("packs")));
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    const std::optional<QString> folder =
        QtPanels().chooseFolder(QStringLiteral("Export to"), QStringLiteral("Choose"), root.path());
    EXPECT_EQ(directory, QDir(root.path()).absolutePath());
    EXPECT_EQ(folder, root.filePath(QStringLiteral("packs")));
}
