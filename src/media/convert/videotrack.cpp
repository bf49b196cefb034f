#include "videotrack.h"

#include "codecsteps.h"
#include "convertoutput.h"

#include "encodersettings.h"
#include "videofilters.h"

extern "C" {
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
}

#include <algorithm>

namespace {

using CodecSteps::failure;

bool isRgb(int format)
{
    const AVPixFmtDescriptor *descriptor = av_pix_fmt_desc_get(AVPixelFormat(format));
    return descriptor && (descriptor->flags & AV_PIX_FMT_FLAG_RGB);
}

// The pixel-format conversion runs in slices on every core: done on the pipeline's own thread
// it would hold up the decoder and encoder threads waiting for it.
ScaleHandle makeScaler(TargetSize from, AVPixelFormat fromFormat, TargetSize to,
                       AVPixelFormat toFormat)
{
    ScaleHandle scale(sws_alloc_context());
    if (!scale)
        return {};
    SwsContext *c = scale.get();
    if (av_opt_set_int(c, "srcw", from.width, 0) < 0 ||
        av_opt_set_int(c, "srch", from.height, 0) < 0 ||
        av_opt_set_int(c, "src_format", fromFormat, 0) < 0 ||
        av_opt_set_int(c, "dstw", to.width, 0) < 0 || av_opt_set_int(c, "dsth", to.height, 0) < 0 ||
        av_opt_set_int(c, "dst_format", toFormat, 0) < 0 ||
        av_opt_set_int(c, "sws_flags", SWS_BICUBIC, 0) < 0 ||
        av_opt_set_int(c, "threads", codecThreadCount(), 0) < 0 ||
        sws_init_context(c, nullptr, nullptr) < 0)
        return {};
    return scale;
}

} // namespace

TargetSize croppedSize(int width, int height, AVPixelFormat target, int blockSize)
{
    const AVPixFmtDescriptor *descriptor = av_pix_fmt_desc_get(target);
    // Even sides at least, whatever the chroma layout: an odd side is a finding of its own, and
    // a converted clip must not come back with one (4:2:2 alone would keep an odd height). A
    // block codec's sides are cut to whole blocks.
    const int block = std::max(blockSize, 1);
    const int columnStep = std::max({2, descriptor ? 1 << descriptor->log2_chroma_w : 1, block});
    const int rowStep = std::max({2, descriptor ? 1 << descriptor->log2_chroma_h : 1, block});
    return {width - width % columnStep, height - height % rowStep};
}

VideoTrack::VideoTrack(AVCodecContext *decoder, const AVStream *source, int64_t origin,
                       ConvertOutput &output, std::stop_token stop, VideoFilters *filters)
    : m_decoder(decoder)
    , m_encoder(output.videoEncoder())
    , m_source(source)
    , m_filters(filters)
    , m_timeBase(filters ? filters->timeBase() : source->time_base)
    , m_output(output)
    , m_stop(stop)
    , m_decoded(av_frame_alloc())
    , m_cropped(av_frame_alloc())
    , m_packet(av_packet_alloc())
    , m_held(av_packet_alloc())
    , m_offset(av_rescale_q(origin, AV_TIME_BASE_Q, m_timeBase))
{
    // For frames that arrive without a duration: one frame at the track's usual rate.
    if (m_encoder->framerate.num > 0 && m_encoder->framerate.den > 0)
        m_defaultDuration =
            std::max<int64_t>(1, av_rescale_q(1, av_inv_q(m_encoder->framerate), m_timeBase));
}

std::optional<MediaConverterError> VideoTrack::send(const AVPacket *packet)
{
    const int sent = avcodec_send_packet(m_decoder, packet);
    if (sent < 0 && sent != AVERROR_EOF)
        return failure(sent);
    if (auto error = receiveFrames())
        return error;
    if (packet)
        return std::nullopt;
    if (m_filters) {
        if (auto error = m_filters->send(nullptr, [this](AVFrame *f) { return encode(f); }))
            return error;
    }
    if (auto error = CodecSteps::endEncoderInput(m_encoder))
        return error;
    return receivePackets();
}

std::optional<MediaConverterError> VideoTrack::receiveFrames()
{
    return CodecSteps::takeDecodedFrames(
        m_decoder, m_decoded.get(), [this](AVFrame *frame) -> std::optional<MediaConverterError> {
            if (auto error = m_filters
                                 ? m_filters->send(frame, [this](AVFrame *f) { return encode(f); })
                                 : encode(frame))
                return error;
            // Cancelling takes effect between frames, also while draining at the end.
            if (m_stop.stop_requested())
                return MediaConverterError::cancelled();
            return std::nullopt;
        });
}

std::optional<MediaConverterError> VideoTrack::encode(AVFrame *decoded)
{
    int64_t pts = decoded->best_effort_timestamp;
    if (pts == AV_NOPTS_VALUE)
        pts = m_lastPts == AV_NOPTS_VALUE ? m_offset : m_lastPts + m_offset + m_lastDuration;
    pts -= m_offset;
    // Encoders and the muxer refuse a timestamp that does not move forward; a repeated one
    // (broken sources have them) moves by one tick instead of losing the frame.
    if (m_lastPts != AV_NOPTS_VALUE && pts <= m_lastPts)
        pts = m_lastPts + 1;
    const int64_t duration = decoded->pkt_duration > 0 ? decoded->pkt_duration : m_defaultDuration;

    AVFrame *frame = convert(decoded);
    if (!frame)
        return failure(AVERROR(ENOMEM));
    frame->pts = pts;
    frame->pict_type = AV_PICTURE_TYPE_NONE; // let the encoder choose its own frame types
    // ProRes writes each frame's own colour description into its header, not the encoder's.
    frame->color_range = m_encoder->color_range;
    frame->colorspace = m_encoder->colorspace;
    frame->color_primaries = m_encoder->color_primaries;
    frame->color_trc = m_encoder->color_trc;
    frame->chroma_location = m_encoder->chroma_sample_location;
    m_durations[pts] = duration;
    const int sent = avcodec_send_frame(m_encoder, frame); // the encoder takes its own reference
    if (sent < 0)
        return failure(sent);
    ++m_framesEncoded;
    m_lastPts = pts;
    m_lastDuration = duration;
    if (m_firstPts == AV_NOPTS_VALUE)
        m_firstPts = pts;
    m_presentationEnd = m_presentationEnd == AV_NOPTS_VALUE
                            ? pts + duration
                            : std::max(m_presentationEnd, pts + duration);
    m_writtenSeconds = double(pts + duration) * av_q2d(m_timeBase);
    return receivePackets();
}

AVFrame *VideoTrack::convert(AVFrame *decoded)
{
    const int width = m_encoder->width;
    const int height = m_encoder->height;
    // The source already has the target's layout: cropping the right and bottom edges only
    // shortens the rows and columns read, so the decoded frame goes in as it is.
    const TargetSize read = croppedSize(decoded->width, decoded->height, m_encoder->pix_fmt,
                                        m_output.settings().blockSize);
    if (decoded->format == m_encoder->pix_fmt && decoded->color_range != AVCOL_RANGE_JPEG &&
        read.width == width && read.height == height) {
        decoded->width = width;
        decoded->height = height;
        return decoded;
    }
    // Read only the part of the source that survives the crop; a source whose size changes
    // mid-stream is scaled to the size the movie started with.
    if (!m_scale || m_scaleWidth != read.width || m_scaleHeight != read.height ||
        m_scaleFormat != decoded->format) {
        m_scale =
            makeScaler(read, AVPixelFormat(decoded->format), {width, height}, m_encoder->pix_fmt);
        if (!m_scale)
            return nullptr;
        m_scaleWidth = read.width;
        m_scaleHeight = read.height;
        m_scaleFormat = decoded->format;
        int *sourceTable = nullptr;
        int *targetTable = nullptr;
        int sourceRange = 0;
        int targetRange = 0;
        int brightness = 0;
        int contrast = 0;
        int saturation = 0;
        sws_getColorspaceDetails(m_scale.get(), &sourceTable, &sourceRange, &targetTable,
                                 &targetRange, &brightness, &contrast, &saturation);
        if (decoded->color_range == AVCOL_RANGE_JPEG)
            sourceRange = 1;
        // RGB sources become YUV with the HD matrix, which is how the movie is tagged.
        const int *matrix = sws_getCoefficients(
            isRgb(decoded->format)
                ? SWS_CS_ITU709
                : (decoded->colorspace == AVCOL_SPC_BT709 ? SWS_CS_ITU709 : SWS_CS_DEFAULT));
        sws_setColorspaceDetails(m_scale.get(), matrix, sourceRange, matrix, 0, brightness,
                                 contrast, saturation);
    }
    AVFrame *target = writableTarget();
    if (!target)
        return nullptr;
    // The crop at the right and bottom edges is only a smaller size over the same planes.
    if (av_frame_ref(m_cropped.get(), decoded) < 0)
        return nullptr;
    m_cropped->width = read.width;
    m_cropped->height = read.height;
    const int scaled = sws_scale_frame(m_scale.get(), target, m_cropped.get());
    av_frame_unref(m_cropped.get());
    if (scaled < 0)
        return nullptr;
    target->sample_aspect_ratio = decoded->sample_aspect_ratio;
    return target;
}

AVFrame *VideoTrack::writableTarget()
{
    // The encoder keeps a reference to each picture it still works on (frame threading), so a
    // picture is written again only when it holds the only reference. Making a held picture
    // writable would copy the old picture into a new buffer just to overwrite it.
    for (FrameHandle &frame : m_converted) {
        if (av_frame_is_writable(frame.get()))
            return frame.get();
    }
    FrameHandle fresh(av_frame_alloc());
    if (!fresh)
        return nullptr;
    fresh->format = m_encoder->pix_fmt;
    fresh->width = m_encoder->width;
    fresh->height = m_encoder->height;
    if (av_frame_get_buffer(fresh.get(), 0) < 0)
        return nullptr;
    // As many as the encoder holds at once; beyond a handful something keeps references it
    // should not, and the oldest picture's buffers are let go rather than kept for ever.
    constexpr size_t kMostKept = 8;
    if (m_converted.size() >= kMostKept)
        m_converted.erase(m_converted.begin());
    m_converted.push_back(std::move(fresh));
    return m_converted.back().get();
}

std::optional<MediaConverterError> VideoTrack::receivePackets()
{
    for (;;) {
        const int received = avcodec_receive_packet(m_encoder, m_packet.get());
        if (received == AVERROR(EAGAIN))
            return std::nullopt;
        if (received == AVERROR_EOF)
            return writeLast();
        if (received < 0)
            return failure(received);
        if (const auto found = m_durations.find(m_packet->pts); found != m_durations.end()) {
            if (m_packet->duration <= 0)
                m_packet->duration = found->second;
            m_durations.erase(found);
        }
        if (m_firstDts == AV_NOPTS_VALUE)
            m_firstDts = m_packet->dts;
        // Each packet is written when the next one arrives: only the last needs a change.
        if (m_held->data) {
            const int written = m_output.writeVideo(m_held.get());
            av_packet_unref(m_held.get());
            if (written < 0)
                return failure(written);
        }
        av_packet_move_ref(m_held.get(), m_packet.get());
        if (m_stop.stop_requested())
            return MediaConverterError::cancelled();
    }
}

std::optional<MediaConverterError> VideoTrack::writeLast()
{
    if (!m_held->data)
        return std::nullopt;
    // The movie's length is the span of its decoding times plus the last sample's duration.
    // An encoder that reorders frames at a variable rate derives decoding times from earlier
    // pictures' times, so that span can differ from the pictures' own; the last sample
    // absorbs the difference and the movie ends where its latest picture ends.
    if (m_held->dts != AV_NOPTS_VALUE && m_firstDts != AV_NOPTS_VALUE &&
        m_presentationEnd != AV_NOPTS_VALUE) {
        const int64_t duration = m_presentationEnd - m_firstPts + m_firstDts - m_held->dts;
        if (duration > 0)
            m_held->duration = duration;
    }
    const int written = m_output.writeVideo(m_held.get());
    av_packet_unref(m_held.get());
    return written < 0 ? std::optional(failure(written)) : std::nullopt;
}
