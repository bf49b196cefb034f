#include "media/convert/mediaconverter.h"

#include <gtest/gtest.h>

TEST(ConvertFormat, RawValuesLabelsAndOrder)
{
    struct Row {
        ArenaConvertFormat format;
        const char *raw;
        const char *label;
    };
    const Row rows[] = {
        {ArenaConvertFormat::proRes422, "proRes422", "convert.format.prores"},
        {ArenaConvertFormat::proRes422LT, "proRes422LT", "convert.format.proreslt"},
        {ArenaConvertFormat::h264, "h264", "convert.format.h264"},
        {ArenaConvertFormat::hap, "hap", "convert.format.hap"},
        {ArenaConvertFormat::hapAlpha, "hapAlpha", "convert.format.hapAlpha"},
        {ArenaConvertFormat::hapQ, "hapQ", "convert.format.hapQ"},
    };
    ASSERT_EQ(kAllConvertFormats.size(), std::size(rows));
    for (size_t i = 0; i < std::size(rows); ++i) {
        SCOPED_TRACE(rows[i].raw);
        EXPECT_EQ(kAllConvertFormats[i], rows[i].format);
        EXPECT_EQ(rawValue(rows[i].format), QLatin1String(rows[i].raw));
        EXPECT_EQ(labelKey(rows[i].format), QLatin1String(rows[i].label));
        EXPECT_EQ(arenaConvertFormatFromRaw(QString::fromLatin1(rows[i].raw)), rows[i].format);
    }
}

TEST(ConvertFormat, UnknownRawTextGivesNoValue)
{
    for (const char *raw : {"", "prores422", "ProRes422", "h265", "h264 ", "HAP", "hap_alpha"}) {
        SCOPED_TRACE(raw);
        EXPECT_EQ(arenaConvertFormatFromRaw(QString::fromLatin1(raw)), std::nullopt);
    }
}
