#include "filterlibrary.h"

extern "C" {
#include <libavutil/macros.h>
}

#include <dlfcn.h>

namespace {

// The library of the version the headers describe, never a newer one with another ABI.
constexpr const char *kSoname = "libavfilter.so." AV_STRINGIFY(LIBAVFILTER_VERSION_MAJOR);

struct Loaded {
    FilterLibrary functions;
    QString why; // empty when loaded
};

template<typename Function>
bool resolve(void *handle, const char *name, Function &into, QString &why)
{
    into = reinterpret_cast<Function>(dlsym(handle, name));
    if (!into)
        why = QStringLiteral("%1 lacks %2")
                  .arg(QString::fromLatin1(kSoname), QString::fromLatin1(name));
    return into != nullptr;
}

Loaded load()
{
    Loaded loaded;
    // Never unloaded: graphs may live until the process ends.
    void *handle = dlopen(kSoname, RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        loaded.why = QString::fromLocal8Bit(dlerror());
        return loaded;
    }
    FilterLibrary &f = loaded.functions;
    QString &why = loaded.why;
    const bool all = resolve(handle, "avfilter_get_by_name", f.getByName, why) &&
                     resolve(handle, "avfilter_graph_alloc", f.graphAlloc, why) &&
                     resolve(handle, "avfilter_graph_free", f.graphFree, why) &&
                     resolve(handle, "avfilter_graph_create_filter", f.graphCreateFilter, why) &&
                     resolve(handle, "avfilter_graph_parse_ptr", f.graphParse, why) &&
                     resolve(handle, "avfilter_graph_config", f.graphConfig, why) &&
                     resolve(handle, "avfilter_inout_alloc", f.inOutAlloc, why) &&
                     resolve(handle, "avfilter_inout_free", f.inOutFree, why) &&
                     resolve(handle, "av_buffersrc_add_frame_flags", f.sourceAddFrame, why) &&
                     resolve(handle, "av_buffersink_get_frame", f.sinkGetFrame, why) &&
                     resolve(handle, "av_buffersink_get_time_base", f.sinkTimeBase, why);
    if (!all)
        loaded.functions = {};
    return loaded;
}

} // namespace

const FilterLibrary *FilterLibrary::get(QString *why)
{
    static const Loaded loaded = load(); // thread-safe, and tried once
    if (why)
        *why = loaded.why;
    return loaded.why.isEmpty() ? &loaded.functions : nullptr;
}
