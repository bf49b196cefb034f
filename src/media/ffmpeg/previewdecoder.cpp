#include "previewdecoder.h"

#include "inputfile.h"
#include "media/fitsize.h"
#include "displayturn.h"

#include <QTransform>

#include <cmath>

namespace {

using namespace std::chrono_literals;

// Each read gets a fresh deadline: a preview may run for seconds, but no single read of a
// local file should stall for long.
constexpr auto kReadBudget = 5s;
constexpr int kMaxDecodeErrors = 50;

} // namespace

struct PreviewDecoder::State {
    // Held as the opener's result, built in place: InputFile is moved only inside its own file.
    Result<InputFile> opened;
    const AVStream *stream = nullptr;
    CodecHandle decoder;
    PacketHandle packet{av_packet_alloc()};
    FrameHandle frame{av_frame_alloc()};
    ScaleHandle scaler;
    QSize scalerFrom;
    int scalerFormat = -1;
    QSize box;
    QTransform turn;
    bool draining = false;
    int errors = 0;

    State(const QString &path, std::stop_token stop)
        : opened(InputFile::open(path, std::move(stop), kReadBudget))
    {}
    InputFile &input() { return *opened; }

    QImage convert(const AVFrame *f)
    {
        const AVRational pixel = f->sample_aspect_ratio;
        const double pixelAspect = pixel.num > 0 && pixel.den > 0 ? av_q2d(pixel) : 1.0;
        const QSizeF shown(f->width * pixelAspect, f->height);
        const QSize target = unturnedFitWithin(shown, box, turn);
        if (target.isEmpty())
            return {};
        // One scaler for the whole preview unless the stream changes size mid-way.
        if (!scaler || scalerFrom != QSize(f->width, f->height) || scalerFormat != f->format) {
            scaler.reset(sws_getContext(f->width, f->height, static_cast<AVPixelFormat>(f->format),
                                        target.width(), target.height(), AV_PIX_FMT_RGBA,
                                        SWS_BILINEAR, nullptr, nullptr, nullptr));
            scalerFrom = QSize(f->width, f->height);
            scalerFormat = f->format;
        }
        if (!scaler)
            return {};
        QImage image(target, QImage::Format_RGBA8888);
        if (image.isNull())
            return {};
        uint8_t *planes[4] = {image.bits(), nullptr, nullptr, nullptr};
        int strides[4] = {static_cast<int>(image.bytesPerLine()), 0, 0, 0};
        if (sws_scale(scaler.get(), f->data, f->linesize, 0, f->height, planes, strides) <= 0)
            return {};
        return turn.isIdentity() ? image : image.transformed(turn, Qt::FastTransformation);
    }
};

PreviewDecoder::PreviewDecoder(std::unique_ptr<State> state) : m_state(std::move(state))
{}

PreviewDecoder::~PreviewDecoder() = default;

std::unique_ptr<PreviewDecoder> PreviewDecoder::open(const QString &path, QSize box,
                                                     std::stop_token stop)
{
    auto state = std::make_unique<State>(path, std::move(stop));
    if (!state->opened)
        return nullptr;
    InputFile &input = state->input();
    if (StreamFacts::needsStreamInfo(input.format()) && input.readStreamInfo() < 0)
        return nullptr;
    state->stream = StreamFacts::firstOf(input.format(), AVMEDIA_TYPE_VIDEO);
    if (!state->stream || !state->packet || !state->frame)
        return nullptr;
    const AVCodec *codec = avcodec_find_decoder(state->stream->codecpar->codec_id);
    if (!codec)
        return nullptr;
    state->decoder.reset(avcodec_alloc_context3(codec));
    if (!state->decoder ||
        avcodec_parameters_to_context(state->decoder.get(), state->stream->codecpar) < 0)
        return nullptr;
    state->decoder->pkt_timebase = state->stream->time_base;
    // Playback wants steady frames: let the decoder use two threads (frames come out one or
    // two late, which a preview never notices).
    state->decoder->thread_count = 2;
    if (avcodec_open2(state->decoder.get(), codec, nullptr) < 0)
        return nullptr;
    state->box = box;
    state->turn = StreamFacts::displayTurn(state->stream);
    return std::unique_ptr<PreviewDecoder>(new PreviewDecoder(std::move(state)));
}

double PreviewDecoder::frameRate() const
{
    return StreamFacts::frameRate(m_state->stream);
}

std::optional<PreviewDecoder::Frame> PreviewDecoder::next()
{
    State &s = *m_state;
    const int64_t start = s.stream->start_time != AV_NOPTS_VALUE ? s.stream->start_time : 0;
    const double timeBase = av_q2d(s.stream->time_base);
    for (;;) {
        if (s.input().interrupted())
            return std::nullopt;
        const int received = avcodec_receive_frame(s.decoder.get(), s.frame.get());
        if (received == 0) {
            const int64_t pts = s.frame->best_effort_timestamp;
            Frame out;
            out.seconds = pts == AV_NOPTS_VALUE ? 0.0 : (pts - start) * timeBase;
            out.image = s.convert(s.frame.get());
            av_frame_unref(s.frame.get());
            if (out.image.isNull())
                return std::nullopt;
            return out;
        }
        if (received == AVERROR_EOF || s.draining)
            return std::nullopt;
        // The decoder wants more data ("no frame yet"): feed it the next video packet.
        s.input().extendDeadline(kReadBudget);
        const int read = av_read_frame(s.input().format(), s.packet.get());
        if (read < 0) {
            avcodec_send_packet(s.decoder.get(), nullptr); // flush what it holds
            s.draining = true;
            continue;
        }
        if (s.packet->stream_index != s.stream->index) {
            av_packet_unref(s.packet.get());
            continue;
        }
        const int sent = avcodec_send_packet(s.decoder.get(), s.packet.get());
        av_packet_unref(s.packet.get());
        if (sent < 0 && sent != AVERROR(EAGAIN) && ++s.errors > kMaxDecodeErrors)
            return std::nullopt;
    }
}
