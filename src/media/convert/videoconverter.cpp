// MediaConverter::convertVideo: the source's first video and audio tracks through libavcodec
// into a QuickTime movie, written under a hidden name and renamed when complete.
#include "mediaconverter.h"

#include "media/ffmpeg/ffmpegprobe.h"
#include "audiotrack.h"
#include "convertinput.h"
#include "convertoutput.h"
#include "outputnames.h"
#include "partialfile.h"
#include "progressreporter.h"
#include "videofilters.h"
#include "videotrack.h"

#include "media/ffmpeg/alphachannel.h"

#include <memory>

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace {

// The source instant that becomes zero in the movie: where its picture starts, so that the
// sound keeps its offset to the picture and the movie does not open on a gap.
int64_t movieOrigin(const ConvertInput &input)
{
    const AVStream *video = input.videoStream();
    if (video->start_time != AV_NOPTS_VALUE)
        return av_rescale_q(video->start_time, video->time_base, AV_TIME_BASE_Q);
    if (input.format()->start_time != AV_NOPTS_VALUE)
        return input.format()->start_time;
    return 0;
}

bool isRgbFormat(int format)
{
    const AVPixFmtDescriptor *descriptor = av_pix_fmt_desc_get(AVPixelFormat(format));
    return descriptor && (descriptor->flags & AV_PIX_FMT_FLAG_RGB);
}

// Reads every packet of the carried tracks and pushes it through, then drains the codecs.
std::optional<MediaConverterError> transcode(ConvertInput &input, VideoTrack &video,
                                             AudioTrack *audio, ProgressReporter &progress,
                                             std::stop_token stop)
{
    PacketHandle packet(av_packet_alloc());
    if (!packet)
        return MediaConverterError::exportFailed(avErrorText(AVERROR(ENOMEM)));
    const int videoIndex = input.videoStream()->index;
    const int audioIndex = audio ? input.audioStream()->index : -1;
    for (;;) {
        if (stop.stop_requested())
            return MediaConverterError::cancelled();
        const int read = av_read_frame(input.format(), packet.get());
        if (read == AVERROR_EOF)
            break;
        if (read == AVERROR(EAGAIN))
            continue;
        if (read < 0) {
            // A sample the index lists but the file no longer holds (a truncated copy) ends
            // here: the movie would silently come out short otherwise.
            return stop.stop_requested() ? MediaConverterError::cancelled()
                                         : MediaConverterError::exportFailed(avErrorText(read));
        }
        std::optional<MediaConverterError> error;
        if (packet->stream_index == videoIndex)
            error = video.send(packet.get());
        else if (packet->stream_index == audioIndex)
            error = audio->send(packet.get());
        av_packet_unref(packet.get());
        if (error)
            return error;
        progress.update(video.writtenSeconds());
    }
    if (auto error = video.send(nullptr))
        return error;
    if (audio) {
        if (auto error = audio->send(nullptr))
            return error;
    }
    // A track whose every packet the decoder swallowed would give an empty movie.
    if (video.framesEncoded() == 0)
        return MediaConverterError::unsupported();
    return std::nullopt;
}

} // namespace

ConvertResult MediaConverter::convertVideo(const MediaClip &clip, const QString &folder,
                                           const ConvertOptions &options,
                                           std::function<void(double)> progress,
                                           std::stop_token stop)
{
    if (!clip.sourceURL.isLocalFile())
        return MediaConverterError::unsupported();
    const QString source = clip.sourcePath();
    Result<QString> target = OutputNames::targetPath(folder, clip.arenaName, u".mov");
    if (!target)
        return MediaConverterError::exportFailed(target.error().message);
    if (stop.stop_requested())
        return MediaConverterError::cancelled();

    ConvertInput input;
    if (auto error = input.open(source, !options.dropAudio, stop))
        return *error;
    const AVCodecContext *decoder = input.videoDecoder();
    // Transparency survives wherever the target family has a transparent member.
    const EncoderSettings &settings = AlphaChannel::inStream(input.videoStream())
                                          ? alphaEncoderSettings(options.format)
                                          : encoderSettings(options.format);
    TargetSize size =
        croppedSize(decoder->width, decoder->height, settings.pixelFormat, settings.blockSize);
    if (size.width <= 0 || size.height <= 0) {
        if (settings.blockSize <= 1 || decoder->width <= 0 || decoder->height <= 0)
            return MediaConverterError::unsupported();
        // Smaller than one texture block: the encoder is offered the picture as it is and
        // refuses it in its own words; the partial file goes with the failure.
        size = {decoder->width, decoder->height};
    }

    // The same reading of the source as the probe's, so that a converted clip never keeps a
    // trap the probe would find again. A clean clip gets no filters at all.
    const VideoFixes fixes = videoFixes(FfmpegProbe().probeVideo(source, stop));
    std::unique_ptr<VideoFilters> filters;
    if (fixes.any()) {
        filters = std::make_unique<VideoFilters>();
        if (auto error =
                filters->open(fixes, decoder, input.videoStream()->time_base, settings.pixelFormat))
            return *error;
    }

    QString createError;
    std::optional<PartialFile> partial = PartialFile::create(*target, &createError);
    if (!partial)
        return MediaConverterError::exportFailed(createError);
    // Declared after the partial file: the muxer closes its file before that file is removed.
    ConvertOutput output;
    if (auto error = output.create(partial->path(), settings))
        return *error;
    if (auto error = output.openVideo(input.format(), input.videoStream(), decoder, size.width,
                                      size.height, isRgbFormat(decoder->pix_fmt), filters.get()))
        return *error;
    // Audio that cannot be encoded is left out; the picture still converts.
    if (input.audioDecoder() && !output.openAudio(input.audioDecoder()))
        input.dropAudio();
    if (auto error = output.start())
        return *error;

    const int64_t origin = movieOrigin(input);
    VideoTrack video(input.videoDecoder(), input.videoStream(), origin, output, stop,
                     filters.get());
    std::unique_ptr<AudioTrack> audio;
    if (input.audioDecoder())
        audio = std::make_unique<AudioTrack>(input.audioDecoder(), input.audioStream(), origin,
                                             output, stop);
    ProgressReporter reporter(std::move(progress), input.videoDurationSeconds().value_or(0));
    if (auto error = transcode(input, video, audio.get(), reporter, stop))
        return *error;
    if (auto error = output.finish())
        return *error;
    if (stop.stop_requested())
        return MediaConverterError::cancelled();
    if (const QString failed = partial->commit(); !failed.isEmpty())
        return MediaConverterError::exportFailed(failed);
    reporter.finish();
    return *target;
}
