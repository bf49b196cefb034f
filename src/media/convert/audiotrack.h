#pragma once

#include "media/convert/mediaconverter.h"
#include "media/ffmpeg/avhandles.h"

#include <optional>
#include <stop_token>

class ConvertOutput;

// Decoded source audio into encoded target packets: converted to the encoder's sample format,
// rate and channels, and cut into the frame size it takes. The first sample keeps its place
// relative to the movie's start; from there samples are counted, so the track stays gapless.
class AudioTrack
{
public:
    // `origin` (in AV_TIME_BASE units) is the source instant that becomes zero in the movie.
    AudioTrack(AVCodecContext *decoder, const AVStream *source, int64_t origin,
               ConvertOutput &output, std::stop_token stop);
    ~AudioTrack();
    AudioTrack(const AudioTrack &) = delete;
    AudioTrack &operator=(const AudioTrack &) = delete;

    // One demuxed packet of the track; null drains everything at the end.
    std::optional<MediaConverterError> send(const AVPacket *packet);

private:
    std::optional<MediaConverterError> receiveFrames();
    std::optional<MediaConverterError> queue(const AVFrame *decoded);
    std::optional<MediaConverterError> encodeQueued(bool all);
    std::optional<MediaConverterError> receivePackets();
    bool prepareResampler(const AVFrame *decoded);

    AVCodecContext *m_decoder;
    AVCodecContext *m_encoder;
    const AVStream *m_source;
    ConvertOutput &m_output;
    std::stop_token m_stop;
    int64_t m_origin; // AV_TIME_BASE units
    int m_frameSize;
    FrameHandle m_decoded;
    FrameHandle m_scratch; // resampler output before it joins the queue
    PacketHandle m_packet;
    ResampleHandle m_resampler;
    AVChannelLayout m_resamplerLayout{};
    int m_resamplerFormat = -1;
    int m_resamplerRate = 0;
    AudioFifoHandle m_fifo;
    int64_t m_nextPts = AV_NOPTS_VALUE; // encoder time base: one tick per sample
    int64_t m_dropSamples = 0;          // leading samples from before the movie's start
};
