#include "streamfacts.h"

#include <cmath>
#include <cstring>

namespace StreamFacts {

namespace {

bool counts(const AVStream *stream, AVMediaType type)
{
    if (stream->codecpar->codec_type != type)
        return false;
    return type != AVMEDIA_TYPE_VIDEO || !(stream->disposition & AV_DISPOSITION_ATTACHED_PIC);
}

bool isKnown(AVRational rate)
{
    return rate.num > 0 && rate.den > 0;
}

} // namespace

const AVStream *firstOf(const AVFormatContext *format, AVMediaType type)
{
    for (unsigned int i = 0; i < format->nb_streams; ++i) {
        if (counts(format->streams[i], type))
            return format->streams[i];
    }
    return nullptr;
}

int countOf(const AVFormatContext *format, AVMediaType type)
{
    int count = 0;
    for (unsigned int i = 0; i < format->nb_streams; ++i)
        count += counts(format->streams[i], type) ? 1 : 0;
    return count;
}

std::optional<DisplayMatrix> displayMatrix(const AVStream *stream)
{
    size_t size = 0;
    const uint8_t *data = av_stream_get_side_data(stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
    if (!data || size < 9 * sizeof(int32_t))
        return std::nullopt;
    int32_t m[9];
    std::memcpy(m, data, sizeof m);
    // Laid out as QuickTime stores it, rows (a b u) (c d v) (tx ty w); a..ty are 16.16 fixed
    // point. The perspective column u v w is always 0 0 1 in practice and is left out.
    const auto fixed = [](int32_t v) { return static_cast<double>(v) / 65536.0; };
    DisplayMatrix matrix{fixed(m[0]), fixed(m[1]), fixed(m[3]),
                         fixed(m[4]), fixed(m[6]), fixed(m[7])};
    const double determinant = matrix.a * matrix.d - matrix.b * matrix.c;
    if (determinant == 0 || !std::isfinite(determinant))
        return std::nullopt;
    return matrix;
}

float frameRate(const AVStream *stream)
{
    if (isKnown(stream->avg_frame_rate))
        return static_cast<float>(av_q2d(stream->avg_frame_rate));
    if (isKnown(stream->r_frame_rate))
        return static_cast<float>(av_q2d(stream->r_frame_rate));
    return 0;
}

bool needsStreamInfo(const AVFormatContext *format)
{
    if ((format->ctx_flags & AVFMTCTX_NOHEADER) || format->nb_streams == 0)
        return true;
    if (format->duration == AV_NOPTS_VALUE)
        return true;
    if (const AVStream *video = firstOf(format, AVMEDIA_TYPE_VIDEO)) {
        const AVCodecParameters *codec = video->codecpar;
        if (codec->width <= 0 || codec->height <= 0 || codec->codec_id == AV_CODEC_ID_NONE)
            return true;
        if (frameRate(video) <= 0)
            return true;
    }
    if (const AVStream *audio = firstOf(format, AVMEDIA_TYPE_AUDIO))
        return audio->codecpar->codec_id == AV_CODEC_ID_NONE;
    return false;
}

} // namespace StreamFacts
