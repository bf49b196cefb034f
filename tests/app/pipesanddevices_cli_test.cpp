// `cuebox check` over a show folder holding a pipe named like a movie: the run ends at once
// with a read error for it, instead of waiting for a writer that never comes.
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <sys/stat.h>

#include <gtest/gtest.h>

namespace {

struct Check {
    bool ended = false;
    qint64 elapsedMs = 0;
    QString out;
};

Check check(const QString &folder)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    QElapsedTimer timer;
    timer.start();
    process.start(QStringLiteral(CUEBOX_BINARY), {QStringLiteral("check"), folder});
    Check result{process.waitForFinished(10'000), timer.elapsed(), {}};
    if (!result.ended)
        process.kill();
    result.out = QString::fromUtf8(process.readAll());
    return result;
}

} // namespace

TEST(CommandLineSpecialFiles, CheckOfAFolderWithAPipeEndsWithinASecond)
{
    QTemporaryDir plain;
    QFile(plain.filePath("x.mov")).open(QIODevice::WriteOnly); // an empty file: a read error too
    QTemporaryDir piped;
    ASSERT_EQ(::mkfifo(QFile::encodeName(piped.filePath("x.mov")).constData(), 0600), 0);
    const Check baseline = check(plain.path());
    const Check run = check(piped.path());
    ASSERT_TRUE(run.ended);
    // Measured against the same run over a plain file, so a busy machine's start-up time does
    // not count: the pipe itself may cost no more than a second.
    EXPECT_LT(run.elapsedMs, baseline.elapsedMs + 1000);
    EXPECT_TRUE(run.out.contains(QStringLiteral("Read error: Not a regular file")))
        << run.out.toStdString();
}
