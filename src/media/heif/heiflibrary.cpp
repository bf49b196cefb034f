#include "heiflibrary.h"

#include <libheif/heif_version.h>

#include <dlfcn.h>

namespace {

// The library of the major version the headers describe, never one with another ABI.
const QByteArray kSoname = "libheif.so." + QByteArray::number(LIBHEIF_NUMERIC_VERSION >> 24);

struct Loaded {
    HeifLibrary functions;
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
    // Never unloaded: its decoder plugins register themselves for the life of the process.
    void *handle = dlopen(kSoname.constData(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        loaded.why = QString::fromLocal8Bit(dlerror());
        return loaded;
    }
    HeifLibrary &f = loaded.functions;
    QString &why = loaded.why;
    const bool all =
        resolve(handle, "heif_check_filetype", f.checkFiletype, why) &&
        resolve(handle, "heif_context_alloc", f.contextAlloc, why) &&
        resolve(handle, "heif_context_free", f.contextFree, why) &&
        resolve(handle, "heif_context_set_maximum_image_size_limit", f.setMaximumImageSizeLimit,
                why) &&
        resolve(handle, "heif_context_read_from_file", f.readFromFile, why) &&
        resolve(handle, "heif_context_get_primary_image_handle", f.primaryImageHandle, why) &&
        resolve(handle, "heif_image_handle_release", f.handleRelease, why) &&
        resolve(handle, "heif_image_handle_get_width", f.handleWidth, why) &&
        resolve(handle, "heif_image_handle_get_height", f.handleHeight, why) &&
        resolve(handle, "heif_image_handle_get_ispe_width", f.handleIspeWidth, why) &&
        resolve(handle, "heif_image_handle_get_ispe_height", f.handleIspeHeight, why) &&
        resolve(handle, "heif_image_handle_has_alpha_channel", f.handleHasAlpha, why) &&
        resolve(handle, "heif_image_handle_get_luma_bits_per_pixel", f.handleLumaBits, why) &&
        resolve(handle, "heif_decoding_options_alloc", f.optionsAlloc, why) &&
        resolve(handle, "heif_decoding_options_free", f.optionsFree, why) &&
        resolve(handle, "heif_decode_image", f.decodeImage, why) &&
        resolve(handle, "heif_image_release", f.imageRelease, why) &&
        resolve(handle, "heif_image_get_plane_readonly", f.planeReadonly, why) &&
        resolve(handle, "heif_image_get_width", f.imageWidth, why) &&
        resolve(handle, "heif_image_get_height", f.imageHeight, why) &&
        resolve(handle, "heif_image_get_bits_per_pixel_range", f.imageBitsRange, why);
    if (!all)
        loaded.functions = {};
    return loaded;
}

} // namespace

const HeifLibrary *HeifLibrary::get(QString *why)
{
    static const Loaded loaded = load(); // thread-safe, and tried once
    if (why)
        *why = loaded.why;
    return loaded.why.isEmpty() ? &loaded.functions : nullptr;
}
