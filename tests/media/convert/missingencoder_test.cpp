// Some distributions build FFmpeg without libx264: that format then cannot start at all, and
// the conversion says so in the words the rest of the app uses for it.
#include "media/convert/convertoutput.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(ConvertOutput, MissingEncoderMeansNoExportSession)
{
    QTemporaryDir dir;
    EncoderSettings settings = encoderSettings(ArenaConvertFormat::h264);
    settings.videoEncoder = "no_such_encoder";
    ConvertOutput output;
    EXPECT_EQ(output.create(dir.filePath("x.mov"), settings),
              MediaConverterError::exportFailed("Export session unavailable"));
    ConvertOutput prores;
    EXPECT_EQ(prores.create(dir.filePath("y.mov"), encoderSettings(ArenaConvertFormat::proRes422)),
              std::nullopt);
}
