#include "convertoutput.h"

#include "codecsteps.h"
#include "videofilters.h"

#include <QFile>

extern "C" {
#include <libavutil/opt.h>
}

namespace {

using CodecSteps::failure;

// The encoder's own rates when it lists them (AAC does), else the source's rate.
int pickSampleRate(const AVCodec *codec, int sourceRate)
{
    if (!codec->supported_samplerates)
        return sourceRate;
    for (const int *rate = codec->supported_samplerates; *rate; ++rate) {
        if (*rate == sourceRate)
            return sourceRate;
    }
    return 48'000;
}

} // namespace

ConvertOutput::~ConvertOutput()
{
    if (m_format && m_format->pb)
        avio_closep(&m_format->pb);
}

std::optional<MediaConverterError> ConvertOutput::create(const QString &path,
                                                         const EncoderSettings &settings)
{
    m_settings = &settings;
    m_path = path;
    // An FFmpeg built without this format's encoder (Debian's without libx264, say) cannot
    // start the conversion at all.
    if (!avcodec_find_encoder_by_name(settings.videoEncoder))
        return MediaConverterError::exportFailed(QStringLiteral("Export session unavailable"));
    AVFormatContext *format = nullptr;
    const int made = avformat_alloc_output_context2(&format, nullptr, "mov",
                                                    QFile::encodeName(path).constData());
    if (made < 0)
        return failure(made);
    m_format.reset(format);
    return std::nullopt;
}

std::optional<MediaConverterError> ConvertOutput::openVideo(AVFormatContext *source,
                                                            const AVStream *sourceStream,
                                                            const AVCodecContext *decoder,
                                                            int width, int height, bool sourceIsRgb,
                                                            const VideoFilters *filters)
{
    const AVCodec *codec = avcodec_find_encoder_by_name(m_settings->videoEncoder);
    if (!codec)
        return MediaConverterError::exportFailed(QStringLiteral("Export session unavailable"));
    m_videoEncoder.reset(avcodec_alloc_context3(codec));
    if (!m_videoEncoder)
        return failure(AVERROR(ENOMEM));
    AVCodecContext *encoder = m_videoEncoder.get();
    encoder->width = width;
    encoder->height = height;
    encoder->pix_fmt = m_settings->pixelFormat;
    // The source track's own clock: every frame keeps its timestamp, whatever the rate does.
    encoder->time_base = sourceStream->time_base;
    encoder->framerate = av_guess_frame_rate(source, const_cast<AVStream *>(sourceStream), nullptr);
    encoder->sample_aspect_ratio = decoder->sample_aspect_ratio;
    encoder->color_range = AVCOL_RANGE_MPEG;
    if (sourceIsRgb) { // converted with BT.709 coefficients, see VideoTrack
        encoder->colorspace = AVCOL_SPC_BT709;
        encoder->color_primaries = AVCOL_PRI_BT709;
        encoder->color_trc = AVCOL_TRC_BT709;
    } else {
        encoder->colorspace = decoder->colorspace;
        encoder->color_primaries = decoder->color_primaries;
        encoder->color_trc = decoder->color_trc;
        encoder->chroma_sample_location = decoder->chroma_sample_location;
    }
    if (filters)
        filters->tagEncoder(encoder);
    encoder->profile = m_settings->profile;
    encoder->thread_count = codecThreadCount(m_settings->encoderThreads);
    encoder->thread_type = FF_THREAD_FRAME | FF_THREAD_SLICE;
    if (m_settings->fixedQuantiser > 0) {
        encoder->flags |= AV_CODEC_FLAG_QSCALE;
        encoder->global_quality = m_settings->fixedQuantiser * FF_QP2LAMBDA;
    }
    if (m_format->oformat->flags & AVFMT_GLOBALHEADER)
        encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    AVDictionary *options = nullptr;
    av_dict_parse_string(&options, m_settings->videoOptions, "=", ":", 0);
    if (m_settings->chunked)
        av_dict_set_int(&options, "chunks", hapChunkCount(width, height), 0);
    const int opened = avcodec_open2(encoder, codec, &options);
    const int unused = av_dict_count(options); // a misspelt option would be silently ignored
    av_dict_free(&options);
    if (opened < 0)
        return failure(opened);
    if (unused > 0)
        return failure(AVERROR_OPTION_NOT_FOUND);
    // prores_ks names the profile it really encodes; a table entry whose options pick another
    // profile than its code claims would write a movie that lies about its contents.
    if (encoder->codec_tag != 0 && encoder->codec_tag != m_settings->videoTag)
        return failure(AVERROR_BUG);

    m_videoStream = avformat_new_stream(m_format.get(), nullptr);
    if (!m_videoStream)
        return failure(AVERROR(ENOMEM));
    const int copied = avcodec_parameters_from_context(m_videoStream->codecpar, encoder);
    if (copied < 0)
        return failure(copied);
    m_videoStream->codecpar->codec_tag = m_settings->videoTag;
    m_videoStream->time_base = encoder->time_base;
    m_videoStream->avg_frame_rate = encoder->framerate;
    m_videoStream->sample_aspect_ratio = encoder->sample_aspect_ratio;
    // Orientation travels as the track's display matrix; the pixels stay as stored.
    size_t size = 0;
    if (const uint8_t *matrix =
            av_stream_get_side_data(sourceStream, AV_PKT_DATA_DISPLAYMATRIX, &size)) {
        uint8_t *copy = av_stream_new_side_data(m_videoStream, AV_PKT_DATA_DISPLAYMATRIX, size);
        if (!copy)
            return failure(AVERROR(ENOMEM));
        std::copy(matrix, matrix + size, copy);
    }
    return std::nullopt;
}

bool ConvertOutput::openAudio(const AVCodecContext *decoder)
{
    const AVCodec *codec = avcodec_find_encoder_by_name(m_settings->audioEncoder);
    if (!codec || decoder->ch_layout.nb_channels <= 0 || decoder->sample_rate <= 0)
        return false;
    AVChannelLayout source{};
    if (decoder->ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
        av_channel_layout_default(&source, decoder->ch_layout.nb_channels);
    else if (av_channel_layout_copy(&source, &decoder->ch_layout) < 0)
        return false;
    // The source's channels first; an encoder that cannot take them gets a stereo downmix.
    AVChannelLayout stereo = AV_CHANNEL_LAYOUT_STEREO;
    const AVChannelLayout *candidates[] = {&source, &stereo};
    for (const AVChannelLayout *layout : candidates) {
        CodecHandle encoder(avcodec_alloc_context3(codec));
        if (!encoder)
            break;
        encoder->sample_fmt = m_settings->sampleFormat;
        encoder->sample_rate = pickSampleRate(codec, decoder->sample_rate);
        encoder->time_base = AVRational{1, encoder->sample_rate};
        if (av_channel_layout_copy(&encoder->ch_layout, layout) < 0)
            break;
        encoder->bit_rate = m_settings->audioBitRatePerChannel * layout->nb_channels;
        if (m_format->oformat->flags & AVFMT_GLOBALHEADER)
            encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
        if (avcodec_open2(encoder.get(), codec, nullptr) >= 0) {
            m_audioEncoder = std::move(encoder);
            break;
        }
    }
    av_channel_layout_uninit(&source);
    if (!m_audioEncoder)
        return false;
    m_audioStream = avformat_new_stream(m_format.get(), nullptr);
    // Past this point a failure (out of memory only) would leave an empty track behind; the
    // header then fails and the conversion reports it.
    if (!m_audioStream ||
        avcodec_parameters_from_context(m_audioStream->codecpar, m_audioEncoder.get()) < 0) {
        m_audioEncoder.reset();
        return false;
    }
    m_audioStream->codecpar->codec_tag = m_settings->audioTag;
    m_audioStream->time_base = m_audioEncoder->time_base;
    return true;
}

std::optional<MediaConverterError> ConvertOutput::start()
{
    const int opened =
        avio_open(&m_format->pb, QFile::encodeName(m_path).constData(), AVIO_FLAG_WRITE);
    if (opened < 0)
        return failure(opened);
    AVDictionary *options = nullptr;
    if (m_settings->movieHeaderFirst)
        av_dict_set(&options, "movflags", "+faststart", 0);
    const int written = avformat_write_header(m_format.get(), &options);
    av_dict_free(&options);
    if (written < 0)
        return failure(written);
    return std::nullopt;
}

int ConvertOutput::write(AVPacket *packet, AVCodecContext *encoder, AVStream *stream)
{
    packet->stream_index = stream->index;
    // The muxer may have chosen a finer clock for the track than the encoder's.
    av_packet_rescale_ts(packet, encoder->time_base, stream->time_base);
    return av_interleaved_write_frame(m_format.get(), packet);
}

int ConvertOutput::writeVideo(AVPacket *packet)
{
    return write(packet, m_videoEncoder.get(), m_videoStream);
}

int ConvertOutput::writeAudio(AVPacket *packet)
{
    return write(packet, m_audioEncoder.get(), m_audioStream);
}

std::optional<MediaConverterError> ConvertOutput::finish()
{
    const int trailer = av_write_trailer(m_format.get());
    if (trailer < 0)
        return failure(trailer);
    // Closing flushes the last buffered bytes; a full disk shows here.
    const int closed = avio_closep(&m_format->pb);
    if (closed < 0)
        return failure(closed);
    return std::nullopt;
}
