#include "encodersettings.h"

#include <algorithm>
#include <thread>

// Measured on the 2-core build machine with the ffmpeg 5.1 CLI, 10 s of 1920×1080 at 25 fps:
// "clean" is testsrc2 as H.264 CRF 18 (graphics, like most show content), "noisy" the same with
// strong temporal grain (88 Mbit/s of H.264, a worst case). Quality is PSNR (average of Y, U
// and V) and SSIM against the source, both taken to yuv422p10le. CPU is user + system seconds
// of the whole run, decoding included (decoding alone: 3.0 s clean, 10.9 s noisy); wall time
// on this shared machine varied too much to compare encoders by it.
//
// ProRes 422, clean / noisy:
//   prores_ks default rate control  CPU 48.9 / 113 s   61 / 154 MB   51.6 / 42.5 dB
//                                                      SSIM 0.9989 / 0.9653
//   prores_aw (the fast encoder)    CPU 10.6 / 23.5 s  50 / 237 MB   56.4 / 47.0 dB
//   prores_ks -q:v 4                CPU  9.0 / 25.2 s  53 / 304 MB   58.9 / 49.6 dB
//   prores_ks -q:v 5 (chosen)       CPU  8.6 / 24.3 s  48 / 266 MB   56.6 / 48.1 dB
//                                                      SSIM 0.9996 / 0.9893
//   prores_ks -q:v 6                CPU  8.7 / 23.3 s  45 / 237 MB   55.6 / 47.0 dB
//   prores_ks -q:v 8                CPU  8.4 / 22.6 s  40 / 195 MB   53.8 / 45.1 dB
// The careful encoder's default spends 5× the CPU of the fast one searching a quantiser per
// slice to meet the profile's nominal rate, and on noise it still loses 4.5 dB to the fast
// encoder. With one fixed quantiser prores_ks is cheaper than prores_aw and, at q 5, better
// than both: 2.3× real time on 2 cores for clean material. The price is the rate on extreme
// grain (213 Mbit/s against the nominal 117), which any disk that plays ProRes reads easily.
//
// ProRes 422 LT, clean / noisy:
//   prores_ks default rate control  CPU 58.3 / 98.9 s  46 / 109 MB   47.9 / 40.0 dB
//   prores_aw                       CPU 10.6 / 22.4 s  34 / 137 MB   49.4 / 41.8 dB
//   prores_ks -q:v 7 (chosen)       CPU  8.6 / 20.9 s  35 / 158 MB   50.6 / 42.9 dB
//                                                      SSIM 0.9986 / 0.9640
//   prores_ks -q:v 9                CPU  8.3 / 19.9 s  31 / 124 MB   49.1 / 41.2 dB
// q 7 beats both peers in quality at about the fast encoder's size, and stays about 30 %
// smaller than ProRes 422 as the LT profile promises.
//
// H.264 (libx264, High, CRF 17), clean:
//   preset fast    CPU 17.0 s   10.1 MB   51.68 dB   SSIM 0.99869
//   preset medium  CPU 16.4 s   10.1 MB   51.79 dB   SSIM 0.99871 (chosen)
//   preset slow    CPU 29.8 s   10.0 MB   51.79 dB   SSIM 0.99872
//   medium CRF 16  CPU 19.4 s   10.9 MB   52.66 dB;   CRF 18: 9.4 MB, 50.89 dB
// "slow" buys nothing measurable for 1.8× the time; CRF 17 sits in the middle of the
// visually-lossless range.
namespace {

const EncoderSettings kProRes422 =
    pcmMovieSettings("prores_ks", AV_PIX_FMT_YUV422P10LE, MKTAG('a', 'p', 'c', 'n'),
                     FF_PROFILE_PRORES_STANDARD, 5, "profile=standard");

const EncoderSettings kProRes422LT =
    pcmMovieSettings("prores_ks", AV_PIX_FMT_YUV422P10LE, MKTAG('a', 'p', 'c', 's'),
                     FF_PROFILE_PRORES_LT, 7, "profile=lt");

// AAC at 128 kbit/s per channel is transparent for the native encoder; the movie header goes
// first so that players start reading without a seek to the end.
const EncoderSettings kH264{
    .videoEncoder = "libx264",
    .pixelFormat = AV_PIX_FMT_YUV420P,
    .videoTag = MKTAG('a', 'v', 'c', '1'),
    .profile = FF_PROFILE_H264_HIGH,
    .fixedQuantiser = 0,
    .encoderThreads = ThreadRule::x264,
    .videoOptions = "preset=medium:crf=17:profile=high",
    .audioEncoder = "aac",
    .sampleFormat = AV_SAMPLE_FMT_FLTP,
    .audioTag = MKTAG('m', 'p', '4', 'a'),
    .audioBitRatePerChannel = 128'000,
    .movieHeaderFirst = true,
};

} // namespace

const EncoderSettings &encoderSettings(ArenaConvertFormat format)
{
    switch (format) {
    case ArenaConvertFormat::proRes422LT:
        return kProRes422LT;
    case ArenaConvertFormat::h264:
        return kH264;
    case ArenaConvertFormat::hap:
    case ArenaConvertFormat::hapAlpha:
    case ArenaConvertFormat::hapQ:
        return hapEncoderSettings(format);
    case ArenaConvertFormat::proRes422:
        break;
    }
    return kProRes422;
}

const EncoderSettings &alphaEncoderSettings(ArenaConvertFormat format)
{
    if (format == ArenaConvertFormat::proRes422 || format == ArenaConvertFormat::proRes422LT)
        return proRes4444EncoderSettings();
    if (isHap(format))
        return hapEncoderSettings(ArenaConvertFormat::hapAlpha);
    return encoderSettings(format);
}

int codecThreadCount(ThreadRule rule)
{
    const int cores = int(std::max(1u, std::thread::hardware_concurrency()));
    if (rule == ThreadRule::x264)
        return std::max(1, cores * 3 / 2);
    return cores > 1 ? cores + 1 : 1;
}
