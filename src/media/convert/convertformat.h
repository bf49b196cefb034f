#pragma once

#include <QString>

#include <array>
#include <optional>

// The Arena-friendly targets a clip can be converted to. The raw values are stored in project
// files. The HAP family is decoded by the media server's GPU.
enum class ArenaConvertFormat { proRes422, proRes422LT, h264, hap, hapAlpha, hapQ };
inline constexpr std::array kAllConvertFormats{
    ArenaConvertFormat::proRes422, ArenaConvertFormat::proRes422LT, ArenaConvertFormat::h264,
    ArenaConvertFormat::hap,       ArenaConvertFormat::hapAlpha,    ArenaConvertFormat::hapQ};

// HAP stores DXT textures of 4 × 4 pixel blocks.
inline constexpr bool isHap(ArenaConvertFormat format)
{
    return format == ArenaConvertFormat::hap || format == ArenaConvertFormat::hapAlpha ||
           format == ArenaConvertFormat::hapQ;
}

// Whether a video converted to `format` keeps an alpha channel it has: ProRes becomes ProRes
// 4444 and HAP becomes HAP Alpha for such a clip; H.264 has no alpha at all.
inline constexpr bool canKeepAlpha(ArenaConvertFormat format)
{
    return format != ArenaConvertFormat::h264;
}

inline QString rawValue(ArenaConvertFormat format)
{
    switch (format) {
    case ArenaConvertFormat::proRes422LT:
        return QStringLiteral("proRes422LT");
    case ArenaConvertFormat::h264:
        return QStringLiteral("h264");
    case ArenaConvertFormat::hap:
        return QStringLiteral("hap");
    case ArenaConvertFormat::hapAlpha:
        return QStringLiteral("hapAlpha");
    case ArenaConvertFormat::hapQ:
        return QStringLiteral("hapQ");
    case ArenaConvertFormat::proRes422:
        break;
    }
    return QStringLiteral("proRes422");
}

inline std::optional<ArenaConvertFormat> arenaConvertFormatFromRaw(QStringView raw)
{
    for (ArenaConvertFormat format : kAllConvertFormats) {
        if (raw == rawValue(format))
            return format;
    }
    return std::nullopt;
}

// The interface text of each format ("Apple ProRes 422 (.mov)"…).
inline QString labelKey(ArenaConvertFormat format)
{
    switch (format) {
    case ArenaConvertFormat::proRes422LT:
        return QStringLiteral("convert.format.proreslt");
    case ArenaConvertFormat::h264:
        return QStringLiteral("convert.format.h264");
    case ArenaConvertFormat::hap:
    case ArenaConvertFormat::hapAlpha:
    case ArenaConvertFormat::hapQ:
        return QStringLiteral("convert.format.") + rawValue(format);
    case ArenaConvertFormat::proRes422:
        break;
    }
    return QStringLiteral("convert.format.prores");
}

// The one-line help under a format's card; empty for the formats the studio's heading explains.
inline QString helpKey(ArenaConvertFormat format)
{
    if (isHap(format))
        return labelKey(format) + QStringLiteral(".help");
    return {};
}

struct ConvertOptions {
    ArenaConvertFormat format = ArenaConvertFormat::proRes422;
    bool dropAudio = false;
    bool forceEvenDimensions = true;
};
