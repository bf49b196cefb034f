// Test-fixture tool: copies a movie's packets into a new QuickTime file whose video track
// carries a display matrix turned by the given angle. The ffmpeg CLI of our build machines
// ignores "-metadata:s:v rotate=", so rotated sources are made here.
//
//   convert_fixture_rotate <input> <output.mov> <degrees counter-clockwise>
extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/display.h>
}

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

int fail(const char *what, int error)
{
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(error, text, sizeof text);
    std::fprintf(stderr, "convert_fixture_rotate: %s: %s\n", what, text);
    return 1;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s <input> <output.mov> <degrees>\n", argv[0]);
        return 2;
    }
    const double degrees = std::atof(argv[3]);
    AVFormatContext *input = nullptr;
    int error = avformat_open_input(&input, argv[1], nullptr, nullptr);
    if (error < 0)
        return fail("open input", error);
    if ((error = avformat_find_stream_info(input, nullptr)) < 0)
        return fail("stream info", error);
    AVFormatContext *output = nullptr;
    if ((error = avformat_alloc_output_context2(&output, nullptr, "mov", argv[2])) < 0)
        return fail("output", error);
    bool rotated = false;
    for (unsigned i = 0; i < input->nb_streams; ++i) {
        const AVStream *from = input->streams[i];
        AVStream *to = avformat_new_stream(output, nullptr);
        if (!to || avcodec_parameters_copy(to->codecpar, from->codecpar) < 0)
            return fail("stream", AVERROR(ENOMEM));
        to->codecpar->codec_tag = 0;
        to->time_base = from->time_base;
        if (from->codecpar->codec_type == AVMEDIA_TYPE_VIDEO && !rotated) {
            auto *matrix = reinterpret_cast<int32_t *>(
                av_stream_new_side_data(to, AV_PKT_DATA_DISPLAYMATRIX, 9 * sizeof(int32_t)));
            if (!matrix)
                return fail("side data", AVERROR(ENOMEM));
            av_display_rotation_set(matrix, degrees);
            rotated = true;
        }
    }
    if ((error = avio_open(&output->pb, argv[2], AVIO_FLAG_WRITE)) < 0)
        return fail("open output", error);
    if ((error = avformat_write_header(output, nullptr)) < 0)
        return fail("header", error);
    AVPacket *packet = av_packet_alloc();
    while ((error = av_read_frame(input, packet)) >= 0) {
        const AVStream *from = input->streams[packet->stream_index];
        const AVStream *to = output->streams[packet->stream_index];
        av_packet_rescale_ts(packet, from->time_base, to->time_base);
        packet->pos = -1;
        if ((error = av_interleaved_write_frame(output, packet)) < 0)
            return fail("write", error);
    }
    if (error != AVERROR_EOF)
        return fail("read", error);
    if ((error = av_write_trailer(output)) < 0)
        return fail("trailer", error);
    av_packet_free(&packet);
    avio_closep(&output->pb);
    avformat_free_context(output);
    avformat_close_input(&input);
    return rotated ? 0 : 1;
}
