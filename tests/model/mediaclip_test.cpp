#include "model/mediaclip.h"

#include <gtest/gtest.h>

namespace {

MediaClip inspected(std::initializer_list<ClipHealth> severities)
{
    MediaClip clip = MediaClip::forFile("/show/clip.mov");
    clip.isInspected = true;
    for (ClipHealth severity : severities)
        clip.issues.append(ClipIssue::make(severity, IssueKind::oddSize));
    return clip;
}

} // namespace

TEST(MediaClip, HealthIsTheWorstFindingOnceInspected)
{
    MediaClip notProbed = inspected({ClipHealth::fail});
    notProbed.isInspected = false;
    EXPECT_EQ(notProbed.health(), ClipHealth::unknown);
    EXPECT_EQ(inspected({}).health(), ClipHealth::ok);
    EXPECT_EQ(inspected({ClipHealth::warn, ClipHealth::fail}).health(), ClipHealth::fail);
    EXPECT_EQ(inspected({ClipHealth::warn}).health(), ClipHealth::warn);

    MediaClip duplicateOnly = inspected({});
    duplicateOnly.issues.append(ClipIssue::make(ClipHealth::warn, IssueKind::duplicate));
    EXPECT_EQ(duplicateOnly.health(), ClipHealth::warn);
}

TEST(MediaClip, ResolutionLabelNeedsBothSides)
{
    MediaClip clip = MediaClip::forFile("/a.mov");
    EXPECT_EQ(clip.resolutionLabel(), "\u2014");
    clip.width = 3840;
    EXPECT_EQ(clip.resolutionLabel(), "\u2014");
    clip.height = 2160;
    EXPECT_EQ(clip.resolutionLabel(), "3840\u00D72160");
}

TEST(MediaClip, DurationLabelRoundsHalvesAwayFromZero)
{
    const std::pair<std::optional<double>, const char *> rows[] = {
        {std::nullopt, "\u2014"},
        {59.5, "1:00"},
        {59.4, "0:59"},
        {0.0, "0:00"},
        {3725.0, "62:05"},
        {std::numeric_limits<double>::infinity(), "\u2014"},
        {std::numeric_limits<double>::quiet_NaN(), "\u2014"},
        {1e300, "\u2014"},
    };
    for (const auto &[seconds, expected] : rows) {
        MediaClip clip = MediaClip::forFile("/a.mov");
        clip.duration = seconds;
        EXPECT_EQ(clip.durationLabel(), QString::fromUtf8(expected)) << (seconds ? *seconds : -1.0);
    }
}

TEST(MediaClip, FileSizesAreDecimalWithOneDecimal)
{
    // The window and the command line show the same units a file manager does.
    const std::pair<qint64, const char *> rows[] = {
        {0, "0 bytes"},        {999, "999 bytes"},        {1000, "1.0 kB"},
        {1'500'000, "1.5 MB"}, {2'000'000'000, "2.0 GB"},
    };
    for (const auto &[bytes, expected] : rows)
        EXPECT_EQ(formatFileSize(bytes, QLocale::c()), QString::fromUtf8(expected)) << bytes;
    EXPECT_EQ(formatFileSize(1'500'000, QLocale(QLocale::German)), "1,5 MB");
}

TEST(MediaClip, ForFileStartsUninspectedWithBaseName)
{
    const MediaClip clip = MediaClip::forFile("/show/My Intro.MOV");
    EXPECT_FALSE(clip.id.isNull());
    EXPECT_EQ(clip.originalName, "My Intro.MOV");
    EXPECT_EQ(clip.arenaName, "My Intro");
    EXPECT_EQ(clip.sourcePath(), "/show/My Intro.MOV");
    EXPECT_EQ(clip.cueIndex, 0);
    EXPECT_FALSE(clip.isInspected);
    EXPECT_FALSE(clip.isImage());
    EXPECT_TRUE(MediaClip::forFile("/x/still.HEIC").isImage());
}

TEST(MediaClip, EqualClipsHashEqually)
{
    // Equality is the compiler's memberwise one; the hash is written by hand and must agree.
    MediaClip a = inspected({ClipHealth::warn});
    a.duration = 12.5;
    a.contentFingerprint = "ab";
    const MediaClip b = a;
    EXPECT_EQ(a, b);
    EXPECT_EQ(qHash(a), qHash(b));
    a.issues.front().id = QUuid::createUuid();
    EXPECT_NE(qHash(a), qHash(b)); // finding ids take part
}
