#include "ffmpegprobe.h"

#include "alphachannel.h"
#include "codectags.h"
#include "frametiming.h"
#include "inputfile.h"
#include "media/imagemodule.h"
#include "streamfacts.h"

namespace {

using namespace std::chrono_literals;

// A header read takes well under a millisecond on a local disk; this is for a stalled network
// share or a hostile file that sends the demuxer searching.
constexpr auto kProbeBudget = 5s;

VideoFacts failedOpen(QString text)
{
    VideoFacts facts;
    facts.failedAt = VideoFacts::Stage::open;
    facts.errorText = std::move(text);
    return facts;
}

} // namespace

VideoFacts FfmpegProbe::probeVideo(const QString &path, std::stop_token stop) const
{
    Result<InputFile> input = InputFile::open(path, std::move(stop), kProbeBudget);
    if (!input)
        return failedOpen(input.error().message);
    const AVFormatContext *format = input->format();
    if (StreamFacts::needsStreamInfo(format)) {
        if (const int error = input->readStreamInfo(); error < 0)
            return failedOpen(avErrorText(error));
    }

    VideoFacts facts;
    if (format->duration != AV_NOPTS_VALUE && format->duration >= 0)
        facts.duration = static_cast<double>(format->duration) / AV_TIME_BASE;
    facts.videoTrackCount = StreamFacts::countOf(format, AVMEDIA_TYPE_VIDEO);
    facts.audioTrackCount = StreamFacts::countOf(format, AVMEDIA_TYPE_AUDIO);

    if (const AVStream *video = StreamFacts::firstOf(format, AVMEDIA_TYPE_VIDEO)) {
        facts.naturalWidth = video->codecpar->width;
        facts.naturalHeight = video->codecpar->height;
        facts.transform = StreamFacts::displayMatrix(video).value_or(DisplayMatrix{});
        facts.nominalFrameRate = StreamFacts::frameRate(video);
        facts.videoCodecCode = CodecTags::videoCode(format, video->codecpar);
        facts.hasAlpha = AlphaChannel::inStream(video);
    }
    if (const AVStream *audio = StreamFacts::firstOf(format, AVMEDIA_TYPE_AUDIO))
        facts.audioCodecCode = CodecTags::audioCode(audio->codecpar);
    // Last: it may read packets, after which the other streams are skipped.
    if (const AVStream *video = StreamFacts::firstOf(format, AVMEDIA_TYPE_VIDEO))
        FrameTiming::readStageTraps(*input, video, facts);
    return facts;
}

ImageFacts FfmpegProbe::probeImage(const QString &path, std::stop_token stop) const
{
    Q_UNUSED(stop); // a header read of a still is a few kilobytes
    const ImageModule *images = ImageModule::get();
    return images ? images->readFacts(path) : ImageFacts{};
}
