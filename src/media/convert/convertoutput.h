#pragma once

#include "media/convert/encodersettings.h"
#include "media/convert/mediaconverter.h"

class VideoFilters;

#include <optional>

// The target side of a video conversion: a QuickTime muxer writing `path` and the encoders of
// its video and (optional) audio track. Set up in this order: create, openVideo, openAudio,
// start; then write packets and finish. Until finish() succeeds the file is incomplete.
class ConvertOutput
{
public:
    ConvertOutput() = default;
    ~ConvertOutput();
    ConvertOutput(const ConvertOutput &) = delete;
    ConvertOutput &operator=(const ConvertOutput &) = delete;

    std::optional<MediaConverterError> create(const QString &path, const EncoderSettings &settings);
    // An encoder for `width` × `height` frames in the settings' pixel format, timed like the
    // source track so that its timestamps pass through unchanged; with `filters`, timed and
    // tagged like the filtered frames instead.
    std::optional<MediaConverterError> openVideo(AVFormatContext *source,
                                                 const AVStream *sourceStream,
                                                 const AVCodecContext *decoder, int width,
                                                 int height, bool sourceIsRgb,
                                                 const VideoFilters *filters = nullptr);
    // False when no encoder setup takes this audio: the movie is then made without audio.
    bool openAudio(const AVCodecContext *decoder);
    std::optional<MediaConverterError> start();

    // Hands an encoded packet (in its encoder's time base) to the muxer; FFmpeg's error code.
    int writeVideo(AVPacket *packet);
    int writeAudio(AVPacket *packet);
    std::optional<MediaConverterError> finish();

    const EncoderSettings &settings() const { return *m_settings; }
    AVCodecContext *videoEncoder() const { return m_videoEncoder.get(); }
    AVCodecContext *audioEncoder() const { return m_audioEncoder.get(); }

private:
    int write(AVPacket *packet, AVCodecContext *encoder, AVStream *stream);

    const EncoderSettings *m_settings = nullptr;
    QString m_path;
    OutputFormatHandle m_format;
    CodecHandle m_videoEncoder;
    AVStream *m_videoStream = nullptr;
    CodecHandle m_audioEncoder;
    AVStream *m_audioStream = nullptr;
};
