// The checklist's GPU-codec line with HAP in the pack, and the count of clips a conversion
// would rob of their transparency.
#include "session/preshowchecklist.h"
#include "session/transparencyloss.h"

#include <gtest/gtest.h>

namespace {

MediaClip clip(const QString &file, const QString &codec, bool alpha = false,
               ClipHealth severity = ClipHealth::ok)
{
    MediaClip c = MediaClip::forFile(file);
    c.isInspected = true;
    c.videoCodec = codec;
    c.hasAlpha = alpha;
    if (severity != ClipHealth::ok)
        c.issues.append(ClipIssue::make(severity, IssueKind::lowRes));
    return c;
}

} // namespace

TEST(GpuFamilyChecklist, DxvLineCountsHapInAnyCase)
{
    const std::optional<QUrl> none;
    const std::optional<QUrl> exported = QUrl::fromLocalFile("/out/pack");
    const struct {
        const char *name;
        QStringList codecs;
        std::optional<QUrl> exportFolder;
        bool ok;
        const char *detail;
        qint64 count;
    } rows[] = {
        {"all HAP", {"Hap1", "Hap5", "HapY", "HapM", "HapA"}, none, true, "checklist.dxv.gpu", 5},
        {"lower case", {"hap1", "hApy"}, none, true, "checklist.dxv.gpu", 2},
        {"HAP and DXV", {"Hap1", "DXV3"}, none, true, "checklist.dxv.gpu", 2},
        {"DXV only", {"DXV3", "dxd3"}, none, true, "checklist.dxv.ok", 2},
        {"HAP and H.264", {"Hap1", "avc1"}, none, false, "checklist.dxv.bad", 1},
        {"HAP and H.264 exported", {"Hap1", "avc1"}, exported, true, "checklist.dxv.exported", 1},
        {"near miss", {"Hap7", "HAPPY"}, none, false, "checklist.dxv.bad", 0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        QList<MediaClip> clips;
        for (const QString &codec : row.codecs)
            clips.append(clip(QStringLiteral("/show/v.mov"), codec));
        clips.append(clip(QStringLiteral("/show/still.png"), QStringLiteral("PNG")));
        const ChecklistItem dxv = PreShowChecklist::build(clips, row.exportFolder, none).items[2];
        EXPECT_EQ(dxv.ok, row.ok);
        EXPECT_EQ(dxv.detailKey, QLatin1String(row.detail));
        EXPECT_EQ(dxv.count, row.count);
    }
}

TEST(TransparencyLoss, CountsTransparentVideosOfTheBatchGoingToH264)
{
    const QList<MediaClip> clips{
        clip(QStringLiteral("/show/logo.mov"), QStringLiteral("ap4h"), true),
        clip(QStringLiteral("/show/bad.mov"), QStringLiteral("ap4h"), true, ClipHealth::warn),
        clip(QStringLiteral("/show/flat.mov"), QStringLiteral("avc1"), false, ClipHealth::fail),
        clip(QStringLiteral("/show/logo.png"), QStringLiteral("PNG"), true, ClipHealth::warn),
    };
    EXPECT_EQ(clipsLosingTransparency(clips, ArenaConvertFormat::h264, false), 2);
    EXPECT_EQ(clipsLosingTransparency(clips, ArenaConvertFormat::h264, true), 1);
    for (ArenaConvertFormat format : kAllConvertFormats) {
        SCOPED_TRACE(rawValue(format).toStdString());
        const qint64 expected = format == ArenaConvertFormat::h264 ? 2 : 0;
        EXPECT_EQ(clipsLosingTransparency(clips, format, false), expected);
    }
}
