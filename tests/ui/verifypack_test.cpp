// "Verify pack…" in the File menu, and the workspace switch that turns read-back off.
#include "output/filecopy.h"
#include "ui/kitwidgets.h"
#include "ui/settings/settingscards.h"
#include "uifixture.h"

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

using Command = AppCommands::Command;

TEST_F(WindowTest, VerifyPackFromTheFileMenuAndTheVerifyCopiesSwitch)
{
    // A copier whose copies change on their way to the device, as a failing stick's would.
    m_copyFile = [](const QString &from, const QString &to, std::stop_token stop,
                    const std::function<void(qint64)> &bytes) -> Result<QByteArray> {
        Result<QByteArray> digest = copyFileHashing(from, to, stop, bytes);
        QFile copy(to);
        copy.open(QIODevice::ReadWrite);
        copy.write("X");
        return digest;
    };
    EXPECT_EQ(textsOf(window().menuBar()->actions().front()->menu()->actions()).mid(0, 5),
              QStringList({"Open Folder…", "Open Project…", "Save Project…", "", "Verify pack…"}));
    addClips({"a.mov"});
    QDir().mkpath(path("out"));
    QCoro::waitFor(vm().exportPackInto(path("out")));
    EXPECT_EQ(vm().statusText(), "The copy differs from its source: " +
                                     path("out/Cuebox_2026-11-16T21-42-48Z/media/01_a.mov"));

    WorkspaceSettingsCard workspace(context());
    EXPECT_EQ(workspace.verifyCopiesRow()->toggle()->isChecked(), true);
    workspace.verifyCopiesRow()->toggle()->click();
    EXPECT_FALSE(m_preferences.verifyCopies());
    EXPECT_FALSE(AppPreferences(m_settings).verifyCopies()); // stored at once
    QCoro::waitFor(vm().exportPackInto(path("out")));
    ASSERT_EQ(vm().status().kind(), PackStatus::Kind::saved);

    // The pack on disk holds the changed copy: verifying it from the menu finds it.
    const QString pack = path("out/Cuebox_2026-11-16T21-42-48Z");
    m_panels.folders.push_back(pack);
    command(Command::verifyPack)->trigger();
    ASSERT_TRUE(waitUntil([this] { return !vm().isVerifying(); }));
    EXPECT_EQ(m_panels.lastStartFolder, pack); // the chooser opens at the last export
    EXPECT_EQ(vm().statusText(),
              "Verification failed (1 problems): media/01_a.mov differs from its checksum");
}
