#include "alphachannel.h"

extern "C" {
#include <libavutil/dict.h>
#include <libavutil/pixdesc.h>
}

namespace AlphaChannel {

namespace {

// A known pixel format with an alpha plane (raw video, or a format the stream-info read
// found). Palettes count as opaque: their alpha is almost never used in video.
bool formatHasAlpha(int format)
{
    if (format < 0)
        return false;
    const AVPixFmtDescriptor *descriptor = av_pix_fmt_desc_get(AVPixelFormat(format));
    return descriptor && (descriptor->flags & AV_PIX_FMT_FLAG_ALPHA) &&
           !(descriptor->flags & AV_PIX_FMT_FLAG_PAL);
}

// HAP Alpha (DXT5), HAP Q Alpha (YCoCg plus an alpha texture) and the alpha-only texture.
bool isHapWithAlpha(uint32_t tag)
{
    return tag == MKTAG('H', 'a', 'p', '5') || tag == MKTAG('H', 'a', 'p', 'M') ||
           tag == MKTAG('H', 'a', 'p', 'A');
}

// QuickTime's sample description gives a picture depth; 32 means "with alpha" for the codecs
// whose pixel format follows from it. ProRes 4444 says so only there: its decoder would have
// to read a frame header to learn it.
bool depthSaysAlpha(const AVCodecParameters *codec)
{
    if (codec->bits_per_coded_sample != 32)
        return false;
    switch (codec->codec_id) {
    case AV_CODEC_ID_PRORES:
    case AV_CODEC_ID_QTRLE:
    case AV_CODEC_ID_PNG:
    case AV_CODEC_ID_TIFF:
    case AV_CODEC_ID_TARGA:
    case AV_CODEC_ID_RAWVIDEO:
        return true;
    default:
        return false;
    }
}

// WebM keeps VP8 and VP9 alpha in a side stream the track header announces; the Matroska
// demuxer passes the announcement on as the stream's "alpha_mode" tag.
bool matroskaAnnouncesAlpha(const AVStream *stream)
{
    const AVDictionaryEntry *entry = av_dict_get(stream->metadata, "alpha_mode", nullptr, 0);
    return entry && entry->value && entry->value[0] == '1' && entry->value[1] == '\0';
}

} // namespace

bool inStream(const AVStream *stream)
{
    if (!stream || !stream->codecpar)
        return false;
    const AVCodecParameters *codec = stream->codecpar;
    return formatHasAlpha(codec->format) || isHapWithAlpha(codec->codec_tag) ||
           depthSaysAlpha(codec) || matroskaAnnouncesAlpha(stream);
}

} // namespace AlphaChannel
