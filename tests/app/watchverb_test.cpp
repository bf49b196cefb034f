// `cuebox watch` as a script on an intake machine runs it: JSON lines on a pipe, Ctrl-C to end.
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

#include <gtest/gtest.h>

#include "session/sessionfixture.h" // waitUntil

namespace {

const QString kMedia = QStringLiteral(CUEBOX_WATCH_MEDIA);

void slowWrite(QProcess &writer, const QString &movie, const QString &to)
{
    writer.start(QStringLiteral(CUEBOX_SLOW_WRITE), {kMedia + u'/' + movie, to, "20"});
    ASSERT_TRUE(writer.waitForStarted());
}

} // namespace

TEST(WatchVerb, OneAddedLineForASlowCopyAndOneChangedLineWhenItIsReplaced)
{
    QTemporaryDir dir;
    QProcess cuebox;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove("DISPLAY");
    cuebox.setProcessEnvironment(env);
    cuebox.start(QStringLiteral(CUEBOX_BINARY), {"watch", "--json", dir.path()});
    QString err;
    QStringList lines;
    QObject::connect(&cuebox, &QProcess::readyReadStandardError,
                     [&] { err += QString::fromUtf8(cuebox.readAllStandardError()); });
    QObject::connect(&cuebox, &QProcess::readyReadStandardOutput, [&] {
        while (cuebox.canReadLine())
            lines.append(QString::fromUtf8(cuebox.readLine()).trimmed());
    });
    // The folder's first scan ends with the status it began with: only a file that comes after
    // it has to settle first.
    ASSERT_TRUE(waitUntil([&] { return err.count("Watching: ") == 2; })) << err.toStdString();

    QProcess writer;
    slowWrite(writer, "medium.mov", dir.filePath("clip.mov"));
    ASSERT_TRUE(waitUntil([&] { return !lines.isEmpty(); }, 30000)) << err.toStdString();
    EXPECT_EQ(writer.state(), QProcess::NotRunning); // the line came after the last byte
    EXPECT_TRUE(err.contains("Waiting for 1 files to finish copying…"));
    const QJsonObject added = QJsonDocument::fromJson(lines[0].toUtf8()).object();
    EXPECT_EQ(added["event"], "added");
    EXPECT_EQ(added["arenaName"], "01_clip");
    EXPECT_EQ(added["videoCodec"], "2vuy");

    slowWrite(writer, "one.mov", dir.filePath("clip.mov"));
    ASSERT_TRUE(waitUntil([&] { return lines.size() == 2; }, 30000)) << err.toStdString();
    const QJsonObject changed = QJsonDocument::fromJson(lines[1].toUtf8()).object();
    EXPECT_EQ(changed["event"], "changed");
    EXPECT_EQ(changed["cue"], 1);
    EXPECT_EQ(changed["videoCodec"], "avc1");

    ::kill(pid_t(cuebox.processId()), SIGINT);
    ASSERT_TRUE(cuebox.waitForFinished(15000));
    EXPECT_EQ(cuebox.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(cuebox.exitCode(), 130);
    EXPECT_EQ(lines.size(), 2);
}
