#include "framegrabber.h"

#include "inputfile.h"
#include "media/fitsize.h"
#include "displayturn.h"

#include <QTransform>

#include <cmath>

namespace FrameGrabber {

namespace {

using namespace std::chrono_literals;

// Opening, seeking and decoding up to a few dozen frames of a local file; a stalled share or a
// hostile file gives up here instead of holding a pool thread.
constexpr auto kGrabBudget = 10s;
// A long GOP or a file without an index can leave the seek far before the target.
constexpr int kMaxPackets = 3000;
constexpr int kMaxDecodeErrors = 50;

CodecHandle openDecoder(const AVStream *stream)
{
    const AVCodec *decoder = avcodec_find_decoder(stream->codecpar->codec_id);
    if (!decoder)
        return nullptr;
    CodecHandle context(avcodec_alloc_context3(decoder));
    if (!context || avcodec_parameters_to_context(context.get(), stream->codecpar) < 0)
        return nullptr;
    context->pkt_timebase = stream->time_base;
    // One thread: frame threading delays output by a frame per thread, and the cache already
    // decodes two files at once.
    context->thread_count = 1;
    if (avcodec_open2(context.get(), decoder, nullptr) < 0)
        return nullptr;
    return context;
}

// Decodes forward from where the demuxer stands to the frame on screen at `target` (in the
// stream's time base): the last one that starts at or before it. The stream's last frame when
// it ends first.
FrameHandle decodeUntil(InputFile &input, const AVStream *stream, AVCodecContext *decoder,
                        int64_t target)
{
    FrameHandle frame(av_frame_alloc());
    FrameHandle shown(av_frame_alloc());
    PacketHandle packet(av_packet_alloc());
    if (!frame || !shown || !packet)
        return nullptr;
    bool haveShown = false;
    int errors = 0;
    const auto drain = [&]() -> bool { // true once `shown` is the frame at the target
        while (avcodec_receive_frame(decoder, frame.get()) == 0) {
            const int64_t time = frame->best_effort_timestamp;
            if (time != AV_NOPTS_VALUE && time > target && haveShown)
                return true; // the one before is still on screen at the target
            av_frame_unref(shown.get());
            av_frame_move_ref(shown.get(), frame.get());
            haveShown = true;
            if (time != AV_NOPTS_VALUE && time >= target)
                return true;
        }
        return false;
    };
    for (int packets = 0; packets < kMaxPackets && !input.interrupted(); ++packets) {
        const int read = av_read_frame(input.format(), packet.get());
        if (read < 0)
            break; // the end, or a broken tail: flush what the decoder holds
        if (packet->stream_index != stream->index) {
            av_packet_unref(packet.get());
            continue;
        }
        const int sent = avcodec_send_packet(decoder, packet.get());
        av_packet_unref(packet.get());
        if (sent < 0 && sent != AVERROR(EAGAIN) && ++errors > kMaxDecodeErrors)
            return nullptr;
        if (drain())
            return shown;
    }
    if (input.interrupted())
        return nullptr;
    avcodec_send_packet(decoder, nullptr);
    drain();
    if (!haveShown)
        return nullptr;
    return shown;
}

QImage toImage(const AVFrame *frame, QSizeF shown, QSize box, const QTransform &turn)
{
    // Fit the turned picture into the box, then scale the unturned frame to the matching size.
    const QSize target = unturnedFitWithin(shown, box, turn);
    if (target.isEmpty())
        return {};
    const auto format = static_cast<AVPixelFormat>(frame->format);
    ScaleHandle scaler(sws_getContext(frame->width, frame->height, format, target.width(),
                                      target.height(), AV_PIX_FMT_RGBA, SWS_AREA, nullptr, nullptr,
                                      nullptr));
    if (!scaler)
        return {};
    QImage image(target, QImage::Format_RGBA8888);
    if (image.isNull())
        return {};
    uint8_t *planes[4] = {image.bits(), nullptr, nullptr, nullptr};
    int strides[4] = {static_cast<int>(image.bytesPerLine()), 0, 0, 0};
    if (sws_scale(scaler.get(), frame->data, frame->linesize, 0, frame->height, planes, strides) <=
        0)
        return {};
    if (turn.isIdentity())
        return image;
    return image.transformed(turn, Qt::SmoothTransformation);
}

} // namespace

QImage frameAt(const QString &path, double seconds, QSize box, std::stop_token stop)
{
    Result<InputFile> input = InputFile::open(path, std::move(stop), kGrabBudget);
    if (!input)
        return {};
    if (StreamFacts::needsStreamInfo(input->format()) && input->readStreamInfo() < 0)
        return {};
    const AVStream *stream = StreamFacts::firstOf(input->format(), AVMEDIA_TYPE_VIDEO);
    if (!stream || stream->time_base.num <= 0 || stream->time_base.den <= 0)
        return {};
    CodecHandle decoder = openDecoder(stream);
    if (!decoder)
        return {};

    const int64_t start = stream->start_time != AV_NOPTS_VALUE ? stream->start_time : 0;
    const int64_t target = start + av_rescale_q(std::llround(seconds * AV_TIME_BASE),
                                                AV_TIME_BASE_Q, stream->time_base);
    // Back to the keyframe at or before the target; a file without an index is read from
    // where it stands, which is its start.
    if (av_seek_frame(input->format(), stream->index, target, AVSEEK_FLAG_BACKWARD) >= 0)
        avcodec_flush_buffers(decoder.get());

    const FrameHandle frame = decodeUntil(*input, stream, decoder.get(), target);
    if (!frame || frame->width <= 0 || frame->height <= 0)
        return {};
    // Non-square pixels are shown at their display aspect.
    const AVRational pixel = frame->sample_aspect_ratio;
    const double pixelAspect = pixel.num > 0 && pixel.den > 0 ? av_q2d(pixel) : 1.0;
    const QSizeF shown(frame->width * pixelAspect, frame->height);
    return toImage(frame.get(), shown, box, StreamFacts::displayTurn(stream));
}

} // namespace FrameGrabber
