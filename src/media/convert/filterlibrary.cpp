#include "filterlibrary.h"

#include "media/runtimelibrary.h"

extern "C" {
#include <libavutil/macros.h>
}

namespace {

// The library of the version the headers describe, never a newer one with another ABI.
constexpr const char *kSoname = "libavfilter.so." AV_STRINGIFY(LIBAVFILTER_VERSION_MAJOR);

} // namespace

const FilterLibrary *FilterLibrary::get(QString *why)
{
    // Thread-safe, and tried once.
    static const RuntimeLibrary<FilterLibrary> library(kSoname, [](auto &opened, FilterLibrary &f) {
        return opened.resolve("avfilter_get_by_name", f.getByName) &&
               opened.resolve("avfilter_graph_alloc", f.graphAlloc) &&
               opened.resolve("avfilter_graph_free", f.graphFree) &&
               opened.resolve("avfilter_graph_create_filter", f.graphCreateFilter) &&
               opened.resolve("avfilter_graph_parse_ptr", f.graphParse) &&
               opened.resolve("avfilter_graph_config", f.graphConfig) &&
               opened.resolve("avfilter_inout_alloc", f.inOutAlloc) &&
               opened.resolve("avfilter_inout_free", f.inOutFree) &&
               opened.resolve("av_buffersrc_add_frame_flags", f.sourceAddFrame) &&
               opened.resolve("av_buffersink_get_frame", f.sinkGetFrame) &&
               opened.resolve("av_buffersink_get_time_base", f.sinkTimeBase);
    });
    return library.functions(why);
}
