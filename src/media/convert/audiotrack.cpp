#include "audiotrack.h"

#include "codecsteps.h"
#include "convertoutput.h"

#include <algorithm>

namespace {

using CodecSteps::failure;

// PCM takes any number of samples per packet; larger blocks mean fewer, cheaper packets.
constexpr int kPcmBlockSamples = 4096;

bool sameLayout(const AVChannelLayout &a, const AVChannelLayout &b)
{
    return av_channel_layout_compare(&a, &b) == 0;
}

} // namespace

AudioTrack::AudioTrack(AVCodecContext *decoder, const AVStream *source, int64_t origin,
                       ConvertOutput &output, std::stop_token stop)
    : m_decoder(decoder)
    , m_encoder(output.audioEncoder())
    , m_source(source)
    , m_output(output)
    , m_stop(stop)
    , m_origin(origin)
    , m_frameSize(m_encoder->frame_size > 0 ? m_encoder->frame_size : kPcmBlockSamples)
    , m_decoded(av_frame_alloc())
    , m_scratch(av_frame_alloc())
    , m_packet(av_packet_alloc())
    , m_fifo(
          av_audio_fifo_alloc(m_encoder->sample_fmt, m_encoder->ch_layout.nb_channels, m_frameSize))
{}

AudioTrack::~AudioTrack()
{
    av_channel_layout_uninit(&m_resamplerLayout);
}

std::optional<MediaConverterError> AudioTrack::send(const AVPacket *packet)
{
    const int sent = avcodec_send_packet(m_decoder, packet);
    if (sent < 0 && sent != AVERROR_EOF)
        return failure(sent);
    if (auto error = receiveFrames())
        return error;
    if (packet)
        return std::nullopt;
    if (m_resampler) { // the resampler's last buffered samples
        for (;;) {
            const int drained =
                swr_convert(m_resampler.get(), m_scratch->data, m_scratch->nb_samples, nullptr, 0);
            if (drained <= 0)
                break;
            av_audio_fifo_write(m_fifo.get(), reinterpret_cast<void **>(m_scratch->data), drained);
        }
    }
    if (auto error = encodeQueued(true))
        return error;
    if (auto error = CodecSteps::endEncoderInput(m_encoder))
        return error;
    return receivePackets();
}

std::optional<MediaConverterError> AudioTrack::receiveFrames()
{
    return CodecSteps::takeDecodedFrames(m_decoder, m_decoded.get(),
                                         [this](AVFrame *frame) { return queue(frame); });
}

bool AudioTrack::prepareResampler(const AVFrame *decoded)
{
    AVChannelLayout layout{};
    if (decoded->ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
        av_channel_layout_default(&layout, decoded->ch_layout.nb_channels);
    else if (av_channel_layout_copy(&layout, &decoded->ch_layout) < 0)
        return false;
    if (m_resampler && m_resamplerFormat == decoded->format &&
        m_resamplerRate == decoded->sample_rate && sameLayout(layout, m_resamplerLayout)) {
        av_channel_layout_uninit(&layout);
        return true;
    }
    // First frame, or the source changed its channels or rate mid-stream.
    SwrContext *resampler = nullptr;
    const int made = swr_alloc_set_opts2(
        &resampler, &m_encoder->ch_layout, m_encoder->sample_fmt, m_encoder->sample_rate, &layout,
        AVSampleFormat(decoded->format), decoded->sample_rate, 0, nullptr);
    m_resampler.reset(resampler);
    av_channel_layout_uninit(&m_resamplerLayout);
    m_resamplerLayout = layout;
    m_resamplerFormat = decoded->format;
    m_resamplerRate = decoded->sample_rate;
    return made >= 0 && swr_init(m_resampler.get()) >= 0;
}

std::optional<MediaConverterError> AudioTrack::queue(const AVFrame *decoded)
{
    if (!m_fifo || !prepareResampler(decoded))
        return failure(AVERROR(EINVAL));
    if (m_nextPts == AV_NOPTS_VALUE) {
        const int64_t pts =
            decoded->best_effort_timestamp == AV_NOPTS_VALUE ? 0 : decoded->best_effort_timestamp;
        const int64_t start = av_rescale_q(pts, m_source->time_base, m_encoder->time_base) -
                              av_rescale_q(m_origin, AV_TIME_BASE_Q, m_encoder->time_base);
        // Sound before the picture starts is cut, sample-exact; sound that starts later
        // keeps its delay.
        m_dropSamples = std::max<int64_t>(0, -start);
        m_nextPts = std::max<int64_t>(0, start);
    }
    const int room = swr_get_out_samples(m_resampler.get(), decoded->nb_samples);
    if (room > m_scratch->nb_samples || !m_scratch->buf[0]) {
        av_frame_unref(m_scratch.get());
        m_scratch->format = m_encoder->sample_fmt;
        m_scratch->nb_samples = std::max(room, m_frameSize);
        if (av_channel_layout_copy(&m_scratch->ch_layout, &m_encoder->ch_layout) < 0 ||
            av_frame_get_buffer(m_scratch.get(), 0) < 0)
            return failure(AVERROR(ENOMEM));
    }
    const int converted =
        swr_convert(m_resampler.get(), m_scratch->data, m_scratch->nb_samples,
                    const_cast<const uint8_t **>(decoded->extended_data), decoded->nb_samples);
    if (converted < 0)
        return failure(converted);
    if (av_audio_fifo_write(m_fifo.get(), reinterpret_cast<void **>(m_scratch->data), converted) <
        converted)
        return failure(AVERROR(ENOMEM));
    if (m_dropSamples > 0) {
        const int dropped = int(std::min<int64_t>(m_dropSamples, av_audio_fifo_size(m_fifo.get())));
        av_audio_fifo_drain(m_fifo.get(), dropped);
        m_dropSamples -= dropped;
    }
    return encodeQueued(false);
}

std::optional<MediaConverterError> AudioTrack::encodeQueued(bool all)
{
    while (av_audio_fifo_size(m_fifo.get()) >= m_frameSize ||
           (all && av_audio_fifo_size(m_fifo.get()) > 0)) {
        const int count = std::min(av_audio_fifo_size(m_fifo.get()), m_frameSize);
        // A fresh frame each time: the encoder may keep a reference to the one before.
        FrameHandle frame(av_frame_alloc());
        if (!frame)
            return failure(AVERROR(ENOMEM));
        frame->nb_samples = count;
        frame->format = m_encoder->sample_fmt;
        frame->sample_rate = m_encoder->sample_rate;
        if (av_channel_layout_copy(&frame->ch_layout, &m_encoder->ch_layout) < 0 ||
            av_frame_get_buffer(frame.get(), 0) < 0)
            return failure(AVERROR(ENOMEM));
        av_audio_fifo_read(m_fifo.get(), reinterpret_cast<void **>(frame->data), count);
        frame->pts = m_nextPts;
        m_nextPts += count;
        const int sent = avcodec_send_frame(m_encoder, frame.get());
        if (sent < 0)
            return failure(sent);
        if (auto error = receivePackets())
            return error;
    }
    return std::nullopt;
}

std::optional<MediaConverterError> AudioTrack::receivePackets()
{
    for (;;) {
        const int received = avcodec_receive_packet(m_encoder, m_packet.get());
        if (received == AVERROR(EAGAIN) || received == AVERROR_EOF)
            return std::nullopt;
        if (received < 0)
            return failure(received);
        const int written = m_output.writeAudio(m_packet.get());
        av_packet_unref(m_packet.get());
        if (written < 0)
            return failure(written);
        if (m_stop.stop_requested())
            return MediaConverterError::cancelled();
    }
}
