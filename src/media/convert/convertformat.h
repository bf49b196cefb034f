#pragma once

#include <QString>

#include <array>
#include <optional>

// The Arena-friendly targets a clip can be converted to. The raw values are stored in project
// files.
enum class ArenaConvertFormat { proRes422, proRes422LT, h264 };
inline constexpr std::array kAllConvertFormats{
    ArenaConvertFormat::proRes422, ArenaConvertFormat::proRes422LT, ArenaConvertFormat::h264};

inline QString rawValue(ArenaConvertFormat format)
{
    switch (format) {
    case ArenaConvertFormat::proRes422LT:
        return QStringLiteral("proRes422LT");
    case ArenaConvertFormat::h264:
        return QStringLiteral("h264");
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
    case ArenaConvertFormat::proRes422:
        break;
    }
    return QStringLiteral("convert.format.prores");
}

struct ConvertOptions {
    ArenaConvertFormat format = ArenaConvertFormat::proRes422;
    bool dropAudio = false;
    bool forceEvenDimensions = true;
};
