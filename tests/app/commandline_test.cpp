// The built cuebox binary, run as a technician would over SSH: no display at all.
#include "support/commalocale.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <csignal>
#include <sys/types.h>

#include <gtest/gtest.h>

namespace {

struct Outcome {
    int exitCode = -1;
    QString out;
    QString err;
};

Outcome runBinary(const QString &binary, const QStringList &args, const QStringList &settings = {})
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const QString &setting : settings)
        env.insert(setting.section(u'=', 0, 0), setting.section(u'=', 1));
    env.remove("DISPLAY");
    env.remove("WAYLAND_DISPLAY");
    env.remove("QT_QPA_PLATFORM");
    process.setProcessEnvironment(env);
    process.start(binary, args);
    process.waitForFinished(120000);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

Outcome cuebox(const QStringList &args, const QStringList &settings = {})
{
    return runBinary(QStringLiteral(CUEBOX_BINARY), args, settings);
}

const QString kShow = QStringLiteral(CUEBOX_CLI_MEDIA "/show");

} // namespace

TEST(CommandLine, CheckPrintsRowsChecklistAndExitsRedWhenARedClipIsThere)
{
    const Outcome run = cuebox({"check", kShow});
    EXPECT_EQ(run.exitCode, 1) << run.err.toStdString();
    const QStringList lines = run.out.split(u'\n');
    ASSERT_GE(lines.size(), 6);
    EXPECT_TRUE(lines[1].startsWith("1    01_band_intro")) << lines[1].toStdString();
    EXPECT_TRUE(lines[1].contains("This clip has audio."));
    EXPECT_TRUE(lines[3].contains("02_notes") || lines[2].contains("02_logo"));
    EXPECT_TRUE(run.out.contains("Read error: Invalid data found when processing input"));
    EXPECT_TRUE(run.out.contains("Pre-show checklist  1 / 5 ready"));
    // The size's units are the model's file-size test's.
    EXPECT_TRUE(run.out.contains("Total 4 · OK 2 · Warn 1 · Fail 1 · Size "))
        << run.out.toStdString();
    EXPECT_FALSE(run.out.contains("\x1b[")); // plain when piped

    const Outcome clean = cuebox({"check", "--no-audio-warning", kShow + "/Opening.mov"});
    EXPECT_EQ(clean.exitCode, 0);
    EXPECT_TRUE(clean.out.contains("01_opening"));
}

TEST(CommandLine, AnInstallationWithoutItsModulesSaysWhichIsMissing)
{
    QTemporaryDir dir;
    const QString alone = dir.filePath("cuebox");
    ASSERT_TRUE(QFile::copy(QStringLiteral(CUEBOX_BINARY), alone));

    const Outcome movie = runBinary(alone, {"check", kShow + "/Opening.mov"});
    EXPECT_EQ(movie.err, "cuebox: media files cannot be read or converted: cuebox-media.so is "
                         "missing from this installation\n");
    EXPECT_TRUE(movie.out.contains("01_opening")) << movie.out.toStdString(); // reported, not lost
    EXPECT_TRUE(movie.out.contains("Read error: cuebox-media.so is missing from this installation"))
        << movie.out.toStdString();
    const Outcome window = runBinary(alone, {});
    EXPECT_EQ(window.exitCode, 1);
    EXPECT_EQ(window.err, "cuebox: cannot open the window: cuebox-window.so is missing from "
                          "this installation\n");

    const QString media =
        QFileInfo(QStringLiteral(CUEBOX_BINARY)).dir().filePath("cuebox-media.so");
    ASSERT_TRUE(QFile::copy(media, dir.filePath("cuebox-media.so")));
    const Outcome still = runBinary(alone, {"check", kShow + "/logo.png"});
    EXPECT_EQ(still.err, "cuebox: stills cannot be read or written: cuebox-images.so is missing "
                         "from this installation\n");
    EXPECT_TRUE(still.out.contains("01_logo")) << still.out.toStdString();
}

TEST(CommandLine, UsageErrorsNameTheBadArgument)
{
    const Outcome bad = cuebox({"check", "--profile", "circle", kShow});
    EXPECT_EQ(bad.exitCode, 2);
    EXPECT_TRUE(bad.err.contains("'circle'"));
    EXPECT_EQ(cuebox({"check"}).exitCode, 2);
    EXPECT_EQ(cuebox({"export", kShow}).exitCode, 2); // needs --to
    const Outcome missing = cuebox({"check", kShow + "/nope"});
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_TRUE(missing.err.contains("nope"));
    EXPECT_EQ(cuebox({"frobnicate"}).exitCode, 2);
    const Outcome help = cuebox({"convert", "--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.out.contains("--only-problems"));
    EXPECT_TRUE(help.out.contains(QString::fromUtf8("Number cues 1, 2… instead of 01, 02….")));
}

TEST(CommandLine, JsonReportAndExportWithAPrefix)
{
    const Outcome check = cuebox({"check", "--json", "--prefix", "Gig", kShow});
    EXPECT_EQ(check.exitCode, 1);
    const QJsonObject document = QJsonDocument::fromJson(check.out.toUtf8()).object();
    const QJsonArray clips = document.value("clips").toArray();
    ASSERT_EQ(clips.size(), 4);
    EXPECT_EQ(document.value("report").toObject().value("failCount").toInt(), 1);
    EXPECT_EQ(document.value("status").toString(), "Ready: 4 clips");
    const QJsonObject band = clips[0].toObject();
    EXPECT_EQ(band.value("arenaName").toString(), "01_gig_band_intro");
    EXPECT_EQ(band.value("issues").toArray()[0].toObject().value("message").toString(),
              "This clip has audio. Better convert it to an Arena-ready format without audio.");

    QTemporaryDir out;
    const Outcome exported = cuebox({"export", "--prefix", "Gig", kShow, "--to", out.path()});
    ASSERT_EQ(exported.exitCode, 0) << exported.err.toStdString();
    const QString pack = exported.out.trimmed();
    EXPECT_TRUE(QFile::exists(pack + "/manifest.json"));
    EXPECT_TRUE(QFile::exists(pack + "/media/01_gig_band_intro.MP4"));
}

// Which findings a stripped clip keeps is the session's; here the verb strips, then exports.
TEST(CommandLine, StripAudioThenExportsThePack)
{
    QTemporaryDir out;
    const Outcome run = cuebox({"strip-audio", kShow + "/sub", "--to", out.path()});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.err.contains("Converted 1 files"));
    EXPECT_TRUE(QFile::exists(out.path() + "/" + QFileInfo(run.out.trimmed()).fileName() +
                              "/media/01_band_intro.mov"));
}

TEST(CommandLine, ConvertOnlyProblemsWritesArenaReadyAndBackup)
{
    QTemporaryDir out;
    const Outcome run = cuebox({"convert", kShow + "/sub", kShow + "/Opening.mov", "--to",
                                out.path(), "--only-problems", "--format", "h264"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QString ready = run.out.trimmed();
    EXPECT_TRUE(QFileInfo(ready).fileName().startsWith("ArenaReady_"));
    EXPECT_EQ(QDir(ready).entryList(QDir::Files), QStringList{"01_band_intro.mov"});
    const QStringList folders = QDir(out.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    EXPECT_TRUE(folders.size() == 2 && folders[0].startsWith("ArenaBackup_"))
        << folders.join(u' ').toStdString();
}

TEST(CommandLine, InterruptCancelsCleanlyWithStatus130)
{
    QTemporaryDir dir;
    const QString source = dir.filePath("long/long.mov");
    QDir().mkpath(dir.filePath("long"));
    ASSERT_EQ(QProcess::execute("ffmpeg",
                                {"-v", "error", "-y", "-f", "lavfi", "-i",
                                 "testsrc=size=1920x1080:rate=25:duration=10", "-c:v", "libx264",
                                 "-preset", "ultrafast", "-pix_fmt", "yuv420p", source}),
              0);
    QDir().mkpath(dir.filePath("out"));
    QProcess process;
    process.start(QStringLiteral(CUEBOX_BINARY),
                  {"convert", dir.filePath("long"), "--to", dir.filePath("out"), "--no-backup"});
    ASSERT_TRUE(process.waitForStarted());
    QThread::msleep(1500); // well into the conversion
    ::kill(static_cast<pid_t>(process.processId()), SIGINT);
    ASSERT_TRUE(process.waitForFinished(10000));
    EXPECT_EQ(process.exitCode(), 130);
    // The ArenaReady folder exists but holds no file, not even a hidden partial one.
    const QStringList folders =
        QDir(dir.filePath("out")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    ASSERT_EQ(folders.size(), 1);
    EXPECT_TRUE(QDir(dir.filePath("out/" + folders[0]))
                    .entryList(QDir::Files | QDir::Hidden | QDir::System)
                    .isEmpty());
    EXPECT_TRUE(QFile::exists(source));
}

TEST(CommandLine, VerbsEndingInAnErrorStatusPrintItAndFail)
{
    QTemporaryDir dir;
    QDir().mkpath(dir.filePath("empty"));
    QFile(dir.filePath("empty/notes.txt")).open(QIODevice::WriteOnly);
    const QString empty = dir.filePath("empty");
    for (const QStringList &args : {QStringList{"export", empty, "--to", dir.path()},
                                    QStringList{"strip-audio", empty, "--to", dir.path()},
                                    QStringList{"convert", empty, "--to", dir.path()},
                                    QStringList{"check", "--json", empty}}) {
        SCOPED_TRACE(args.join(u' ').toStdString());
        const Outcome run = cuebox(args);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(run.out, "");
        EXPECT_TRUE(run.err.endsWith("cuebox: No media files found\n")) << run.err.toStdString();
    }
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList{"empty"});
}

TEST(CommandLine, OptionsWinOverTheProjectWhichIsSavedAfterTheVerb)
{
    QTemporaryDir dir;
    const QString project = dir.filePath("show.cuebox.json");
    ASSERT_EQ(
        cuebox({"check", kShow + "/sub", "--prefix", "Gig", "--save-project", project}).exitCode,
        0);
    const Outcome renamed = cuebox({"check", "--json", "--project", project, "--prefix", "Late"});
    const QJsonObject clip =
        QJsonDocument::fromJson(renamed.out.toUtf8()).object()["clips"].toArray()[0].toObject();
    EXPECT_EQ(clip["arenaName"].toString(), "01_late_band_intro");

    const QString converted = dir.filePath("converted.cuebox.json");
    const Outcome run = cuebox({"convert", "--project", project, "--format", "h264", "--no-backup",
                                "--to", dir.path(), "--save-project", converted});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QString movie = run.out.trimmed() + "/01_gig_band_intro.mov";
    QFile saved(converted);
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
    EXPECT_EQ(QJsonDocument::fromJson(saved.readAll())["clips"][0]["path"].toString(), movie);
    const Outcome probe = cuebox({"check", "--json", movie});
    EXPECT_EQ(QJsonDocument::fromJson(probe.out.toUtf8())["clips"][0]["videoCodec"].toString(),
              "avc1");
}

TEST(CommandLine, NumbersKeepTheDotUnderACommaLocale)
{
    QTemporaryDir dir;
    const QString locale = makeCommaLocale(dir.path());
    if (locale.isEmpty())
        GTEST_SKIP() << "no de_DE locale could be made (localedef, package locales)";
    const QString still = dir.filePath("slate.png");
    ASSERT_EQ(QProcess::execute("ffmpeg", {"-v", "error", "-f", "lavfi", "-i", "color=size=640x480",
                                           "-frames:v", "1", still}),
              0);
    const QStringList german{"LANG=" + locale, "LC_ALL=" + locale, "LOCPATH=" + dir.path()};
    const Outcome text = cuebox({"check", kShow + "/Opening.mov", still}, german);
    EXPECT_TRUE(text.out.contains("Unusual aspect 1.33.")) << text.out.toStdString();
    EXPECT_TRUE(text.out.contains(" 25.00 ")) << text.out.toStdString(); // frame rate
    const Outcome json = cuebox({"check", "--json", still}, german);
    EXPECT_TRUE(json.out.contains("\"doubleValue\" : 1.3333333333333333"))
        << json.out.toStdString();
    EXPECT_TRUE(json.out.contains("\"message\" : \"Unusual aspect 1.33."))
        << json.out.toStdString();
}
