#include "codectags.h"

#include <climits>
#include <cstring>

namespace CodecTags {

namespace {

constexpr quint32 code(const char (&c)[5])
{
    return (quint32(quint8(c[0])) << 24) | (quint32(quint8(c[1])) << 16) |
           (quint32(quint8(c[2])) << 8) | quint32(quint8(c[3]));
}

// FFmpeg keeps tags little-endian (MKTAG puts the first character in the low byte).
constexpr quint32 fromFfmpegTag(uint32_t tag)
{
    return ((tag & 0xffu) << 24) | ((tag & 0xff00u) << 8) | ((tag >> 8) & 0xff00u) | (tag >> 24);
}

constexpr int kAnyProfile = INT_MIN;

struct VideoRow {
    AVCodecID codec;
    int profile;
    quint32 code;
    const char *why;
};

// Codes for video from containers without sample entries. Rows are matched top to bottom, so
// a profile row comes before the row for its codec's other profiles.
constexpr VideoRow kVideoRows[] = {
    {AV_CODEC_ID_H264, kAnyProfile, code("avc1"),
     "QuickTime's H.264 entry; avc3 differs only in where the parameter sets travel"},
    {AV_CODEC_ID_HEVC, kAnyProfile, code("hvc1"),
     "Apple players take HEVC only as hvc1, parameter sets in the sample entry"},
    {AV_CODEC_ID_PRORES, FF_PROFILE_PRORES_PROXY, code("apco"), "ProRes 422 Proxy"},
    {AV_CODEC_ID_PRORES, FF_PROFILE_PRORES_LT, code("apcs"), "ProRes 422 LT"},
    {AV_CODEC_ID_PRORES, FF_PROFILE_PRORES_STANDARD, code("apcn"), "ProRes 422"},
    {AV_CODEC_ID_PRORES, FF_PROFILE_PRORES_HQ, code("apch"), "ProRes 422 HQ"},
    {AV_CODEC_ID_PRORES, FF_PROFILE_PRORES_4444, code("ap4h"), "ProRes 4444"},
    {AV_CODEC_ID_PRORES, FF_PROFILE_PRORES_XQ, code("ap4x"), "ProRes 4444 XQ"},
    {AV_CODEC_ID_PRORES, kAnyProfile, code("apcn"),
     "a ProRes stream that does not name its flavour: plain 422 is by far the most common"},
    {AV_CODEC_ID_HAP, kAnyProfile, code("Hap1"),
     "the texture format is only known per frame; plain DXT1 HAP is the base flavour"},
    {AV_CODEC_ID_MJPEG, kAnyProfile, code("jpeg"), "QuickTime's Photo-JPEG entry"},
    {AV_CODEC_ID_MPEG2VIDEO, kAnyProfile, code("m2v1"),
     "the generic MPEG-2 entry; the XDCAM codes depend on frame size and field order"},
    {AV_CODEC_ID_MPEG1VIDEO, kAnyProfile, code("m1v "), "the MPEG-1 video entry"},
    {AV_CODEC_ID_MPEG4, kAnyProfile, code("mp4v"), "MPEG-4 Visual (DivX, Xvid) as MP4 stores it"},
    {AV_CODEC_ID_VP9, kAnyProfile, code("vp09"), "VP9 as the VP codec ISO binding names it"},
    {AV_CODEC_ID_VP8, kAnyProfile, code("vp08"), "VP8 as the VP codec ISO binding names it"},
    {AV_CODEC_ID_AV1, kAnyProfile, code("av01"), "AV1 as its ISO binding names it"},
    {AV_CODEC_ID_DNXHD, kAnyProfile, code("AVdn"), "Avid's QuickTime entry for DNxHD and DNxHR"},
    {AV_CODEC_ID_PNG, kAnyProfile, code("png "), "QuickTime's PNG entry"},
    {AV_CODEC_ID_QTRLE, kAnyProfile, code("rle "), "QuickTime Animation"},
};

// The codes a file may store for ProRes; any of them names the flavour better than a profile
// the demuxer could not fill in.
constexpr quint32 kProResCodes[] = {code("apco"), code("apcs"), code("apcn"),
                                    code("apch"), code("ap4h"), code("ap4x")};

struct AudioRow {
    AVCodecID codec;
    quint32 code;
    const char *why;
};

// Audio format identifiers, used in every container: the sample-entry name (mp4a, sowt, twos)
// says how the track is stored, not what it holds.
constexpr AudioRow kAudioRows[] = {
    {AV_CODEC_ID_AAC, code("aac "), "every AAC profile shares one format identifier"},
    {AV_CODEC_ID_MP3, code(".mp3"), "MPEG-1/2 layer 3"},
    {AV_CODEC_ID_MP2, code(".mp2"), "MPEG-1/2 layer 2, common in program streams"},
    {AV_CODEC_ID_MP1, code(".mp1"), "MPEG-1 layer 1"},
    {AV_CODEC_ID_AC3, code("ac-3"), "Dolby Digital"},
    {AV_CODEC_ID_EAC3, code("ec-3"), "Dolby Digital Plus"},
    {AV_CODEC_ID_ALAC, code("alac"), "Apple Lossless"},
    {AV_CODEC_ID_OPUS, code("opus"), "Opus, as WebM and MP4 carry it"},
    {AV_CODEC_ID_FLAC, code("fLaC"), "FLAC's own identifier, also its MP4 entry"},
    {AV_CODEC_ID_PCM_MULAW, code("ulaw"), "companded, so not linear PCM"},
    {AV_CODEC_ID_PCM_ALAW, code("alaw"), "companded, so not linear PCM"},
    {AV_CODEC_ID_ADPCM_IMA_QT, code("ima4"), "QuickTime's IMA ADPCM"},
    {AV_CODEC_ID_AMR_NB, code("samr"), "AMR narrow band"},
    {AV_CODEC_ID_AMR_WB, code("sawb"), "AMR wide band"},
    {AV_CODEC_ID_VORBIS, code("vorb"), "Vorbis has no QuickTime entry; named after itself"},
    {AV_CODEC_ID_DTS, code("dtsc"), "DTS core, as MP4 names it"},
};

bool isLinearPcm(AVCodecID codec)
{
    // FFmpeg numbers its PCM flavours (byte order, sample size, float or integer, planar)
    // from PCM_S16LE up to the first ADPCM codec; the two companded ones have rows above.
    return codec >= AV_CODEC_ID_PCM_S16LE && codec < AV_CODEC_ID_ADPCM_IMA_QT &&
           codec != AV_CODEC_ID_PCM_MULAW && codec != AV_CODEC_ID_PCM_ALAW;
}

bool storesSampleEntries(const AVFormatContext *format)
{
    // The QuickTime demuxer serves MOV, MP4 and their relatives and keeps each track's
    // sample-entry code as the stream's codec tag.
    return format && format->iformat && format->iformat->name &&
           std::strncmp(format->iformat->name, "mov,", 4) == 0;
}

std::optional<quint32> fromLibraryTable(const AVCodecTag *table, AVCodecID codec)
{
    const AVCodecTag *const tables[] = {table, nullptr};
    const unsigned int tag = av_codec_get_tag(tables, codec);
    if (tag == 0)
        return std::nullopt;
    return fromFfmpegTag(tag);
}

} // namespace

std::optional<quint32> videoCode(const AVFormatContext *format, const AVCodecParameters *codec)
{
    if (!codec)
        return std::nullopt;
    const quint32 stored = fromFfmpegTag(codec->codec_tag);
    if (storesSampleEntries(format) && stored != 0)
        return stored;
    if (codec->codec_id == AV_CODEC_ID_PRORES) {
        for (quint32 known : kProResCodes) {
            if (stored == known) // Matroska keeps the ProRes code in its codec private data
                return stored;
        }
    }
    for (const VideoRow &row : kVideoRows) {
        if (row.codec == codec->codec_id &&
            (row.profile == kAnyProfile || row.profile == codec->profile))
            return row.code;
    }
    if (auto fromTable = fromLibraryTable(avformat_get_mov_video_tags(), codec->codec_id))
        return fromTable;
    if (stored != 0) // AVI's own FourCC is better than nothing
        return stored;
    return std::nullopt;
}

std::optional<quint32> audioCode(const AVCodecParameters *codec)
{
    if (!codec)
        return std::nullopt;
    if (isLinearPcm(codec->codec_id))
        return code("lpcm");
    for (const AudioRow &row : kAudioRows) {
        if (row.codec == codec->codec_id)
            return row.code;
    }
    if (auto fromTable = fromLibraryTable(avformat_get_mov_audio_tags(), codec->codec_id))
        return fromTable;
    if (codec->codec_tag > 0xffff) // a WAVE format number (AVI, WAV) is not a code
        return fromFfmpegTag(codec->codec_tag);
    return std::nullopt;
}

} // namespace CodecTags
