#include "videofilters.h"

#include "codecsteps.h"
#include "filterlibrary.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <cmath>

namespace {

using CodecSteps::failure;

constexpr AVRational kCommonRates[] = {{24000, 1001}, {24, 1}, {25, 1},       {30000, 1001},
                                       {30, 1},       {50, 1}, {60000, 1001}, {60, 1}};

// One frame out per frame in (a field-rate output would double the clip's rate behind the
// operator's back); every frame is woven, since the probe has already found the track
// interlaced and a frame the encoder forgot to flag would otherwise keep its combs.
constexpr const char *kDeinterlace = "bwdif=mode=send_frame:parity=auto:deint=all";

// Linear light at 100 nits reference white, tone-mapped, back to BT.709. Mobius leaves the
// part of the picture within SDR range linear and rolls off only what lies above it; measured
// on a PQ copy of an SDR pattern (mean luma 122.7), mobius gave 108.5 and a 10-90 % luma spread
// of 138 codes, hable 83.0 (the whole picture a third darker), untouched PQ 96.3 with a spread
// of 61 (the flat grey an operator sees on stage).
constexpr const char *kToneMap = "zscale=t=linear:npl=100,format=gbrpf32le,zscale=p=bt709,"
                                 "tonemap=tonemap=mobius:desat=0,zscale=t=bt709:m=bt709:r=tv";

QByteArray graphText(const VideoFixes &fixes, AVPixelFormat target)
{
    QByteArrayList steps;
    if (fixes.deinterlace)
        steps.append(kDeinterlace);
    if (fixes.toneMap) {
        steps.append(kToneMap);
        steps.append(QByteArray("format=") + av_get_pix_fmt_name(target));
    }
    // Last, on whole progressive SDR frames: the nearest frame to each beat of the new rate,
    // repeated or dropped, so that picture and sound stay where they were in time.
    if (fixes.constantRate.num > 0)
        steps.append(QByteArray("fps=fps=%1/%2:round=near")
                         .replace("%1", QByteArray::number(fixes.constantRate.num))
                         .replace("%2", QByteArray::number(fixes.constantRate.den)));
    return steps.join(',');
}

} // namespace

VideoFixes videoFixes(const VideoFacts &facts)
{
    VideoFixes fixes;
    if (facts.variableFrameRate && facts.averageFrameRate > 0)
        fixes.constantRate = nearestCommonRate(facts.averageFrameRate);
    fixes.deinterlace = facts.interlaced;
    fixes.toneMap = facts.hdrTransfer.has_value();
    return fixes;
}

AVRational nearestCommonRate(double average)
{
    AVRational best = kCommonRates[0];
    for (AVRational rate : kCommonRates) {
        if (std::abs(av_q2d(rate) - average) < std::abs(av_q2d(best) - average))
            best = rate;
    }
    return best;
}

void VideoFilters::tagEncoder(AVCodecContext *encoder) const
{
    encoder->time_base = m_outputTimeBase;
    if (m_fixes.constantRate.num > 0)
        encoder->framerate = m_fixes.constantRate;
    if (m_fixes.deinterlace)
        encoder->field_order = AV_FIELD_PROGRESSIVE;
    if (m_fixes.toneMap) {
        encoder->colorspace = AVCOL_SPC_BT709;
        encoder->color_primaries = AVCOL_PRI_BT709;
        encoder->color_trc = AVCOL_TRC_BT709;
    }
}

VideoFilters::VideoFilters() : m_filtered(av_frame_alloc())
{}

VideoFilters::~VideoFilters()
{
    if (m_library)
        m_library->graphFree(&m_graph);
}

std::optional<MediaConverterError> VideoFilters::open(const VideoFixes &fixes,
                                                      const AVCodecContext *decoder,
                                                      AVRational timeBase, AVPixelFormat target)
{
    m_fixes = fixes;
    m_decoder = decoder;
    m_inputTimeBase = timeBase;
    m_target = target;
    if (!m_filtered)
        return failure(AVERROR(ENOMEM));
    QString why;
    m_library = FilterLibrary::get(&why);
    if (!m_library)
        return MediaConverterError::exportFailed(why);
    FrameHandle like(av_frame_alloc());
    if (!like)
        return failure(AVERROR(ENOMEM));
    like->width = decoder->width;
    like->height = decoder->height;
    like->format = decoder->pix_fmt;
    like->sample_aspect_ratio = decoder->sample_aspect_ratio;
    return build(like.get());
}

std::optional<MediaConverterError> VideoFilters::build(const AVFrame *like)
{
    m_library->graphFree(&m_graph);
    m_graph = m_library->graphAlloc();
    if (!m_graph)
        return failure(AVERROR(ENOMEM));
    const AVRational sar =
        like->sample_aspect_ratio.num > 0 ? like->sample_aspect_ratio : AVRational{1, 1};
    const QByteArray arguments = QStringLiteral("video_size=%1x%2:pix_fmt=%3:time_base=%4/%5:"
                                                "pixel_aspect=%6/%7")
                                     .arg(like->width)
                                     .arg(like->height)
                                     .arg(like->format)
                                     .arg(m_inputTimeBase.num)
                                     .arg(m_inputTimeBase.den)
                                     .arg(sar.num)
                                     .arg(sar.den)
                                     .toLatin1();
    int error = m_library->graphCreateFilter(&m_source, m_library->getByName("buffer"), "in",
                                             arguments.constData(), nullptr, m_graph);
    if (error >= 0)
        error = m_library->graphCreateFilter(&m_sink, m_library->getByName("buffersink"), "out",
                                             nullptr, nullptr, m_graph);
    if (error < 0)
        return failure(error);
    AVFilterInOut *outputs = m_library->inOutAlloc();
    AVFilterInOut *inputs = m_library->inOutAlloc();
    if (outputs && inputs) {
        outputs->name = av_strdup("in");
        outputs->filter_ctx = m_source;
        inputs->name = av_strdup("out");
        inputs->filter_ctx = m_sink;
        error = m_library->graphParse(m_graph, graphText(m_fixes, m_target).constData(), &inputs,
                                      &outputs, nullptr);
    } else {
        error = AVERROR(ENOMEM);
    }
    m_library->inOutFree(&inputs);
    m_library->inOutFree(&outputs);
    if (error >= 0)
        error = m_library->graphConfig(m_graph, nullptr);
    if (error < 0)
        return failure(error);
    m_outputTimeBase = m_library->sinkTimeBase(m_sink);
    m_width = like->width;
    m_height = like->height;
    m_format = like->format;
    return std::nullopt;
}

std::optional<MediaConverterError> VideoFilters::send(AVFrame *frame, const Take &take)
{
    if (frame &&
        (frame->width != m_width || frame->height != m_height || frame->format != m_format)) {
        // A source that changes its picture size or layout mid-stream: the filters keep
        // pictures of the old shape, so the graph ends and a new one starts at this frame.
        if (auto error = drain(take))
            return error;
        if (auto error = build(frame))
            return error;
    }
    if (!frame)
        return drain(take);
    if (m_fixes.toneMap) {
        // A picture whose own header is silent takes the colours the container states.
        if (frame->color_trc == AVCOL_TRC_UNSPECIFIED)
            frame->color_trc = m_decoder->color_trc;
        if (frame->color_primaries == AVCOL_PRI_UNSPECIFIED)
            frame->color_primaries = m_decoder->color_primaries;
        if (frame->colorspace == AVCOL_SPC_UNSPECIFIED)
            frame->colorspace = m_decoder->colorspace;
    }
    // An unstamped picture follows the one before it, as the encoder side would place it.
    frame->pts =
        frame->best_effort_timestamp != AV_NOPTS_VALUE ? frame->best_effort_timestamp : m_nextPts;
    if (frame->pts != AV_NOPTS_VALUE)
        m_nextPts = frame->pts + std::max<int64_t>(1, frame->pkt_duration);
    const int added = m_library->sourceAddFrame(m_source, frame, AV_BUFFERSRC_FLAG_KEEP_REF);
    if (added < 0)
        return failure(added);
    return pull(take);
}

std::optional<MediaConverterError> VideoFilters::drain(const Take &take)
{
    const int ended = m_library->sourceAddFrame(m_source, nullptr, 0);
    if (ended < 0 && ended != AVERROR_EOF)
        return failure(ended);
    return pull(take);
}

std::optional<MediaConverterError> VideoFilters::pull(const Take &take)
{
    const int64_t rateFrame =
        m_fixes.constantRate.num > 0
            ? av_rescale_q(1, av_inv_q(m_fixes.constantRate), m_outputTimeBase)
            : 0;
    for (;;) {
        const int got = m_library->sinkGetFrame(m_sink, m_filtered.get());
        if (got == AVERROR(EAGAIN) || got == AVERROR_EOF)
            return std::nullopt;
        if (got < 0)
            return failure(got);
        AVFrame *out = m_filtered.get();
        // Filters move pts only; the encoder side reads the decoder's fields.
        out->best_effort_timestamp = out->pts;
        out->pkt_duration =
            rateFrame > 0 ? rateFrame
                          : av_rescale_q(out->pkt_duration, m_inputTimeBase, m_outputTimeBase);
        std::optional<MediaConverterError> error = take(out);
        av_frame_unref(out);
        if (error)
            return error;
    }
}
