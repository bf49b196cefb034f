#pragma once

#include "media/convert/mediaconverter.h"
#include "media/ffmpeg/avhandles.h"

#include <optional>

// The steps every track of a conversion takes with libav's send/receive codec API.
namespace CodecSteps {

// A libav error during a conversion: the export failed, in libav's own words.
inline MediaConverterError failure(int error)
{
    return MediaConverterError::exportFailed(avErrorText(error));
}

// Hands each frame the decoder has ready to `take` and unreferences it afterwards; returns when
// the decoder wants more input or has ended, or with the first error (libav's or take's).
template<typename Take>
std::optional<MediaConverterError> takeDecodedFrames(AVCodecContext *decoder, AVFrame *frame,
                                                     Take &&take)
{
    for (;;) {
        const int received = avcodec_receive_frame(decoder, frame);
        if (received == AVERROR(EAGAIN) || received == AVERROR_EOF)
            return std::nullopt;
        if (received < 0)
            return failure(received);
        std::optional<MediaConverterError> error = take(frame);
        av_frame_unref(frame);
        if (error)
            return error;
    }
}

// Tells the encoder that no frame follows; one that has already ended is fine.
inline std::optional<MediaConverterError> endEncoderInput(AVCodecContext *encoder)
{
    const int ended = avcodec_send_frame(encoder, nullptr);
    if (ended < 0 && ended != AVERROR_EOF)
        return failure(ended);
    return std::nullopt;
}

} // namespace CodecSteps
