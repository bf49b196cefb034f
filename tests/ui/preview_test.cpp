// The preview decodes through our own media layer, so it plays whatever the probe reads. The
// movies are made here with the ffmpeg program (in the package list), a second each.
#include "uifixture.h"

#include "media/ffmpeg/previewdecoder.h"
#include "ui/clippreviewview.h"
#include "ui/kitbuttons.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTest>

namespace {

struct Codec {
    const char *name;
    const char *file;
    QStringList encoder;
};

bool makeMovie(const QString &path, const QStringList &encoder)
{
    return QProcess::execute(QStringLiteral("ffmpeg"),
                             QStringList{"-loglevel", "error", "-y", "-f", "lavfi", "-i",
                                         "testsrc=size=320x180:rate=25:duration=1"} +
                                 encoder + QStringList{path}) == 0;
}

} // namespace

class Preview : public WindowTest
{
protected:
    void SetUp() override
    {
        if (QStandardPaths::findExecutable(QStringLiteral("ffmpeg")).isEmpty())
            GTEST_SKIP() << "the ffmpeg program makes the test movies";
    }
};

TEST_F(Preview, DecodesIntraLongGopAndHapMoviesInOrderButNotABrokenFile)
{
    const QList<Codec> codecs = {
        {"ProRes 422", "prores.mov", {u"-c:v"_qs, u"prores_ks"_qs, u"-profile:v"_qs, u"2"_qs}},
        {"HAP", "hap.mov", {u"-c:v"_qs, u"hap"_qs}},
        {"H.264", "h264.mp4", {u"-c:v"_qs, u"libx264"_qs, u"-pix_fmt"_qs, u"yuv420p"_qs}},
    };
    for (const Codec &codec : codecs) {
        SCOPED_TRACE(codec.name);
        const QString file = path(QString::fromLatin1(codec.file));
        ASSERT_TRUE(makeMovie(file, codec.encoder));
        std::unique_ptr<PreviewDecoder> decoder = PreviewDecoder::open(file, QSize(640, 360), {});
        ASSERT_NE(decoder, nullptr);
        int frames = 0;
        double last = -1;
        while (std::optional<PreviewDecoder::Frame> frame = decoder->next()) {
            EXPECT_EQ(frame->image.size(), QSize(320, 180)); // never enlarged
            EXPECT_GT(frame->seconds, last);
            last = frame->seconds;
            ++frames;
        }
        EXPECT_EQ(frames, 25);
    }
    // A file that is no movie gets no decoder; the view keeps its placeholder (see below).
    EXPECT_EQ(PreviewDecoder::open(touch(QStringLiteral("broken.mov"), QByteArray("not a movie")),
                                   QSize(640, 360), {}),
              nullptr);
}

TEST_F(Preview, PlaysAndStopsAtTheEndThenRewinds)
{
    const QString file = path(QStringLiteral("clip.mov"));
    ASSERT_TRUE(makeMovie(file, {u"-c:v"_qs, u"prores_ks"_qs}));
    ClipPreviewView view;
    view.resize(300, 200);
    view.show();
    view.setClip(MediaClip::forFile(file));
    ASSERT_TRUE(waitUntil([&] { return view.hasPoster(); }));
    view.playButton()->click();
    EXPECT_TRUE(view.isPlaying());
    ASSERT_TRUE(waitUntil([&] { return view.showsVideoFrame(); }));
    // A one-second movie ends well before the eight-second limit: it rewinds and stops.
    ASSERT_TRUE(waitUntil([&] { return !view.isPlaying(); }, 5000));
}

TEST_F(Preview, PosterOfAnEarlierClipIsDropped)
{
    const QString first = path(QStringLiteral("first.mov"));
    const QString second = touch(QStringLiteral("second.mov"), QByteArray("not a movie"));
    ASSERT_TRUE(makeMovie(first, {u"-c:v"_qs, u"prores_ks"_qs}));
    ClipPreviewView view;
    view.setClip(MediaClip::forFile(first));
    view.setClip(MediaClip::forFile(second)); // before the first poster can arrive
    QTest::qWait(800);
    EXPECT_EQ(view.generation(), 2);
    // Neither the first clip's poster nor any of the unreadable second one shows.
    EXPECT_FALSE(view.hasPoster());
}
