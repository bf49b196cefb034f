// Stills rewritten as PNG: sizes, pixels, bit depth, errors.
#include "convertfixtures.h"

#include <QImage>
#include <QImageReader>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace ConvertFixtures;

namespace {

class ImageConversion : public ::testing::Test
{
protected:
    ConvertResult convert(const QString &fixture, bool forceEven)
    {
        const QString source = path(fixture);
        const Snapshot before = Snapshot::of(source);
        EXPECT_GT(before.size, 0) << "fixture missing: " << source.toStdString();
        m_progress.clear();
        ConvertResult result =
            MediaConverter::convertImage(clipFor(source, "04_still"), m_folder.path(), forceEven,
                                         [this](double fraction) { m_progress.append(fraction); });
        EXPECT_EQ(Snapshot::of(source), before) << "the source changed";
        return result;
    }

    QString output() const { return m_folder.filePath("04_still.png"); }

    static QImage stored(const QString &file)
    {
        QImageReader reader(file);
        reader.setAutoTransform(false);
        return reader.read();
    }

    QTemporaryDir m_folder;
    QList<double> m_progress;
};

} // namespace

// Even sizes crop the last column and row only; a one-pixel side, an even image and the switch
// turned off keep every pixel. An older file of the output's name is replaced.
TEST_F(ImageConversion, EvenSizesCropTheLastColumnAndRowOnly)
{
    const struct {
        const char *fixture;
        bool forceEven;
        QSize size;
    } rows[] = {{"still_1921x1081.png", true, {1920, 1080}},
                {"still_1920x1080.png", true, {1920, 1080}},
                {"still_1x9.png", true, {1, 9}},
                {"still_33x17.png", false, {33, 17}},
                {"still_33x17.png", true, {32, 16}}};
    for (const auto &row : rows) {
        SCOPED_TRACE(std::string(row.fixture) + (row.forceEven ? " even" : " as it is"));
        writeFile(output(), "an older still");
        const ConvertResult result = convert(row.fixture, row.forceEven);
        ASSERT_TRUE(result) << result.error().description().toStdString();
        EXPECT_EQ(*result, output());
        EXPECT_EQ(m_progress, QList<double>{1.0});
        EXPECT_EQ(entries(m_folder.path()), QStringList{"04_still.png"});
        const QJsonObject video = streams(ffprobe(*result), u"video").value(0);
        EXPECT_EQ(video[u"codec_name"].toString(), "png");
        const QImage source = stored(path(row.fixture)).convertToFormat(QImage::Format_RGB32);
        const QImage written = stored(*result).convertToFormat(QImage::Format_RGB32);
        ASSERT_EQ(written.size(), row.size);
        EXPECT_TRUE(written == source.copy(QRect(QPoint(0, 0), row.size)));
        if (row.size.width() > 1000) {
            // The pattern differs between the kept corner and a shifted copy: the check bites.
            EXPECT_FALSE(written == source.copy(QRect(QPoint(1, 1), row.size)));
        }
    }
}

TEST_F(ImageConversion, SixteenBitStaysSixteenBit)
{
    const ConvertResult result = convert("still16_65x49.png", true);
    ASSERT_TRUE(result) << result.error().description().toStdString();
    const QJsonObject video = streams(ffprobe(*result), u"video").value(0);
    const QString pixelFormat = video[u"pix_fmt"].toString();
    EXPECT_TRUE(pixelFormat == u"rgb48be" || pixelFormat == u"rgba64be")
        << pixelFormat.toStdString();
    const QImage source = stored(path("still16_65x49.png"));
    const QImage written = stored(*result);
    ASSERT_EQ(written.depth(), 64);
    // Every 16-bit sample equal, not just the top 8 bits.
    EXPECT_TRUE(written.convertToFormat(QImage::Format_RGBA64) ==
                source.copy(0, 0, 64, 48).convertToFormat(QImage::Format_RGBA64));
}

TEST_F(ImageConversion, HeicIsDecodedThroughLibheif)
{
    const ConvertResult result = convert("still.heic", true);
    ASSERT_TRUE(result) << result.error().description().toStdString();
    // 400 RGB pixels fill whole 32-bit words: the lines lie without padding.
    const QImage written = stored(*result).convertToFormat(QImage::Format_RGB888);
    const QImage original = stored(path("heic_source.png")).convertToFormat(QImage::Format_RGB888);
    ASSERT_EQ(written.size(), QSize(400, 300));
    ASSERT_EQ(original.size(), written.size());
    // Lossy at quality 90: close to the picture it was made from, channel by channel.
    EXPECT_LT(meanDifference(samples(written), samples(original)), 6.0);
}

TEST_F(ImageConversion, UnreadableImagesAreUnsupported)
{
    for (const char *name : {"garbage.png", "empty.mp4", "missing.png"}) {
        SCOPED_TRACE(name);
        const ConvertResult result = MediaConverter::convertImage(
            clipFor(path(QLatin1String(name)), "04_still"), m_folder.path(), true,
            [this](double fraction) { m_progress.append(fraction); });
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error(), MediaConverterError::unsupported());
    }
    EXPECT_TRUE(m_progress.isEmpty());
    EXPECT_EQ(entries(m_folder.path()), QStringList());
}
