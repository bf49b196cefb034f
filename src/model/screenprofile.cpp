#include "screenprofile.h"

namespace {
constexpr const char *kNames[] = {"landscape169", "ledWall", "vertical"};

constexpr ProfileParameters kParameters[] = {
    // reference, too wide above, min w, min h, Mbps, aspect, tolerance, square
    {1920, 3840, 1280, 720, 120.0, 16.0 / 9.0, 0.08, false},
    // LED walls are often built from odd panel counts: wide and square canvases are normal.
    {3840, 7680, 1920, 1080, 250.0, 16.0 / 9.0, 0.35, true},
    {1080, 2160, 720, 1280, 100.0, 9.0 / 16.0, 0.08, false},
};
} // namespace

QString rawValue(ScreenProfile profile)
{
    return QString::fromLatin1(kNames[static_cast<int>(profile)]);
}

std::optional<ScreenProfile> screenProfileFromRaw(QStringView raw)
{
    for (ScreenProfile profile : kAllScreenProfiles) {
        if (raw == QLatin1String(kNames[static_cast<int>(profile)]))
            return profile;
    }
    return std::nullopt;
}

QString labelKey(ScreenProfile profile)
{
    return QStringLiteral("profile.") + rawValue(profile);
}

QString helpKey(ScreenProfile profile)
{
    return labelKey(profile) + QStringLiteral(".help");
}

const ProfileParameters &parameters(ScreenProfile profile)
{
    return kParameters[static_cast<int>(profile)];
}

InspectionRules InspectionRules::make(ScreenProfile profile, bool warnOnEmbeddedAudio,
                                      bool warnOnHEVC)
{
    const ProfileParameters &p = parameters(profile);
    InspectionRules rules;
    rules.preferredWidth = p.referenceWidth;
    rules.warnOnEmbeddedAudio = warnOnEmbeddedAudio;
    rules.warnOnHEVC = warnOnHEVC;
    rules.maxMbps = p.maxMbps;
    rules.expectedAspect = p.expectedAspect;
    rules.aspectTolerance = p.aspectTolerance;
    rules.minWidth = p.minWidth;
    rules.minHeight = p.minHeight;
    rules.profile = profile;
    return rules;
}
