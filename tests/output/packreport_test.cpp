#include "output/packreport.h"

#include <gtest/gtest.h>

TEST(PackReport, EveryClipCountsOnce)
{
    QList<MediaClip> clips;
    const std::pair<bool, std::vector<ClipHealth>> rows[] = {
        {true, {}},
        {true, {ClipHealth::warn}},
        {true, {ClipHealth::warn, ClipHealth::fail}},
        {false, {ClipHealth::fail}},
        {true, {ClipHealth::warn, ClipHealth::warn}},
    };
    qint64 size = 100;
    for (const auto &[inspected, severities] : rows) {
        MediaClip clip = MediaClip::forFile("/a.mov");
        clip.isInspected = inspected;
        clip.fileSize = size;
        size *= 10;
        for (ClipHealth severity : severities)
            clip.issues.append(ClipIssue::make(severity, IssueKind::lowRes));
        clips.append(clip);
    }
    const PackReport report = PackReport::from(clips);
    EXPECT_EQ(report, (PackReport{5, 1, 2, 1, 1, 11'111'00}));
    EXPECT_EQ(PackReport::from({}), PackReport{});
}
