// The FFmpeg probe and converter as this code provides them: exported by the module for the
// command line, which loads it, installed directly by programs that link the code in.
#include "convert/ffmpegconversion.h"
#include "ffmpeg/ffmpegprobe.h"
#include "mediamodule.h"

extern "C" const MediaModule *cuebox_media_module()
{
    static const FfmpegProbe probe;
    static const FfmpegConversion conversion;
    static const MediaModule functions{.probe = &probe, .conversion = &conversion};
    return &functions;
}
