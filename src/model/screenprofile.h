#pragma once

#include <QString>

#include <array>
#include <optional>

enum class ScreenProfile { landscape169, ledWall, vertical };
inline constexpr std::array kAllScreenProfiles{ScreenProfile::landscape169, ScreenProfile::ledWall,
                                               ScreenProfile::vertical};

QString rawValue(ScreenProfile profile);
std::optional<ScreenProfile> screenProfileFromRaw(QStringView raw);
QString labelKey(ScreenProfile profile); // "profile.<raw>"
QString helpKey(ScreenProfile profile);  // "profile.<raw>.help"

// The fixed limits of one stage screen.
struct ProfileParameters {
    qint64 referenceWidth;
    qint64 tooWideAbove; // twice the reference width
    qint64 minWidth;
    qint64 minHeight;
    double maxMbps;
    double expectedAspect;
    double aspectTolerance;
    bool acceptsSquare; // aspect within kSquareTolerance of 1.0 passes
};
inline constexpr double kSquareTolerance = 0.08;

const ProfileParameters &parameters(ScreenProfile profile);

// Everything a probe needs to judge a clip; a snapshot taken when the probe starts.
struct InspectionRules {
    qint64 preferredWidth = 1920;
    bool warnOnEmbeddedAudio = true;
    bool warnOnHEVC = true;
    double maxMbps = 120.0;
    double expectedAspect = 16.0 / 9.0;
    double aspectTolerance = 0.08;
    qint64 minWidth = 1280;
    qint64 minHeight = 720;
    ScreenProfile profile = ScreenProfile::landscape169;

    static InspectionRules make(ScreenProfile profile, bool warnOnEmbeddedAudio, bool warnOnHEVC);
    friend bool operator==(const InspectionRules &, const InspectionRules &) = default;
};
