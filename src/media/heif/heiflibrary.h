#pragma once

#include <libheif/heif.h>

#include <QString>

// libheif, loaded the first time a file looks like HEIF rather than when the program starts:
// with its decoders' start-up work, it cost every start of the command line a few milliseconds,
// and most packs hold no HEIC still.
struct HeifLibrary {
    decltype(&heif_check_filetype) checkFiletype = nullptr;
    decltype(&heif_context_alloc) contextAlloc = nullptr;
    decltype(&heif_context_free) contextFree = nullptr;
    decltype(&heif_context_set_maximum_image_size_limit) setMaximumImageSizeLimit = nullptr;
    decltype(&heif_context_read_from_file) readFromFile = nullptr;
    decltype(&heif_context_get_primary_image_handle) primaryImageHandle = nullptr;
    decltype(&heif_image_handle_release) handleRelease = nullptr;
    decltype(&heif_image_handle_get_width) handleWidth = nullptr;
    decltype(&heif_image_handle_get_height) handleHeight = nullptr;
    decltype(&heif_image_handle_get_ispe_width) handleIspeWidth = nullptr;
    decltype(&heif_image_handle_get_ispe_height) handleIspeHeight = nullptr;
    decltype(&heif_image_handle_has_alpha_channel) handleHasAlpha = nullptr;
    decltype(&heif_image_handle_get_luma_bits_per_pixel) handleLumaBits = nullptr;
    decltype(&heif_decoding_options_alloc) optionsAlloc = nullptr;
    decltype(&heif_decoding_options_free) optionsFree = nullptr;
    decltype(&heif_decode_image) decodeImage = nullptr;
    decltype(&heif_image_release) imageRelease = nullptr;
    decltype(&heif_image_get_plane_readonly) planeReadonly = nullptr;
    decltype(&heif_image_get_width) imageWidth = nullptr;
    decltype(&heif_image_get_height) imageHeight = nullptr;
    decltype(&heif_image_get_bits_per_pixel_range) imageBitsRange = nullptr;

    // The library, loaded once for the whole process; null when it cannot be loaded, with the
    // loader's reason in `why`.
    static const HeifLibrary *get(QString *why = nullptr);
};
