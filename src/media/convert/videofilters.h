#pragma once

#include "media/convert/mediaconverter.h"
#include "media/ffmpeg/avhandles.h"
#include "media/mediaprobe.h"

#include <functional>
#include <optional>

struct AVFilterContext;
struct AVFilterGraph;
struct FilterLibrary;

// What a conversion changes in the pictures to take a stage trap out of a clip. A clip without
// traps gets no fix and its frames go from the decoder to the encoder as before.
struct VideoFixes {
    AVRational constantRate{0, 1}; // num > 0: a variable timing becomes this constant rate
    bool deinterlace = false;
    bool toneMap = false; // HDR (PQ or HLG) to SDR BT.709
    bool any() const { return constantRate.num > 0 || deinterlace || toneMap; }
};

// The fixes for the traps the probe reports in `facts`.
VideoFixes videoFixes(const VideoFacts &facts);

// The common show rate (23.976, 24, 25, 29.97, 30, 50, 59.94, 60) nearest to `average`.
AVRational nearestCommonRate(double average);

// A libavfilter graph between the video decoder and encoder that applies the fixes. Filtered
// frames carry their time in timeBase() and have best_effort_timestamp and pkt_duration set as
// a decoded frame would.
class VideoFilters
{
public:
    using Take = std::function<std::optional<MediaConverterError>(AVFrame *)>;

    VideoFilters();
    ~VideoFilters();
    VideoFilters(const VideoFilters &) = delete;
    VideoFilters &operator=(const VideoFilters &) = delete;

    // A graph for frames like the decoder's, in `timeBase`, ending in `target` pixels.
    std::optional<MediaConverterError> open(const VideoFixes &fixes, const AVCodecContext *decoder,
                                            AVRational timeBase, AVPixelFormat target);
    const VideoFixes &fixes() const { return m_fixes; }
    // Times the encoder like the filtered frames and states what the fixes made of them:
    // a constant rate, progressive frames, BT.709 colours.
    void tagEncoder(AVCodecContext *encoder) const;
    AVRational timeBase() const { return m_outputTimeBase; }

    // One decoded frame (null at the end of the track); every frame that comes out goes to
    // `take`, which may change it but does not keep it.
    std::optional<MediaConverterError> send(AVFrame *frame, const Take &take);

private:
    std::optional<MediaConverterError> build(const AVFrame *like);
    std::optional<MediaConverterError> drain(const Take &take);
    std::optional<MediaConverterError> pull(const Take &take);

    VideoFixes m_fixes;
    const AVCodecContext *m_decoder = nullptr;
    AVRational m_inputTimeBase{1, 1};
    AVRational m_outputTimeBase{1, 1};
    AVPixelFormat m_target = AV_PIX_FMT_NONE;
    const FilterLibrary *m_library = nullptr;
    AVFilterGraph *m_graph = nullptr;
    AVFilterContext *m_source = nullptr;
    AVFilterContext *m_sink = nullptr;
    int m_width = 0;
    int m_height = 0;
    int m_format = -1;
    int64_t m_nextPts = AV_NOPTS_VALUE;
    FrameHandle m_filtered;
};
