#include "heiflibrary.h"

#include "media/runtimelibrary.h"

#include <libheif/heif_version.h>

namespace {

// The library of the major version the headers describe, never one with another ABI.
const QByteArray kSoname = "libheif.so." + QByteArray::number(LIBHEIF_NUMERIC_VERSION >> 24);

} // namespace

const HeifLibrary *HeifLibrary::get(QString *why)
{
    // Thread-safe, and tried once. Its decoder plugins register themselves for the life of the
    // process, one more reason it is never unloaded.
    static const RuntimeLibrary<HeifLibrary> library(kSoname, [](auto &opened, HeifLibrary &f) {
        return opened.resolve("heif_check_filetype", f.checkFiletype) &&
               opened.resolve("heif_context_alloc", f.contextAlloc) &&
               opened.resolve("heif_context_free", f.contextFree) &&
               opened.resolve("heif_context_set_maximum_image_size_limit",
                              f.setMaximumImageSizeLimit) &&
               opened.resolve("heif_context_read_from_file", f.readFromFile) &&
               opened.resolve("heif_context_get_primary_image_handle", f.primaryImageHandle) &&
               opened.resolve("heif_image_handle_release", f.handleRelease) &&
               opened.resolve("heif_image_handle_get_width", f.handleWidth) &&
               opened.resolve("heif_image_handle_get_height", f.handleHeight) &&
               opened.resolve("heif_image_handle_get_ispe_width", f.handleIspeWidth) &&
               opened.resolve("heif_image_handle_get_ispe_height", f.handleIspeHeight) &&
               opened.resolve("heif_image_handle_has_alpha_channel", f.handleHasAlpha) &&
               opened.resolve("heif_image_handle_get_luma_bits_per_pixel", f.handleLumaBits) &&
               opened.resolve("heif_decoding_options_alloc", f.optionsAlloc) &&
               opened.resolve("heif_decoding_options_free", f.optionsFree) &&
               opened.resolve("heif_decode_image", f.decodeImage) &&
               opened.resolve("heif_image_release", f.imageRelease) &&
               opened.resolve("heif_image_get_plane_readonly", f.planeReadonly) &&
               opened.resolve("heif_image_get_width", f.imageWidth) &&
               opened.resolve("heif_image_get_height", f.imageHeight) &&
               opened.resolve("heif_image_get_bits_per_pixel_range", f.imageBitsRange);
    });
    return library.functions(why);
}
