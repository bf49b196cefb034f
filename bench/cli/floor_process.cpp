// The sequential header-open loop as a program of its own that links nothing but FFmpeg: what
// a first start of the plainest reader costs, libraries included, to set beside a first start
// of cuebox.
//
//   bench_floor_process WORK_FOLDER FILES
extern "C" {
#include <libavformat/avformat.h>
}

#include <cstdio>
#include <cstdlib>

int main(int argc, char **argv)
{
    if (argc != 3)
        return 2;
    av_log_set_level(AV_LOG_QUIET);
    const int count = std::atoi(argv[2]);
    char path[4096];
    for (int i = 0; i < count; ++i) {
        std::snprintf(path, sizeof path, "%s/clip%04d.mov", argv[1], i);
        AVFormatContext *format = nullptr;
        if (avformat_open_input(&format, path, nullptr, nullptr) == 0)
            avformat_close_input(&format);
    }
    return 0;
}
