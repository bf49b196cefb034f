// Files that are not what their names promise. Each ends with exactly the finding it deserves
// and the probe returns promptly: never a crash, never a hang, and the file stays as it was.
#include "mediafixtures.h"

#include "media/ffmpeg/ffmpegprobe.h"
#include "media/mediainspector.h"

#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace {

using MediaFixtures::path;

QList<IssueKind> kinds(const MediaClip &clip)
{
    QList<IssueKind> out;
    for (const ClipIssue &issue : clip.issues)
        out.append(issue.kind);
    return out;
}

MediaClip inspect(const QString &file, std::stop_token stop = {})
{
    return MediaInspector::inspect(file, InspectionRules{}, FfmpegProbe{}, stop);
}

QByteArray digest(const QString &file)
{
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256);
}

void expectReadError(const MediaClip &clip, const QString &text)
{
    EXPECT_TRUE(clip.isInspected);
    EXPECT_EQ(kinds(clip), QList<IssueKind>{IssueKind::readError});
    ASSERT_EQ(clip.issues.size(), 1);
    EXPECT_EQ(clip.issues[0].severity, ClipHealth::fail);
    EXPECT_EQ(clip.issues[0].textValue, text);
    EXPECT_EQ(clip.health(), ClipHealth::fail);
    EXPECT_FALSE(clip.width || clip.height || clip.videoCodec || clip.frameRate);
}

const QString kInvalidData = QStringLiteral("Invalid data found when processing input");
const QString kNoSuchFile = QStringLiteral("No such file or directory");

TEST(BrokenMedia, TextFileNamedMovIsOneReadErrorWithFfmpegsText)
{
    const QByteArray before = digest(path("text.mov"));
    expectReadError(inspect(path("text.mov")), kInvalidData);
    EXPECT_EQ(digest(path("text.mov")), before);
}

TEST(BrokenMedia, ZeroByteAndTruncatedMoviesAreReadErrors)
{
    expectReadError(inspect(path("empty.mp4")), kInvalidData);
    const QByteArray before = digest(path("truncated.mov"));
    expectReadError(inspect(path("truncated.mov")), kInvalidData);
    EXPECT_EQ(digest(path("truncated.mov")), before);
}

TEST(BrokenMedia, MissingAndDanglingFilesAreReadErrors)
{
    expectReadError(inspect(path("dangling.mov")), kNoSuchFile);
    expectReadError(inspect(path("never-made.mov")), kNoSuchFile);
}

TEST(BrokenMedia, UnreadableFileIsReadError)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "root reads every file";
    QTemporaryDir dir;
    const QString file = dir.filePath("locked.mov");
    QFile::copy(path("h264.mov"), file);
    QFile::setPermissions(file, QFileDevice::WriteOwner);
    expectReadError(inspect(file), QStringLiteral("Permission denied"));
}

TEST(BrokenMedia, FolderAndPipeNamedMovAreReadErrorsWithoutWaiting)
{
    QTemporaryDir dir;
    const QString folder = dir.filePath("folder.mov");
    ASSERT_TRUE(QDir().mkpath(folder));
    expectReadError(inspect(folder), QStringLiteral("Is a directory"));

    // Opening a pipe for reading blocks until a writer comes; the probe must not go near it.
    const QString pipe = dir.filePath("pipe.mov");
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QElapsedTimer timer;
    timer.start();
    expectReadError(inspect(pipe), QStringLiteral("Not a regular file"));
    EXPECT_LT(timer.elapsed(), 1000);
}

TEST(BrokenMedia, GarbageNamedPngIsImageUnreadable)
{
    const MediaClip clip = inspect(path("garbage.png"));
    EXPECT_EQ(kinds(clip), QList<IssueKind>{IssueKind::imageUnreadable});
    EXPECT_FALSE(clip.width || clip.height || clip.videoCodec);
    // A movie named .png is judged as a still, and it is not one.
    QTemporaryDir dir;
    const QString movie = dir.filePath("movie.png");
    QFile::copy(path("h264.mov"), movie);
    EXPECT_EQ(kinds(inspect(movie)), QList<IssueKind>{IssueKind::imageUnreadable});
    // Same for HEIC: text named .heic, and a HEIC file cut short.
    const QString text = dir.filePath("text.heic");
    QFile::copy(path("text.mov"), text);
    EXPECT_EQ(kinds(inspect(text)), QList<IssueKind>{IssueKind::imageUnreadable});
    QFile heic(path("still.heic"));
    ASSERT_TRUE(heic.open(QIODevice::ReadOnly));
    QFile cut(dir.filePath("cut.heic"));
    ASSERT_TRUE(cut.open(QIODevice::WriteOnly));
    cut.write(heic.read(heic.size() / 3));
    cut.close();
    EXPECT_EQ(kinds(inspect(cut.fileName())), QList<IssueKind>{IssueKind::imageUnreadable});
}

TEST(BrokenMedia, AudioOnlyMovieIsNoVideoWithAudio)
{
    const MediaClip clip = inspect(path("audio_only.mov"));
    EXPECT_EQ(kinds(clip).first(), IssueKind::noVideo);
    EXPECT_FALSE(kinds(clip).contains(IssueKind::readError));
    EXPECT_TRUE(clip.hasAudio);
    EXPECT_EQ(clip.audioCodec, "aac");
    EXPECT_FALSE(clip.width || clip.videoCodec || clip.frameRate);
    EXPECT_NEAR(clip.duration.value_or(-1), 1.0, 0.001);
}

TEST(BrokenMedia, PlaylistNamedMovDoesNotOpenWhatItNames)
{
    // ffprobe would follow this into h264.mov and report a healthy movie.
    QTemporaryDir dir;
    const QString playlist = dir.filePath("playlist.mov");
    QFile file(playlist);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n" +
               QFile::encodeName(path("h264.mov")) + "\n#EXT-X-ENDLIST\n");
    file.close();
    expectReadError(inspect(playlist), QStringLiteral("Invalid argument"));

    // A concat script may only name files beside it, but one of those could be a pipe.
    const QString concat = dir.filePath("concat.mov");
    QFile::copy(path("h264.mov"), dir.filePath("next.mov"));
    QFile script(concat);
    ASSERT_TRUE(script.open(QIODevice::WriteOnly));
    script.write("ffconcat version 1.0\nfile next.mov\n");
    script.close();
    expectReadError(inspect(concat), QStringLiteral("Invalid argument"));
}

TEST(BrokenMedia, StopRequestedEndsTheOpen)
{
    std::stop_source source;
    source.request_stop();
    expectReadError(inspect(path("h264.mov"), source.get_token()),
                    QStringLiteral("Immediate exit requested"));
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
