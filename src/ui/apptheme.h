#pragma once

#include <QColor>
#include <QEasingCurve>
#include <QFont>

#include "model/clipissue.h"

// The colours, type and motion every screen shares. Sizes are device-independent pixels.
namespace AppTheme {

inline const QColor ink = QColor::fromRgbF(0.06f, 0.06f, 0.065f);
inline const QColor panel = QColor::fromRgbF(0.125f, 0.125f, 0.135f);
inline const QColor panelElevated = QColor::fromRgbF(0.16f, 0.16f, 0.17f);
inline const QColor stroke = QColor::fromRgbF(1, 1, 1, 0.09f);
inline const QColor accentGreen = QColor::fromRgbF(0.2f, 1.0f, 0.72f);
inline const QColor accentGreenDim = QColor::fromRgbF(0.12f, 0.72f, 0.52f);
inline const QColor accentGrey = QColor::fromRgbF(0.55f, 0.55f, 0.55f);
inline const QColor accentOrange = accentGreen; // the window's accent tint
inline const QColor accentAmber = QColor::fromRgbF(0.45f, 1.0f, 0.82f);
inline const QColor ok = accentGreen;
inline const QColor warn = QColor::fromRgbF(1.0f, 0.62f, 0.28f);
inline const QColor fail = QColor::fromRgbF(1.0f, 0.32f, 0.36f);

// `color` with its alpha replaced.
QColor withAlpha(const QColor &color, double alpha);
inline QColor white(double alpha)
{
    return withAlpha(Qt::white, alpha);
}
QColor healthColor(ClipHealth health);

// Damped springs, given as the response (seconds per oscillation) and the damping fraction of
// a mass on a spring. Qt animates with easing curves, so each spring becomes a curve over the
// time the motion needs to settle within a thousandth of its distance.
enum class Spring { snappy, soft, luxury };
QEasingCurve springCurve(Spring spring);
int springDurationMs(Spring spring);

// Interface type. "Rounded" faces map to the sans family; CJK glyphs follow the language so
// that Japanese text does not borrow Chinese forms.
enum class Face { sans, rounded, mono };
QFont font(double pixelSize, QFont::Weight weight = QFont::Normal, Face face = Face::sans);
// Picks the CJK fallback matching the interface language ("ja", "zh-Hans", or any other).
void setCjkPreference(const QString &languageCode);

} // namespace AppTheme
