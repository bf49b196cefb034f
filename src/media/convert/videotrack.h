#pragma once

#include "media/convert/mediaconverter.h"
#include "media/ffmpeg/avhandles.h"

#include <map>
#include <optional>
#include <stop_token>
#include <vector>

class ConvertOutput;
class VideoFilters;

// The largest size a target pixel format can carry inside `width` × `height`: odd sides lose
// their last column or row, and a block codec's sides are cut to whole blocks (no scaling). 0
// when nothing is left.
struct TargetSize {
    int width = 0;
    int height = 0;
};
TargetSize croppedSize(int width, int height, AVPixelFormat target, int blockSize = 1);

// Decoded source frames into encoded target packets for the video track. Timestamps pass
// through in the source track's time base, shifted so that the movie starts at zero; they
// are never regenerated, so variable frame rates survive.
class VideoTrack
{
public:
    // `origin` (in AV_TIME_BASE units) is the source instant that becomes zero in the movie.
    // With `filters`, decoded frames pass through them and are timed in their time base.
    VideoTrack(AVCodecContext *decoder, const AVStream *source, int64_t origin,
               ConvertOutput &output, std::stop_token stop, VideoFilters *filters = nullptr);

    // One demuxed packet of the track; null drains the decoder and encoder at the end.
    std::optional<MediaConverterError> send(const AVPacket *packet);
    // How far the written track reaches, in seconds from its start.
    double writtenSeconds() const { return m_writtenSeconds; }
    int64_t framesEncoded() const { return m_framesEncoded; }

private:
    std::optional<MediaConverterError> receiveFrames();
    std::optional<MediaConverterError> encode(AVFrame *frame);
    std::optional<MediaConverterError> receivePackets();
    std::optional<MediaConverterError> writeLast();
    AVFrame *convert(AVFrame *decoded);
    AVFrame *writableTarget();

    AVCodecContext *m_decoder;
    AVCodecContext *m_encoder;
    const AVStream *m_source;
    VideoFilters *m_filters;
    AVRational m_timeBase; // of the frames the encoder gets
    ConvertOutput &m_output;
    std::stop_token m_stop;
    FrameHandle m_decoded;
    // Converted pictures, reused once the encoder has let go of them: a fresh 1080p 4:4:4
    // picture with alpha is 16 MB of new pages per frame, each faulted in by the kernel.
    std::vector<FrameHandle> m_converted;
    FrameHandle m_cropped; // a view of the decoded frame, sized like the target
    PacketHandle m_packet;
    PacketHandle m_held; // the newest encoded packet, written once the next one exists
    ScaleHandle m_scale;
    int m_scaleWidth = 0;
    int m_scaleHeight = 0;
    int m_scaleFormat = -1;
    int64_t m_offset = 0;
    int64_t m_lastPts = AV_NOPTS_VALUE;
    int64_t m_lastDuration = 0;
    int64_t m_defaultDuration = 1;
    int64_t m_firstPts = AV_NOPTS_VALUE;
    int64_t m_firstDts = AV_NOPTS_VALUE;
    int64_t m_presentationEnd = AV_NOPTS_VALUE; // where the latest-ending picture ends
    // Frame durations by timestamp: encoders that reorder (H.264) hand packets back without
    // them, and the movie's last sample needs one.
    std::map<int64_t, int64_t> m_durations;
    double m_writtenSeconds = 0;
    int64_t m_framesEncoded = 0;
};
