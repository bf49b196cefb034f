// `cuebox check` over a show folder holding a pipe named like a movie: the run ends at once
// with a read error for it, instead of waiting for a writer that never comes.
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <sys/stat.h>

#include <gtest/gtest.h>

TEST(CommandLineSpecialFiles, CheckOfAFolderWithAPipeEndsWithinASecond)
{
    QTemporaryDir dir;
    ASSERT_EQ(::mkfifo(QFile::encodeName(dir.filePath("x.mov")).constData(), 0600), 0);
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    QElapsedTimer timer;
    timer.start();
    process.start(QStringLiteral(CUEBOX_BINARY), {QStringLiteral("check"), dir.path()});
    const bool ended = process.waitForFinished(5000);
    const qint64 elapsedMs = timer.elapsed();
    if (!ended)
        process.kill();
    ASSERT_TRUE(ended);
    EXPECT_LT(elapsedMs, 1000);
    const QString out = QString::fromUtf8(process.readAll());
    EXPECT_TRUE(out.contains(QStringLiteral("Read error: Not a regular file")))
        << out.toStdString();
    EXPECT_EQ(process.exitCode(), 1); // a red clip
}
