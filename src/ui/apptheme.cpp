#include "apptheme.h"

#include <QStringList>

#include <cmath>
#include <numbers>

namespace AppTheme {

namespace {

struct SpringShape {
    double response;
    double damping;
};

constexpr SpringShape shapeOf(Spring spring)
{
    switch (spring) {
    case Spring::snappy:
        return {0.38, 0.82};
    case Spring::soft:
        return {0.55, 0.86};
    case Spring::luxury:
        return {0.72, 0.78};
    }
    return {0.55, 0.86};
}

double settleSeconds(SpringShape shape)
{
    const double omega = 2 * std::numbers::pi / shape.response;
    return -std::log(0.001) / (shape.damping * omega);
}

// An under-damped step response starting at rest: x(t) = 1 − e^(−ζωt)(cos ω_d t + ζω/ω_d sin ω_d
// t).
double springAt(SpringShape shape, double progress)
{
    const double t = progress * settleSeconds(shape);
    const double omega = 2 * std::numbers::pi / shape.response;
    const double zeta = shape.damping;
    const double omegaD = omega * std::sqrt(1 - zeta * zeta);
    const double decay = std::exp(-zeta * omega * t);
    return 1 - decay * (std::cos(omegaD * t) + zeta * omega / omegaD * std::sin(omegaD * t));
}

// QEasingCurve takes a plain function pointer, so each spring has its own.
qreal snappyCurve(qreal p)
{
    return p >= 1 ? 1 : springAt(shapeOf(Spring::snappy), p);
}
qreal softCurve(qreal p)
{
    return p >= 1 ? 1 : springAt(shapeOf(Spring::soft), p);
}
qreal luxuryCurve(qreal p)
{
    return p >= 1 ? 1 : springAt(shapeOf(Spring::luxury), p);
}

QString g_cjkFamily = QStringLiteral("Noto Sans CJK JP");

} // namespace

QColor withAlpha(const QColor &color, double alpha)
{
    QColor c = color;
    c.setAlphaF(static_cast<float>(alpha));
    return c;
}

QColor healthColor(ClipHealth health)
{
    switch (health) {
    case ClipHealth::ok:
        return ok;
    case ClipHealth::warn:
        return warn;
    case ClipHealth::fail:
        return fail;
    case ClipHealth::unknown:
        break;
    }
    return white(0.45);
}

QEasingCurve springCurve(Spring spring)
{
    QEasingCurve curve;
    switch (spring) {
    case Spring::snappy:
        curve.setCustomType(snappyCurve);
        break;
    case Spring::soft:
        curve.setCustomType(softCurve);
        break;
    case Spring::luxury:
        curve.setCustomType(luxuryCurve);
        break;
    }
    return curve;
}

int springDurationMs(Spring spring)
{
    return static_cast<int>(std::lround(settleSeconds(shapeOf(spring)) * 1000));
}

void setCjkPreference(const QString &languageCode)
{
    if (languageCode == u"ja")
        g_cjkFamily = QStringLiteral("Noto Sans CJK JP");
    else if (languageCode == u"zh-Hans")
        g_cjkFamily = QStringLiteral("Noto Sans CJK SC");
    else
        g_cjkFamily = QStringLiteral("Noto Sans CJK JP");
}

QFont font(double pixelSize, QFont::Weight weight, Face face)
{
    QFont f;
    if (face == Face::mono) {
        f.setFamilies(
            {QStringLiteral("Noto Sans Mono"), QStringLiteral("DejaVu Sans Mono"), g_cjkFamily});
        f.setStyleHint(QFont::Monospace);
    } else {
        f.setFamilies({QStringLiteral("Noto Sans"), g_cjkFamily, QStringLiteral("DejaVu Sans")});
    }
    f.setPixelSize(std::max(1, static_cast<int>(std::lround(pixelSize))));
    f.setWeight(weight);
    return f;
}

} // namespace AppTheme
