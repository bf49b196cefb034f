#include "l10n/l10n.h"
#include "model/clipissue.h"

#include <gtest/gtest.h>

namespace {

ClipIssue issue(IssueKind kind, std::optional<qint64> intValue = {},
                std::optional<double> doubleValue = {}, std::optional<QString> textValue = {})
{
    ClipIssue made = ClipIssue::make(ClipHealth::warn, kind);
    made.intValue = intValue;
    made.doubleValue = doubleValue;
    made.textValue = textValue;
    return made;
}

} // namespace

TEST(ClipIssue, RawValuesRoundTripInDeclarationOrder)
{
    const QStringList kinds{"imageUnreadable",   "noVideo",    "audio",   "readError",
                            "oddSize",           "tooWide",    "lowRes",  "aspect",
                            "heavyCodec",        "weirdCodec", "bitrate", "duplicate",
                            "variableFrameRate", "interlaced", "hdr"};
    for (int i = 0; i < kIssueKindCount; ++i) {
        EXPECT_EQ(rawValue(static_cast<IssueKind>(i)), kinds[i]);
        EXPECT_EQ(issueKindFromRaw(kinds[i]), static_cast<IssueKind>(i));
    }
    EXPECT_FALSE(issueKindFromRaw(u"OddSize"));
    EXPECT_EQ(rawValue(ClipHealth::unknown), "unknown");
    EXPECT_EQ(clipHealthFromRaw(u"fail"), ClipHealth::fail);
    EXPECT_FALSE(clipHealthFromRaw(u"red"));
}

TEST(ClipIssue, EnglishMessagesFillTheirOneArgument)
{
    const L10n en(AppLanguage::english);
    struct Row {
        const char *name;
        ClipIssue issue;
        QString expected;
    };
    const Row rows[] = {
        {"tooWide", issue(IssueKind::tooWide, 7680),
         "Very wide (7680px). Better convert to a lighter Arena-ready format."},
        {"tooWide without value", issue(IssueKind::tooWide),
         "Very wide (0px). Better convert to a lighter Arena-ready format."},
        {"aspect", issue(IssueKind::aspect, {}, 1.3333),
         "Unusual aspect 1.33. Better convert to the format your screen needs."},
        {"bitrate rounds", issue(IssueKind::bitrate, {}, 187.6),
         "High bitrate \u2248 188 Mbps. Better convert to a lighter Arena-ready format."},
        {"heavy", issue(IssueKind::heavyCodec, {}, {}, "HEVC"),
         "HEVC is heavy for live use. Better convert the video to ProRes or DXV3."},
        {"readError",
         issue(IssueKind::readError, {}, {}, "Invalid data found when processing input"),
         "Read error: Invalid data found when processing input"},
        {"readError without text", issue(IssueKind::readError), "Read error: "},
        {"duplicate", issue(IssueKind::duplicate),
         "Possible duplicate of another clip in this pack."},
        {"noVideo", issue(IssueKind::noVideo), "No video track"},
        {"hdr", issue(IssueKind::hdr, {}, {}, "HLG"),
         "HDR video (HLG). Colours will look washed out on a standard stage output. "
         "Better convert to SDR."},
        {"variableFrameRate", issue(IssueKind::variableFrameRate),
         "Variable frame rate. Better convert to a constant rate for smooth playback."},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.issue.localized(en), row.expected);
    }
}

// That every kind has its message in every language, with matching placeholders, is checked
// with the string tables.
TEST(ClipIssue, EqualFindingsHashEqually)
{
    ClipIssue a = issue(IssueKind::bitrate, {}, 150.0);
    const ClipIssue b = a;
    EXPECT_EQ(qHash(a), qHash(b));
    a.doubleValue = 150.5;
    EXPECT_NE(qHash(a), qHash(b));
}
