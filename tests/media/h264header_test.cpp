// The H.264 sequence-header reader against headers the x264 encoder wrote, whose fields the
// fixture scripts checked with FFmpeg's own header tracer.
#include "media/ffmpeg/avhandles.h"
#include "media/ffmpeg/h264header.h"
#include "media/ffmpeg/inputfile.h"

#include <QDir>

#include <gtest/gtest.h>

namespace {

std::vector<uint8_t> recordOf(const QString &path)
{
    Result<InputFile> input = InputFile::open(path, {}, std::chrono::seconds(5));
    EXPECT_TRUE(input) << path.toStdString();
    if (!input)
        return {};
    const AVCodecParameters *codec = input->format()->streams[0]->codecpar;
    return {codec->extradata, codec->extradata + codec->extradata_size};
}

} // namespace

TEST(H264Header, FramesOnlyWhenTheHeaderSettlesItAndNeverFromACutRecord)
{
    const QDir media(QStringLiteral(CUEBOX_MEDIA_FIXTURES));
    const QDir traps(QStringLiteral(CUEBOX_STAGETRAP_FIXTURES));
    const struct {
        QString path;
        bool framesOnly;
    } rows[] = {
        {media.filePath("h264.mov"), true},
        {media.filePath("odd.mov"), true}, // High 4:4:4: chroma and bit depths come first
        {traps.filePath("vfr.mkv"), true}, // Matroska keeps the same record
        {traps.filePath("hrd_h264.mp4"), true},
        {traps.filePath("picstruct_h264.mp4"), false}, // pictures may say fields
        {traps.filePath("interlaced_h264.mp4"), false},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.path.toStdString());
        const std::vector<uint8_t> record = recordOf(row.path);
        ASSERT_GT(record.size(), 8u);
        EXPECT_EQ(H264Header::framesOnly(record), row.framesOnly);
        // A record cut anywhere inside its sequence header never settles anything.
        const size_t headerEnd = 8 + (size_t(record[6]) << 8 | record[7]);
        for (size_t cut = 0; cut < record.size(); ++cut) {
            const bool whole = cut >= headerEnd && row.framesOnly;
            ASSERT_EQ(H264Header::framesOnly({record.data(), cut}), whole) << cut;
        }
    }
    EXPECT_FALSE(H264Header::framesOnly(std::vector<uint8_t>(64, 0xff)));
}
