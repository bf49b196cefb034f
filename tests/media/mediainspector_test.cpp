#include "media/fake/fakeprobe.h"
#include "media/mediainspector.h"
#include "support/clips.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using Stage = VideoFacts::Stage;

class Inspect : public ::testing::Test
{
protected:
    // A file of `bytes` bytes, for the size and bit-rate rules; the fake probe knows its name.
    MediaClip inspect(const QString &name, qint64 bytes = 1000)
    {
        QFile file(m_dir.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(bytes));
        return MediaInspector::inspect(file.fileName(), m_rules, m_probe);
    }

    QTemporaryDir m_dir;
    FakeProbe m_probe;
    InspectionRules m_rules;
};

} // namespace

TEST_F(Inspect, HealthyMovieFillsEveryField)
{
    const MediaClip clip = inspect("intro.mov", 5000);
    EXPECT_TRUE(clip.isInspected);
    EXPECT_EQ(clip.originalName, "intro.mov");
    EXPECT_EQ(clip.arenaName, "intro");
    EXPECT_EQ(clip.fileSize, 5000);
    EXPECT_EQ(clip.width, 1920);
    EXPECT_EQ(clip.height, 1080);
    EXPECT_EQ(clip.duration, 10.0);
    EXPECT_EQ(clip.frameRate, 25.0);
    EXPECT_EQ(clip.videoCodec, "avc1");
    EXPECT_FALSE(clip.audioCodec);
    EXPECT_FALSE(clip.hasAudio);
    EXPECT_EQ(clip.health(), ClipHealth::ok);
}

TEST_F(Inspect, FindingOrderIsGeometryCodecBitrateAudio)
{
    VideoFacts facts = FakeProbe::defaultVideo();
    facts.naturalWidth = 1441;
    facts.naturalHeight = 1080;
    facts.videoCodecCode = FakeProbe::code("hev1");
    facts.duration = 1.0;
    facts.audioTrackCount = 2;
    facts.audioCodecCode = FakeProbe::code("aac ");
    m_probe.setVideo("heavy.mov", facts);
    const MediaClip clip = inspect("heavy.mov", 20'000'000); // 160 Mbps
    EXPECT_EQ(issueKinds(clip),
              (QList<IssueKind>{IssueKind::oddSize, IssueKind::aspect, IssueKind::weirdCodec,
                                IssueKind::bitrate, IssueKind::audio}));
    EXPECT_EQ(clip.audioCodec, "aac");
    EXPECT_TRUE(clip.hasAudio);

    m_rules.warnOnEmbeddedAudio = false;
    EXPECT_FALSE(issueKinds(inspect("heavy.mov", 20'000'000)).contains(IssueKind::audio));
}

TEST_F(Inspect, AReadErrorEndsTheProbeKeepingWhatWasLoaded)
{
    m_probe.fail("notes.mov", Stage::open, "Invalid data found when processing input");
    const MediaClip broken = inspect("notes.mov");
    ASSERT_EQ(broken.issues.size(), 1);
    EXPECT_EQ(broken.issues[0].kind, IssueKind::readError);
    EXPECT_EQ(broken.issues[0].severity, ClipHealth::fail);
    EXPECT_EQ(broken.issues[0].textValue, "Invalid data found when processing input");
    EXPECT_FALSE(broken.duration);
    EXPECT_TRUE(broken.isInspected);

    m_probe.fail("late.mov", Stage::frameRate, "boom");
    const MediaClip late = inspect("late.mov");
    EXPECT_EQ(late.duration, 10.0);
    EXPECT_EQ(late.width, 1920);
    EXPECT_FALSE(late.frameRate);
    EXPECT_FALSE(late.videoCodec);
    EXPECT_EQ(issueKinds(late), QList<IssueKind>{IssueKind::readError}); // no rule ran
}

TEST_F(Inspect, AudioOnlyMovieIsNoVideoButStillJudged)
{
    VideoFacts facts;
    facts.duration = 60.0;
    facts.audioTrackCount = 1;
    facts.audioCodecCode = FakeProbe::code("lpcm");
    m_probe.setVideo("song.mov", facts);
    const MediaClip clip = inspect("song.mov", 1'500'000'000);
    EXPECT_EQ(issueKinds(clip),
              (QList<IssueKind>{IssueKind::noVideo, IssueKind::bitrate, IssueKind::audio}));
    EXPECT_TRUE(clip.hasAudio);
    EXPECT_EQ(clip.audioCodec, "lpcm");
    EXPECT_FALSE(clip.width);
    EXPECT_FALSE(clip.videoCodec);
}

TEST_F(Inspect, RotationFrameRateAndInfiniteDuration)
{
    VideoFacts phone = FakeProbe::defaultVideo();
    phone.transform = DisplayMatrix{0, 1, -1, 0, 1080, 0};
    phone.nominalFrameRate = 29.97f;
    phone.duration = std::numeric_limits<double>::infinity();
    m_probe.setVideo("phone.mov", phone);
    const MediaClip clip = inspect("phone.mov");
    EXPECT_EQ(clip.width, 1080);
    EXPECT_EQ(clip.height, 1920);
    EXPECT_EQ(clip.frameRate, static_cast<double>(29.97f));
    EXPECT_FALSE(clip.duration);

    VideoFacts half = FakeProbe::defaultVideo();
    half.naturalWidth = 1919.5;
    half.nominalFrameRate = 0;
    m_probe.setVideo("half.mov", half);
    const MediaClip rounded = inspect("half.mov");
    EXPECT_EQ(rounded.width, 1920);
    EXPECT_FALSE(rounded.frameRate);
}

TEST_F(Inspect, StillsGetGeometryOnly)
{
    m_probe.setImage("odd.png", ImageFacts{true, true, 1921, 1080});
    const MediaClip odd = inspect("odd.png");
    EXPECT_EQ(odd.videoCodec, "PNG");
    EXPECT_EQ(odd.duration, 0.0);
    EXPECT_FALSE(odd.frameRate);
    EXPECT_EQ(issueKinds(odd), QList<IssueKind>{IssueKind::oddSize});

    m_probe.setImage("bad.jpg", ImageFacts{});
    m_probe.setImage("noprops.heic", ImageFacts{true, false, {}, {}});
    for (const char *name : {"bad.jpg", "noprops.heic"})
        EXPECT_EQ(issueKinds(inspect(name)), QList<IssueKind>{IssueKind::imageUnreadable}) << name;
    m_probe.setImage("nowidth.tif", ImageFacts{true, true, {}, 1080});
    const MediaClip partial = inspect("nowidth.tif");
    EXPECT_TRUE(partial.issues.isEmpty());
    EXPECT_EQ(partial.videoCodec, "TIF");
}

TEST_F(Inspect, MissingFileHasSizeZero)
{
    const MediaClip clip = MediaInspector::inspect(m_dir.filePath("gone.mov"), m_rules, m_probe);
    EXPECT_EQ(clip.fileSize, 0);
    EXPECT_TRUE(clip.isInspected);
}

TEST(FourCC, BytesToText)
{
    EXPECT_EQ(MediaInspector::fourCC(0x61766331), "avc1");
    EXPECT_EQ(MediaInspector::fourCC(FakeProbe::code("aac ")), "aac");
    EXPECT_EQ(MediaInspector::fourCC(FakeProbe::code("    ")), "");
    EXPECT_EQ(MediaInspector::fourCC(FakeProbe::code("\tab\t")), "ab");
    EXPECT_EQ(MediaInspector::fourCC(0x80766331), "????");
    EXPECT_EQ(MediaInspector::fourCC(0x617663FF), "????");
    EXPECT_EQ(MediaInspector::fourCC(0x61000031), QString("a") + QChar(0) + QChar(0) + "1");
}

TEST(DisplaySize, BoundingBoxOfTheTransformedFrame)
{
    using MediaInspector::displaySize;
    using Size = std::pair<qint64, qint64>;
    EXPECT_EQ(displaySize(1920, 1080, {}), Size(1920, 1080));
    EXPECT_EQ(displaySize(1920, 1080, {0, -1, 1, 0, 0, 1920}), Size(1080, 1920));
    EXPECT_EQ(displaySize(1920, 1080, {-1, 0, 0, -1, 1920, 1080}), Size(1920, 1080));
    EXPECT_EQ(displaySize(1919.5, 1080.49, {}), Size(1920, 1080));
    EXPECT_EQ(displaySize(0, 0, {}), Size(0, 0));
}
