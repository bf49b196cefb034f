// Files that are not what their names promise. Each ends with exactly the finding it deserves
// and the probe returns promptly: never a crash, never a hang, and the file stays as it was.
#include "mediafixtures.h"
#include "support/clips.h"
#include "support/files.h"

#include "media/ffmpeg/ffmpegprobe.h"
#include "media/mediainspector.h"

#include <QFile>
#include <QTemporaryDir>

#include <unistd.h>

namespace {

using MediaFixtures::path;
using MediaFixtures::Snapshot;

MediaClip inspect(const QString &file, std::stop_token stop = {})
{
    return MediaInspector::inspect(file, InspectionRules{}, FfmpegProbe{}, stop);
}

void expectReadError(const MediaClip &clip, const QString &text)
{
    EXPECT_TRUE(clip.isInspected);
    ASSERT_EQ(issueKinds(clip), QList<IssueKind>{IssueKind::readError});
    EXPECT_EQ(clip.issues[0].severity, ClipHealth::fail);
    EXPECT_EQ(clip.issues[0].textValue, text);
    EXPECT_FALSE(clip.width || clip.height || clip.videoCodec || clip.frameRate);
}

// Each ends with one read error carrying the system's or FFmpeg's text, and stays as it was.
// Pipes, sockets and devices have their own test.
TEST(BrokenMedia, FilesThatAreNoMovieAreOneReadErrorWithTheReason)
{
    QTemporaryDir dir;
    ASSERT_TRUE(QDir().mkpath(dir.filePath("folder.mov")));
    // ffprobe would follow the playlist into h264.mov and report a healthy movie; a concat
    // script may only name files beside it, but one of those could be a pipe.
    writeFile(dir.filePath("playlist.mov"), "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n" +
                                                QFile::encodeName(path("h264.mov")) +
                                                "\n#EXT-X-ENDLIST\n");
    QFile::copy(path("h264.mov"), dir.filePath("next.mov"));
    writeFile(dir.filePath("concat.mov"), "ffconcat version 1.0\nfile next.mov\n");
    std::stop_source stopped;
    stopped.request_stop();
    const QString invalidData = "Invalid data found when processing input";
    const struct {
        QString file;
        QString text;
        std::stop_token stop = {};
    } rows[] = {
        {path("text.mov"), invalidData},
        {path("empty.mp4"), invalidData},
        {path("truncated.mov"), invalidData},
        {path("dangling.mov"), "No such file or directory"},
        {path("never-made.mov"), "No such file or directory"},
        {dir.filePath("folder.mov"), "Is a directory"},
        {dir.filePath("playlist.mov"), "Invalid argument"},
        {dir.filePath("concat.mov"), "Invalid argument"},
        {path("h264.mov"), "Immediate exit requested", stopped.get_token()},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.file.toStdString());
        const Snapshot before = Snapshot::of(row.file);
        expectReadError(inspect(row.file, row.stop), row.text);
        EXPECT_EQ(Snapshot::of(row.file), before);
    }
}

TEST(BrokenMedia, UnreadableFileIsReadError)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "root reads every file";
    QTemporaryDir dir;
    const QString file = dir.filePath("locked.mov");
    QFile::copy(path("h264.mov"), file);
    QFile::setPermissions(file, QFileDevice::WriteOwner);
    expectReadError(inspect(file), "Permission denied");
}

// Garbage named .png; a movie named .png is judged as a still, and it is not one; the same
// for text named .heic and a HEIC file cut short.
TEST(BrokenMedia, StillsThatAreNoPictureAreImageUnreadable)
{
    QTemporaryDir dir;
    QFile::copy(path("h264.mov"), dir.filePath("movie.png"));
    QFile::copy(path("text.mov"), dir.filePath("text.heic"));
    QFile heic(path("still.heic"));
    ASSERT_TRUE(heic.open(QIODevice::ReadOnly));
    writeFile(dir.filePath("cut.heic"), heic.read(heic.size() / 3));
    for (const QString &file : {path("garbage.png"), dir.filePath("movie.png"),
                                dir.filePath("text.heic"), dir.filePath("cut.heic")}) {
        SCOPED_TRACE(file.toStdString());
        const MediaClip clip = inspect(file);
        EXPECT_EQ(issueKinds(clip), QList<IssueKind>{IssueKind::imageUnreadable});
        EXPECT_FALSE(clip.width || clip.height || clip.videoCodec);
    }
}

TEST(BrokenMedia, ColonInFileNameIsNotAProtocol)
{
    // "http:clip.mov" relative to the working folder would otherwise be a web address, which
    // the file-only whitelist turns away.
    QTemporaryDir dir;
    ASSERT_TRUE(QFile::copy(path("h264.mov"), dir.filePath("http:clip.mov")));
    const QString previous = QDir::currentPath();
    QDir::setCurrent(dir.path());
    const VideoFacts facts = FfmpegProbe{}.probeVideo(QStringLiteral("http:clip.mov"), {});
    QDir::setCurrent(previous);
    EXPECT_EQ(facts.failedAt, VideoFacts::Stage::none) << facts.errorText.toStdString();
    EXPECT_EQ(facts.naturalWidth, 320);
}

} // namespace
