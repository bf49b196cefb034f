// The code tables on their own, for codecs and profiles no fixture carries.
#include "media/ffmpeg/codectags.h"
#include "media/mediainspector.h"

#include <gtest/gtest.h>

namespace {

struct Parameters {
    Parameters(AVCodecID codec, int profile = FF_PROFILE_UNKNOWN, uint32_t tag = 0)
        : p(avcodec_parameters_alloc())
    {
        p->codec_id = codec;
        p->profile = profile;
        p->codec_tag = tag;
    }
    ~Parameters() { avcodec_parameters_free(&p); }
    AVCodecParameters *p;
};

QString video(AVCodecID codec, int profile = FF_PROFILE_UNKNOWN, uint32_t tag = 0)
{
    const Parameters parameters(codec, profile, tag);
    const auto code = CodecTags::videoCode(nullptr, parameters.p);
    return code ? MediaInspector::fourCC(*code) : QStringLiteral("<none>");
}

QString audio(AVCodecID codec)
{
    const Parameters parameters(codec);
    const auto code = CodecTags::audioCode(parameters.p);
    return code ? MediaInspector::fourCC(*code) : QStringLiteral("<none>");
}

TEST(CodecTags, ProResOutsideQuickTimeGoesByProfile)
{
    // The first and last profile of the lookup; those between go the same way.
    EXPECT_EQ(video(AV_CODEC_ID_PRORES, FF_PROFILE_PRORES_PROXY), "apco");
    EXPECT_EQ(video(AV_CODEC_ID_PRORES, FF_PROFILE_PRORES_XQ), "ap4x");
    // A stored ProRes code outranks a profile the demuxer left unknown.
    EXPECT_EQ(video(AV_CODEC_ID_PRORES, FF_PROFILE_UNKNOWN, MKTAG('a', 'p', '4', 'x')), "ap4x");
    EXPECT_EQ(video(AV_CODEC_ID_PRORES), "apcn");
}

TEST(CodecTags, VideoWithoutSampleEntry)
{
    EXPECT_EQ(video(AV_CODEC_ID_H264), "avc1"); // one row of our table stands for the rest
    EXPECT_EQ(video(AV_CODEC_ID_MPEG4, FF_PROFILE_UNKNOWN, MKTAG('X', 'V', 'I', 'D')), "mp4v");
    // Not in our table: libavformat's QuickTime table still knows it.
    EXPECT_EQ(video(AV_CODEC_ID_CINEPAK), "cvid");
    // Unknown everywhere: the container's own code, else nothing.
    EXPECT_EQ(video(AV_CODEC_ID_NONE, FF_PROFILE_UNKNOWN, MKTAG('a', 'b', 'c', 'd')), "abcd");
    EXPECT_EQ(video(AV_CODEC_ID_NONE), "<none>");
}

// The codes the fixtures carry (aac, .mp3, ac-3, fLaC…) are checked on real media.
TEST(CodecTags, AudioIsTheFormatIdentifier)
{
    for (AVCodecID pcm : {AV_CODEC_ID_PCM_S16LE, AV_CODEC_ID_PCM_F64LE, AV_CODEC_ID_PCM_U8})
        EXPECT_EQ(audio(pcm), "lpcm") << avcodec_get_name(pcm);
    EXPECT_EQ(audio(AV_CODEC_ID_PCM_MULAW), "ulaw");
    EXPECT_EQ(audio(AV_CODEC_ID_NONE), "<none>");
}

} // namespace
