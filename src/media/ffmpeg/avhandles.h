#pragma once

// Owners for FFmpeg objects. FFmpeg frees through T**, so each deleter passes &p. Only files in
// src/media may include this header: no AV* type leaves the media layer.
extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/frame.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <QString>

#include <memory>

struct FormatCloser {
    void operator()(AVFormatContext *p) const { avformat_close_input(&p); }
};
struct OutputFormatFreer { // a muxing context: its pb is closed by the owner first
    void operator()(AVFormatContext *p) const { avformat_free_context(p); }
};
struct CodecFreer {
    void operator()(AVCodecContext *p) const { avcodec_free_context(&p); }
};
struct FrameFreer {
    void operator()(AVFrame *p) const { av_frame_free(&p); }
};
struct PacketFreer {
    void operator()(AVPacket *p) const { av_packet_free(&p); }
};
struct ScaleFreer {
    void operator()(SwsContext *p) const { sws_freeContext(p); }
};
struct ResampleFreer {
    void operator()(SwrContext *p) const { swr_free(&p); }
};

using FormatHandle = std::unique_ptr<AVFormatContext, FormatCloser>;
using OutputFormatHandle = std::unique_ptr<AVFormatContext, OutputFormatFreer>;
using CodecHandle = std::unique_ptr<AVCodecContext, CodecFreer>;
using FrameHandle = std::unique_ptr<AVFrame, FrameFreer>;
using PacketHandle = std::unique_ptr<AVPacket, PacketFreer>;
using ScaleHandle = std::unique_ptr<SwsContext, ScaleFreer>;
using ResampleHandle = std::unique_ptr<SwrContext, ResampleFreer>;

// FFmpeg's own text for an error code ("Invalid data found when processing input").
inline QString avErrorText(int error)
{
    char buffer[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(error, buffer, sizeof buffer);
    return QString::fromUtf8(buffer);
}

struct DictionaryFreer {
    void operator()(AVDictionary *p) const { av_dict_free(&p); }
};
// An option list. FFmpeg swaps it through AVDictionary** for the options it did not use, so a
// caller releases it for the call and takes the leftovers back at once.
using DictionaryHandle = std::unique_ptr<AVDictionary, DictionaryFreer>;

extern "C" {
#include <libavutil/audio_fifo.h>
}
struct AudioFifoFreer {
    void operator()(AVAudioFifo *p) const { av_audio_fifo_free(p); }
};
// Samples waiting for an encoder that takes fixed-size frames (AAC: 1024 per frame).
using AudioFifoHandle = std::unique_ptr<AVAudioFifo, AudioFifoFreer>;
