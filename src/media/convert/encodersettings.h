#pragma once

#include "media/convert/convertformat.h"
#include "media/ffmpeg/avhandles.h"

#include <cstdint>

// How many threads a codec gets, by the rule of the library that runs them.
enum class ThreadRule {
    libavcodec, // frame or slice threads of libavcodec: cores + 1, so one waits ready
    x264,       // x264's own frame threads: 1.5 per core, as x264 picks by itself
};

// How one target format is encoded: the single place where encoders and their settings are
// chosen. The reasons and the measurements behind each value are in encodersettings.cpp.
struct EncoderSettings {
    const char *videoEncoder;  // libavcodec encoder name
    AVPixelFormat pixelFormat; // what the encoder is fed; decides which sizes need a crop
    uint32_t videoTag;         // sample entry code in the movie
    int profile;               // FF_PROFILE_*
    int fixedQuantiser;        // > 0: one quantiser for every frame (prores_ks -q:v)
    ThreadRule encoderThreads;
    const char *videoOptions;       // private options, "key=value:key=value"
    const char *audioEncoder;       // libavcodec encoder name
    AVSampleFormat sampleFormat;    // what the audio encoder is fed
    uint32_t audioTag;              // sample entry code in the movie
    int64_t audioBitRatePerChannel; // 0 for PCM
    bool movieHeaderFirst;          // movflags +faststart
    int blockSize = 1;              // sides are cropped to multiples of it (DXT: 4)
    bool chunked = false;           // HAP: frames cut into chunks, counted by hapChunkCount
};

// A QuickTime movie whose sound is kept as PCM, which the media server reads directly: what
// ProRes (prores_ks at one fixed quantiser, measured in encodersettings.cpp) and the HAP family
// share.
constexpr EncoderSettings pcmMovieSettings(const char *videoEncoder, AVPixelFormat pixelFormat,
                                           uint32_t tag, int profile, int quantiser,
                                           const char *options)
{
    return EncoderSettings{
        .videoEncoder = videoEncoder,
        .pixelFormat = pixelFormat,
        .videoTag = tag,
        .profile = profile,
        .fixedQuantiser = quantiser,
        .encoderThreads = ThreadRule::libavcodec,
        .videoOptions = options,
        .audioEncoder = "pcm_s16le",
        .sampleFormat = AV_SAMPLE_FMT_S16,
        .audioTag = MKTAG('s', 'o', 'w', 't'),
        .audioBitRatePerChannel = 0,
        .movieHeaderFirst = false,
    };
}

const EncoderSettings &encoderSettings(ArenaConvertFormat format);
// The settings for a source with an alpha channel: the format's own when it keeps alpha as it
// is, its transparent sibling when it has one (ProRes 4444, HAP Alpha), else the format's own.
const EncoderSettings &alphaEncoderSettings(ArenaConvertFormat format);
// In gpuencodersettings.cpp: the HAP family and ProRes 4444.
const EncoderSettings &hapEncoderSettings(ArenaConvertFormat format);
const EncoderSettings &proRes4444EncoderSettings();
int hapChunkCount(int width, int height);

// Worker threads for one decoder or encoder; libavcodec would use one thread only.
int codecThreadCount(ThreadRule rule = ThreadRule::libavcodec);
