#include "frametiming.h"

#include "h264header.h"
#include "inputfile.h"

extern "C" {
#include <libavutil/avstring.h>
}

#include <algorithm>
#include <chrono>
#include <cmath>

namespace FrameTiming {

namespace {

using namespace std::chrono_literals;

// A frame counts as off the beat when its duration differs from the median by more than a
// tenth: real variable-rate material (phones, screen recorders) swings by a third or more,
// while a constant rate stored in a coarse clock (Matroska's milliseconds: 29.97 fps as 33, 33,
// 34 ms) only wobbles by the one tick each rounded timestamp may lose, which is always allowed.
constexpr double kBeatTolerance = 0.10;
// More than one frame in a hundred off the beat makes the track variable: a single odd frame in
// a long constant-rate clip (a splice, a dropped frame) does not.
constexpr double kOffBeatShare = 0.01;
constexpr size_t kMinimumDurations = 2;

// Containers without a sample table up front: their first packets are read instead. QuickTime
// and MP4 carry every sample's time in the header the probe has already read.
constexpr const char *kPacketTimedDemuxers[] = {"matroska", "avi", "mpeg", "mpegts", "flv"};
constexpr auto kPacketBudget = 2s;
constexpr double kPacketSeconds = 5.0; // enough frames to judge, few enough to stay fast
constexpr int kMaxPackets = 600;
// Field order comes from the first pictures' headers when the container does not state it.
constexpr int kParsedPictures = 3;
// How far a picture may be stored ahead of its display time (H.264's largest picture buffer):
// a read that stops early misses later-stored pictures that would show among its last ones.
constexpr size_t kReorderDepth = 16;

bool isInterlaced(int order)
{
    return order == AV_FIELD_TT || order == AV_FIELD_BB || order == AV_FIELD_TB ||
           order == AV_FIELD_BT;
}

bool readsPackets(const AVFormatContext *format)
{
    return std::any_of(
        std::begin(kPacketTimedDemuxers), std::end(kPacketTimedDemuxers),
        [&](const char *demuxer) { return av_match_name(demuxer, format->iformat->name) != 0; });
}

// Most H.264 is coded as frames only, which its sequence header says: the parser and the
// packets it would read are then spared.
bool progressiveByHeader(const AVCodecParameters *codec)
{
    return codec->codec_id == AV_CODEC_ID_H264 && codec->extradata &&
           H264Header::framesOnly({codec->extradata, size_t(codec->extradata_size)});
}

// Decoding times of every sample in the track's index, left out the ones an edit list drops.
std::vector<int64_t> indexTimes(const AVStream *video)
{
    std::vector<int64_t> times;
    AVStream *stream = const_cast<AVStream *>(video); // the index getters are not const-correct
    const int count = avformat_index_get_entries_count(stream);
    times.reserve(size_t(std::max(0, count)));
    for (int i = 0; i < count; ++i) {
        const AVIndexEntry *entry = avformat_index_get_entry(stream, i);
        if (entry && !(entry->flags & AVINDEX_DISCARD_FRAME) && entry->timestamp != AV_NOPTS_VALUE)
            times.push_back(entry->timestamp);
    }
    return times;
}

struct ParserFreer {
    void operator()(AVCodecParserContext *p) const { av_parser_close(p); }
};

// Reads the picture headers of packets (never the pictures) for their field order.
class FieldReader
{
public:
    explicit FieldReader(const AVStream *video)
    {
        if (video->codecpar->field_order != AV_FIELD_UNKNOWN ||
            progressiveByHeader(video->codecpar))
            return; // the container or the sequence header says
        m_parser.reset(av_parser_init(video->codecpar->codec_id));
        m_codec.reset(avcodec_alloc_context3(nullptr));
        if (!m_parser || !m_codec ||
            avcodec_parameters_to_context(m_codec.get(), video->codecpar) < 0) {
            m_parser.reset();
            return;
        }
        m_parser->flags |= PARSER_FLAG_COMPLETE_FRAMES;
    }

    bool wanted() const { return m_parser && m_parsed < kParsedPictures; }
    bool interlaced() const { return m_interlaced; }

    void read(const AVPacket *packet)
    {
        uint8_t *out = nullptr;
        int outSize = 0;
        av_parser_parse2(m_parser.get(), m_codec.get(), &out, &outSize, packet->data, packet->size,
                         packet->pts, packet->dts, packet->pos);
        m_interlaced = m_interlaced || isInterlaced(m_parser->field_order);
        ++m_parsed;
    }

private:
    std::unique_ptr<AVCodecParserContext, ParserFreer> m_parser;
    CodecHandle m_codec;
    int m_parsed = 0;
    bool m_interlaced = false;
};

struct PacketFacts {
    // Presentation times where every packet has one, else decoding times (MPEG streams stamp a
    // presentation time on some pictures only); empty when neither is on every packet.
    std::vector<int64_t> times;
    bool complete = false; // read to the end of the file
};

PacketFacts readPackets(InputFile &input, const AVStream *video, bool timed, FieldReader &fields)
{
    PacketFacts facts;
    std::vector<int64_t> presented;
    std::vector<int64_t> decoded;
    bool allPresented = true;
    bool allDecoded = true;
    AVFormatContext *format = input.format();
    for (unsigned i = 0; i < format->nb_streams; ++i) {
        if (format->streams[i] != video)
            format->streams[i]->discard = AVDISCARD_ALL; // the probe is done with them
    }
    input.extendDeadline(std::chrono::duration_cast<std::chrono::milliseconds>(kPacketBudget));
    PacketHandle packet(av_packet_alloc());
    if (!packet)
        return facts;
    const double tick = av_q2d(video->time_base);
    timed = timed && tick > 0 && std::isfinite(tick);
    for (int read = 0; read < kMaxPackets && (fields.wanted() || timed);) {
        const int error = av_read_frame(format, packet.get());
        if (error == AVERROR(EAGAIN))
            continue;
        if (error < 0) {
            facts.complete = error == AVERROR_EOF;
            break;
        }
        if (packet->stream_index == video->index) {
            ++read;
            if (fields.wanted())
                fields.read(packet.get());
            if (timed) {
                allPresented = allPresented && packet->pts != AV_NOPTS_VALUE;
                allDecoded = allDecoded && packet->dts != AV_NOPTS_VALUE;
                presented.push_back(packet->pts);
                decoded.push_back(packet->dts);
                // Stop after the window; in doubles, so that hostile timestamps near the ends
                // of the range cannot overflow.
                const auto span = [&](const std::vector<int64_t> &times) {
                    return times.front() != AV_NOPTS_VALUE && times.back() != AV_NOPTS_VALUE &&
                           (double(times.back()) - double(times.front())) * tick > kPacketSeconds;
                };
                timed = !span(decoded) && !span(presented);
            }
        }
        av_packet_unref(packet.get());
    }
    // Without every packet's time, a gap could be a packet that simply was not stamped.
    if (allPresented)
        facts.times = std::move(presented);
    else if (allDecoded)
        facts.times = std::move(decoded);
    return facts;
}

std::optional<QString> hdrTransfer(int transfer)
{
    if (transfer == AVCOL_TRC_SMPTE2084)
        return QStringLiteral("PQ");
    if (transfer == AVCOL_TRC_ARIB_STD_B67)
        return QStringLiteral("HLG");
    return std::nullopt;
}

} // namespace

Verdict judge(std::vector<int64_t> times, double tickSeconds, double spanSeconds)
{
    // Presentation times arrive in decoding order; a repeated time is one picture shown once.
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    Verdict verdict;
    if (times.size() < kMinimumDurations + 1 || !(tickSeconds > 0))
        return verdict;
    // Durations between frame starts; the last frame's own duration is not among them, so its
    // usual oddity (cut short at the end of the file) does not count.
    // Differences of sorted times fit an unsigned 64-bit value whatever the times are.
    const auto ticksBetween = [](int64_t from, int64_t to) {
        return double(uint64_t(to) - uint64_t(from));
    };
    std::vector<double> durations(times.size() - 1);
    for (size_t i = 1; i < times.size(); ++i)
        durations[i - 1] = ticksBetween(times[i - 1], times[i]);
    std::vector<double> sorted = durations;
    std::nth_element(sorted.begin(), sorted.begin() + sorted.size() / 2, sorted.end());
    const double median = sorted[sorted.size() / 2];
    const double tolerance = std::max(kBeatTolerance * median, 1.0);
    const auto offBeat = std::count_if(durations.begin(), durations.end(),
                                       [&](double d) { return std::abs(d - median) > tolerance; });
    verdict.judged = true;
    verdict.variable = double(offBeat) > kOffBeatShare * double(durations.size());
    const double seconds = ticksBetween(times.front(), times.back()) * tickSeconds;
    if (spanSeconds > 0)
        verdict.averageRate = double(times.size()) / spanSeconds;
    else if (seconds > 0)
        verdict.averageRate = double(durations.size()) / seconds;
    return verdict;
}

void readStageTraps(InputFile &input, const AVStream *video, VideoFacts &facts)
{
    const AVCodecParameters *codec = video->codecpar;
    facts.hdrTransfer = hdrTransfer(codec->color_trc);
    FieldReader fields(video);
    const double tick = av_q2d(video->time_base);
    Verdict timing;
    bool timedByPackets = readsPackets(input.format());
    if (!timedByPackets) {
        const double span = video->duration > 0 ? double(video->duration) * tick : 0;
        timing = judge(indexTimes(video), tick, span);
    }
    if (timedByPackets || fields.wanted()) {
        const PacketFacts packets = readPackets(input, video, timedByPackets, fields);
        // Without every packet's time, a gap could be a packet that simply was not stamped.
        std::vector<int64_t> times = packets.times;
        if (!packets.complete && times.size() > 2 * kReorderDepth) {
            std::sort(times.begin(), times.end());
            times.resize(times.size() - kReorderDepth);
        }
        if (timedByPackets)
            timing = judge(std::move(times), tick);
    }
    facts.interlaced = isInterlaced(codec->field_order) || fields.interlaced();
    facts.variableFrameRate = timing.judged && timing.variable;
    facts.averageFrameRate = timing.averageRate;
}

} // namespace FrameTiming
