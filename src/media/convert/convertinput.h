#pragma once

#include "media/convert/mediaconverter.h"
#include "media/ffmpeg/avhandles.h"

#include <memory>
#include <optional>
#include <stop_token>

// The source side of a video conversion: the demuxer and decoders for the first video track and,
// when wanted, the first audio track. Every blocking read gives up once `stop` is requested.
// Only the file protocol is allowed, so a crafted source cannot make us open anything else.
class ConvertInput
{
public:
    ConvertInput();
    ~ConvertInput();
    ConvertInput(const ConvertInput &) = delete;
    ConvertInput &operator=(const ConvertInput &) = delete;

    // Fails with unsupported for unreadable files and files without video, with the file
    // system's text when the file cannot be opened at all, with cancelled when stopped. An audio
    // track whose decoder cannot be opened is left out, not an error.
    std::optional<MediaConverterError> open(const QString &path, bool wantAudio,
                                            std::stop_token stop);

    AVFormatContext *format() const { return m_format.get(); }
    AVStream *videoStream() const { return m_videoStream; }
    AVCodecContext *videoDecoder() const { return m_videoDecoder.get(); }
    AVStream *audioStream() const { return m_audioStream; }
    AVCodecContext *audioDecoder() const { return m_audioDecoder.get(); }
    void dropAudio(); // the output could not take the audio after all

    // The video track's expected end, seconds from its first frame; empty when unknown.
    std::optional<double> videoDurationSeconds() const;

private:
    struct Interrupt {
        std::stop_token stop;
    };

    std::unique_ptr<Interrupt> m_interrupt; // outlives m_format: the context points at it
    FormatHandle m_format;
    AVStream *m_videoStream = nullptr;
    CodecHandle m_videoDecoder;
    AVStream *m_audioStream = nullptr;
    CodecHandle m_audioDecoder;
};

// A decoder for `stream`, threaded on every core; null when there is none or it will not open.
CodecHandle openDecoder(const AVStream *stream);
