#include "riskrules.h"

#include <cmath>

namespace MediaInspector {

namespace {

// Matched as substrings of the upper-cased codec text.
constexpr const char *kArenaNative[] = {"DXV", "DXD", "DX3", "HAP", "NOTCH"};
constexpr const char *kHeavy[] = {"HEVC", "H265", "H.265", "VP9", "AV1"};
constexpr const char *kKnownSafe[] = {"H264", "AVC1", "AVC",  "APCN", "APCH",   "APCO", "APCS",
                                      "AP4H", "AP4X", "JPEG", "MJPG", "PRORES", "APR",  "ICOD"};

template<size_t N>
bool containsAny(const QString &text, const char *const (&words)[N])
{
    for (const char *word : words) {
        if (text.contains(QLatin1String(word)))
            return true;
    }
    return false;
}

void addWarning(MediaClip &clip, IssueKind kind, auto setDetail)
{
    ClipIssue issue = ClipIssue::make(ClipHealth::warn, kind);
    setDetail(issue);
    clip.issues.append(issue);
}

void addWarning(MediaClip &clip, IssueKind kind)
{
    clip.issues.append(ClipIssue::make(ClipHealth::warn, kind));
}

constexpr double kMinJudgedDuration = 0.5; // shorter clips give no meaningful average rate

} // namespace

void applyGeometryRules(MediaClip &clip, const InspectionRules &rules)
{
    if (!clip.width || !clip.height)
        return;
    const qint64 width = *clip.width;
    const qint64 height = *clip.height;
    if (width % 2 != 0 || height % 2 != 0)
        addWarning(clip, IssueKind::oddSize);
    if (width > 2 * rules.preferredWidth)
        addWarning(clip, IssueKind::tooWide, [&](ClipIssue &i) { i.intValue = width; });
    if (width < rules.minWidth || height < rules.minHeight)
        addWarning(clip, IssueKind::lowRes);
    const double aspect =
        static_cast<double>(width) / static_cast<double>(height < 1 ? 1 : height);
    if (std::fabs(aspect - rules.expectedAspect) > rules.aspectTolerance) {
        const bool squareOnWall = rules.profile == ScreenProfile::ledWall &&
                                  std::fabs(aspect - 1.0) < kSquareTolerance;
        if (!squareOnWall)
            addWarning(clip, IssueKind::aspect, [&](ClipIssue &i) { i.doubleValue = aspect; });
    }
}

void applyCodecRules(MediaClip &clip, const InspectionRules &rules)
{
    if (!clip.videoCodec)
        return;
    const QString codec = clip.videoCodec->toUpper();
    if (containsAny(codec, kArenaNative))
        return;
    if (rules.warnOnHEVC && containsAny(codec, kHeavy)) {
        addWarning(clip, IssueKind::heavyCodec, [&](ClipIssue &i) { i.textValue = codec; });
        return;
    }
    if (containsAny(codec, kKnownSafe))
        return;
    addWarning(clip, IssueKind::weirdCodec, [&](ClipIssue &i) { i.textValue = codec; });
}

void applyBitrateRules(MediaClip &clip, const InspectionRules &rules)
{
    if (!clip.duration || !(*clip.duration > kMinJudgedDuration) || clip.fileSize <= 0)
        return;
    const double mbps = static_cast<double>(clip.fileSize) * 8.0 / *clip.duration / 1'000'000.0;
    if (mbps > rules.maxMbps)
        addWarning(clip, IssueKind::bitrate, [&](ClipIssue &i) { i.doubleValue = mbps; });
}

} // namespace MediaInspector
