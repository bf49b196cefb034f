// Transparency as the probe reports it, for files made by make_gpu_fixtures.sh.
#include "convertfixtures.h"

#include "media/ffmpeg/ffmpegprobe.h"
#include "media/mediainspector.h"

using namespace ConvertFixtures;

TEST(AlphaProbe, ReportsAlphaOnlyWhereThePictureCarriesIt)
{
    const struct {
        const char *file;
        bool alpha;
    } rows[] = {
        {"alpha_prores.mov", true}, {"alpha_hap.mov", true},    {"alpha_qtrle.mov", true},
        {"alpha_vp9.webm", true},   {"alpha_vp8.webm", true},   {"alpha.png", true},
        {"alpha.tiff", true},       {"alpha.webp", true},       {"alpha.heic", true},
        {"h264.mp4", false},        {"prores422.mov", false},   {"opaque4444.mov", false},
        {"opaque.png", false},      {"opaque_rgba.png", false},
    };
    const FfmpegProbe probe;
    const InspectionRules rules = InspectionRules::make(ScreenProfile::landscape169, true, true);
    for (const auto &row : rows) {
        SCOPED_TRACE(row.file);
        const MediaClip clip =
            MediaInspector::inspect(path(QLatin1String(row.file)), rules, probe, {});
        ASSERT_NE(clip.health(), ClipHealth::fail); // read, not merely failed quietly
        EXPECT_EQ(clip.hasAlpha, row.alpha);
    }
}
