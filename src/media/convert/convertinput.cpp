#include "convertinput.h"

#include "encodersettings.h"

#include <QFile>

namespace {

int interruptRequested(void *opaque)
{
    return static_cast<const std::stop_token *>(opaque)->stop_requested() ? 1 : 0;
}

AVStream *firstStream(AVFormatContext *format, AVMediaType type)
{
    for (unsigned i = 0; i < format->nb_streams; ++i) {
        AVStream *stream = format->streams[i];
        // Cover art is stored as a one-frame video track; it is not the movie.
        if (stream->codecpar->codec_type == type &&
            !(stream->disposition & AV_DISPOSITION_ATTACHED_PIC))
            return stream;
    }
    return nullptr;
}

} // namespace

CodecHandle openDecoder(const AVStream *stream)
{
    const AVCodec *codec = avcodec_find_decoder(stream->codecpar->codec_id);
    if (!codec)
        return {};
    CodecHandle decoder(avcodec_alloc_context3(codec));
    if (!decoder || avcodec_parameters_to_context(decoder.get(), stream->codecpar) < 0)
        return {};
    decoder->pkt_timebase = stream->time_base;
    // libavcodec decodes on one thread unless told otherwise; frame threading is what keeps
    // both cores busy for long-GOP sources, slice threading helps intra codecs.
    decoder->thread_count = codecThreadCount();
    decoder->thread_type = FF_THREAD_FRAME | FF_THREAD_SLICE;
    if (avcodec_open2(decoder.get(), codec, nullptr) < 0)
        return {};
    return decoder;
}

ConvertInput::ConvertInput() : m_interrupt(std::make_unique<Interrupt>())
{}

ConvertInput::~ConvertInput() = default;

std::optional<MediaConverterError> ConvertInput::open(const QString &path, bool wantAudio,
                                                      std::stop_token stop)
{
    m_interrupt->stop = stop;
    AVFormatContext *format = avformat_alloc_context();
    if (!format)
        return MediaConverterError::exportFailed(avErrorText(AVERROR(ENOMEM)));
    format->interrupt_callback.callback = interruptRequested;
    format->interrupt_callback.opaque = &m_interrupt->stop;
    AVDictionary *options = nullptr;
    av_dict_set(&options, "protocol_whitelist", "file", 0);
    const int opened =
        avformat_open_input(&format, QFile::encodeName(path).constData(), nullptr, &options);
    av_dict_free(&options);
    if (opened < 0) { // FFmpeg has freed the context
        if (stop.stop_requested())
            return MediaConverterError::cancelled();
        // A file that is gone or forbidden is the file system's problem, not the media's.
        if (opened == AVERROR(ENOENT) || opened == AVERROR(EACCES) || opened == AVERROR(EISDIR))
            return MediaConverterError::exportFailed(avErrorText(opened));
        return MediaConverterError::unsupported();
    }
    m_format.reset(format);
    if (avformat_find_stream_info(format, nullptr) < 0)
        return stop.stop_requested() ? MediaConverterError::cancelled()
                                     : MediaConverterError::unsupported();

    m_videoStream = firstStream(format, AVMEDIA_TYPE_VIDEO);
    if (!m_videoStream)
        return MediaConverterError::unsupported();
    m_videoDecoder = openDecoder(m_videoStream);
    if (!m_videoDecoder)
        return MediaConverterError::unsupported();
    if (wantAudio) {
        m_audioStream = firstStream(format, AVMEDIA_TYPE_AUDIO);
        if (m_audioStream) {
            m_audioDecoder = openDecoder(m_audioStream);
            if (!m_audioDecoder)
                m_audioStream = nullptr;
        }
    }
    // The demuxer skips what we do not carry over instead of reading and dropping it.
    for (unsigned i = 0; i < format->nb_streams; ++i) {
        AVStream *stream = format->streams[i];
        if (stream != m_videoStream && stream != m_audioStream)
            stream->discard = AVDISCARD_ALL;
    }
    return std::nullopt;
}

void ConvertInput::dropAudio()
{
    if (m_audioStream)
        m_audioStream->discard = AVDISCARD_ALL;
    m_audioStream = nullptr;
    m_audioDecoder.reset();
}

std::optional<double> ConvertInput::videoDurationSeconds() const
{
    if (m_videoStream && m_videoStream->duration > 0)
        return m_videoStream->duration * av_q2d(m_videoStream->time_base);
    if (m_format && m_format->duration > 0)
        return double(m_format->duration) / AV_TIME_BASE;
    return std::nullopt;
}
