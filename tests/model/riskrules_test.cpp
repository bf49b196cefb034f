#include "model/riskrules.h"

#include <gtest/gtest.h>

namespace {

struct Finding {
    IssueKind kind;
    std::optional<qint64> intValue = std::nullopt;
    std::optional<double> doubleValue = std::nullopt;
    std::optional<QString> textValue = std::nullopt;
};

MediaClip sized(std::optional<qint64> width, std::optional<qint64> height)
{
    MediaClip clip = MediaClip::forFile("/s/c.mov");
    clip.width = width;
    clip.height = height;
    return clip;
}

void expectFindings(const MediaClip &clip, const std::vector<Finding> &expected)
{
    ASSERT_EQ(clip.issues.size(), static_cast<qsizetype>(expected.size()));
    for (size_t i = 0; i < expected.size(); ++i) {
        const ClipIssue &got = clip.issues[static_cast<qsizetype>(i)];
        EXPECT_EQ(got.kind, expected[i].kind) << i;
        EXPECT_EQ(got.severity, ClipHealth::warn);
        EXPECT_EQ(got.intValue, expected[i].intValue);
        if (expected[i].doubleValue)
            EXPECT_NEAR(got.doubleValue.value_or(-1), *expected[i].doubleValue, 0.001);
        else
            EXPECT_FALSE(got.doubleValue);
        EXPECT_EQ(got.textValue, expected[i].textValue);
    }
}

} // namespace

// The limits themselves are checked at their boundaries by the rule tests below, the label keys
// by the string tables' test of every key the code uses.
TEST(ScreenProfile, RawValuesAndDefaults)
{
    const InspectionRules wall = InspectionRules::make(ScreenProfile::ledWall, false, true);
    EXPECT_EQ(wall.preferredWidth, 3840);
    EXPECT_FALSE(wall.warnOnEmbeddedAudio);
    EXPECT_TRUE(wall.warnOnHEVC);
    EXPECT_EQ(rawValue(ScreenProfile::landscape169), "landscape169");
    EXPECT_EQ(screenProfileFromRaw(u"ledWall"), ScreenProfile::ledWall);
    EXPECT_FALSE(screenProfileFromRaw(u"LEDWALL"));
    EXPECT_EQ(InspectionRules(), InspectionRules::make(ScreenProfile::landscape169, true, true));
}

TEST(RiskRules, GeometryPerProfile)
{
    struct Row {
        const char *name;
        ScreenProfile profile;
        std::optional<qint64> width, height;
        std::vector<Finding> expected;
    };
    const auto L = ScreenProfile::landscape169;
    const auto W = ScreenProfile::ledWall;
    const auto V = ScreenProfile::vertical;
    const Row rows[] = {
        {"1920x1080", L, 1920, 1080, {}},
        {"odd width", L, 1921, 1080, {{IssueKind::oddSize}}},
        {"odd and too wide", L, 3841, 2160, {{IssueKind::oddSize}, {IssueKind::tooWide, 3841}}},
        {"twice is not too wide", L, 3840, 2160, {}},
        {"minimum", L, 1280, 720, {}},
        {"below minimum and odd", L, 1279, 720, {{IssueKind::oddSize}, {IssueKind::lowRes}}},
        {"4:3", L, 1440, 1080, {{IssueKind::aspect, {}, 1.3333}}},
        {"square", L, 1024, 1024, {{IssueKind::lowRes}, {IssueKind::aspect, {}, 1.0}}},
        {"height zero", L, 1920, 0, {{IssueKind::lowRes}, {IssueKind::aspect, {}, 1920.0}}},
        {"odd width, no height", L, 1921, std::nullopt, {}}, // a still not read yet
        {"wall square", W, 1920, 1920, {}},
        {"wall 2560x1080", W, 2560, 1080, {{IssueKind::aspect, {}, 2.370}}},
        {"wall small square", W, 1080, 1080, {{IssueKind::lowRes}}},
        {"vertical minimum", V, 720, 1280, {}},
        {"vertical below minimum", V, 720, 1278, {{IssueKind::lowRes}}},
        {"vertical, 16:9", V, 1920, 1080, {{IssueKind::lowRes}, {IssueKind::aspect, {}, 1.778}}},
        {"vertical odd wide", V, 2161, 3840, {{IssueKind::oddSize}, {IssueKind::tooWide, 2161}}},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        MediaClip clip = sized(row.width, row.height);
        MediaInspector::applyGeometryRules(clip, InspectionRules::make(row.profile, true, true));
        expectFindings(clip, row.expected);
    }
}

TEST(RiskRules, Codecs)
{
    struct Row {
        const char *codec;
        bool warnOnHEVC;
        std::vector<Finding> expected;
    };
    const Row rows[] = {
        {"avc1", true, {}},
        {"Hap1", true, {}},
        {"hvc1", true, {{IssueKind::weirdCodec, {}, {}, QString("HVC1")}}},
        {"hvc1", false, {{IssueKind::weirdCodec, {}, {}, QString("HVC1")}}},
        {"hevc", true, {{IssueKind::heavyCodec, {}, {}, QString("HEVC")}}},
        {"hevc", false, {{IssueKind::weirdCodec, {}, {}, QString("HEVC")}}},
        {"vp9 in avc", true, {{IssueKind::heavyCodec, {}, {}, QString("VP9 IN AVC")}}},
        {"vp9 in avc", false, {}},
        {"VP09", true, {{IssueKind::weirdCodec, {}, {}, QString("VP09")}}}, // not "VP9"
        {nullptr, true, {}},                                                // no video stream read
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(std::string(row.codec ? row.codec : "none") +
                     (row.warnOnHEVC ? " warn" : " quiet"));
        MediaClip clip = MediaClip::forFile("/s/c.mov");
        if (row.codec)
            clip.videoCodec = QString::fromLatin1(row.codec);
        MediaInspector::applyCodecRules(
            clip, InspectionRules::make(ScreenProfile::landscape169, true, row.warnOnHEVC));
        expectFindings(clip, row.expected);
    }
}

TEST(RiskRules, BitrateAveragesTheWholeFile)
{
    const auto judge = [](qint64 bytes, std::optional<double> seconds, ScreenProfile profile) {
        MediaClip clip = MediaClip::forFile("/s/c.mov");
        clip.fileSize = bytes;
        clip.duration = seconds;
        MediaInspector::applyBitrateRules(clip, InspectionRules::make(profile, true, true));
        return clip;
    };
    const MediaClip heavy = judge(1'500'000'000, 60.0, ScreenProfile::landscape169);
    expectFindings(heavy, {{IssueKind::bitrate, {}, 200.0}});
    EXPECT_EQ(judge(1'500'000'000, 60.0, ScreenProfile::vertical).issues.size(), 1);
    EXPECT_TRUE(judge(1'500'000'000, 60.0, ScreenProfile::ledWall).issues.isEmpty());
    EXPECT_TRUE(judge(1'500'000'000, 0.5, ScreenProfile::landscape169).issues.isEmpty());
    EXPECT_EQ(judge(1'500'000'000, 0.51, ScreenProfile::landscape169).issues.size(), 1);
    EXPECT_TRUE(judge(0, 60.0, ScreenProfile::landscape169).issues.isEmpty());
    EXPECT_TRUE(judge(1'500'000'000, std::nullopt, ScreenProfile::landscape169).issues.isEmpty());
    // Exactly at the limit is not above it.
    EXPECT_TRUE(judge(900'000'000, 60.0, ScreenProfile::landscape169).issues.isEmpty());
}
