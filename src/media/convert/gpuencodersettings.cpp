// The HAP family (textures the media server's GPU decodes) and ProRes 4444, the ProRes that
// keeps an alpha channel. Beside encodersettings.cpp, which picks between them.
#include "encodersettings.h"

#include <algorithm>

namespace {

// HAP has no rate control: a frame is DXT textures (DXT1 for HAP, DXT5 for HAP Alpha,
// DXT5 in YCoCg for HAP Q) squeezed by Snappy, so quality and size follow from the format
// alone. The encoder takes RGBA only and needs sides that are multiples of the 4 × 4 texture
// block.
constexpr EncoderSettings hapSettings(uint32_t tag, const char *options)
{
    EncoderSettings settings =
        pcmMovieSettings("hap", AV_PIX_FMT_RGBA, tag, FF_PROFILE_UNKNOWN, 0, options);
    settings.blockSize = 4;
    settings.chunked = true;
    return settings;
}

const EncoderSettings kHap = hapSettings(MKTAG('H', 'a', 'p', '1'), "format=hap:compressor=snappy");
const EncoderSettings kHapAlpha =
    hapSettings(MKTAG('H', 'a', 'p', '5'), "format=hap_alpha:compressor=snappy");
const EncoderSettings kHapQ =
    hapSettings(MKTAG('H', 'a', 'p', 'Y'), "format=hap_q:compressor=snappy");

// ProRes 4444 with a 16-bit alpha plane, at the fixed quantiser chosen for ProRes 422: the
// colour planes get the same care, only at full chroma resolution.
const EncoderSettings kProRes4444 =
    pcmMovieSettings("prores_ks", AV_PIX_FMT_YUVA444P10LE, MKTAG('a', 'p', '4', 'h'),
                     FF_PROFILE_PRORES_4444, 5, "profile=4444:alpha_bits=16");

// One chunk per quarter of a 1920 × 1080 picture. A HAP decoder hands each chunk of a frame to
// its own thread for the Snappy stage; media servers run many layers at once, so a quarter of
// HD per thread keeps a 1080p frame on four cores and a 4K frame on all sixteen without
// cutting small clips into chunks too small to be worth a thread. The format allows 64; 16 is
// as many cores as a show machine dedicates to one layer.
constexpr int kPixelsPerChunk = 960 * 540;
constexpr int kMaxChunks = 16;

} // namespace

const EncoderSettings &hapEncoderSettings(ArenaConvertFormat format)
{
    if (format == ArenaConvertFormat::hapAlpha)
        return kHapAlpha;
    if (format == ArenaConvertFormat::hapQ)
        return kHapQ;
    return kHap;
}

const EncoderSettings &proRes4444EncoderSettings()
{
    return kProRes4444;
}

int hapChunkCount(int width, int height)
{
    const qint64 pixels = qint64(std::max(width, 0)) * std::max(height, 0);
    return int(std::clamp<qint64>((pixels + kPixelsPerChunk - 1) / kPixelsPerChunk, 1, kMaxChunks));
}
