#pragma once

#include <cstdint> // before the C headers, which want its constant macros

extern "C" {
#include <libavfilter/avfilter.h>
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
}

#include <QString>

// libavfilter, loaded the first time a conversion needs a filter graph rather than when the
// program starts: with the libraries it pulls in, it was nearly half of what every start of the
// command line spent loading libraries, and only a few conversions ever filter.
struct FilterLibrary {
    decltype(&avfilter_get_by_name) getByName = nullptr;
    decltype(&avfilter_graph_alloc) graphAlloc = nullptr;
    decltype(&avfilter_graph_free) graphFree = nullptr;
    decltype(&avfilter_graph_create_filter) graphCreateFilter = nullptr;
    decltype(&avfilter_graph_parse_ptr) graphParse = nullptr;
    decltype(&avfilter_graph_config) graphConfig = nullptr;
    decltype(&avfilter_inout_alloc) inOutAlloc = nullptr;
    decltype(&avfilter_inout_free) inOutFree = nullptr;
    decltype(&av_buffersrc_add_frame_flags) sourceAddFrame = nullptr;
    decltype(&av_buffersink_get_frame) sinkGetFrame = nullptr;
    decltype(&av_buffersink_get_time_base) sinkTimeBase = nullptr;

    // The library, loaded once for the whole process; null when it cannot be loaded, with the
    // loader's reason in `why`.
    static const FilterLibrary *get(QString *why = nullptr);
};
