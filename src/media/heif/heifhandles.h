#pragma once

#include "heiflibrary.h"

#include <memory>

// Owners for libheif's objects, shared by the thumbnail path and the converter. Only the loaded
// library makes them, so it is there to free them.
namespace HeifHandles {

struct ContextFreer {
    void operator()(heif_context *p) const { HeifLibrary::get()->contextFree(p); }
};
struct HandleReleaser {
    void operator()(const heif_image_handle *p) const { HeifLibrary::get()->handleRelease(p); }
};
struct ImageReleaser {
    void operator()(const heif_image *p) const { HeifLibrary::get()->imageRelease(p); }
};
struct OptionsFreer {
    void operator()(heif_decoding_options *p) const { HeifLibrary::get()->optionsFree(p); }
};
using Context = std::unique_ptr<heif_context, ContextFreer>;
using ImageHandle = std::unique_ptr<const heif_image_handle, HandleReleaser>;
using Image = std::unique_ptr<const heif_image, ImageReleaser>;
using Options = std::unique_ptr<heif_decoding_options, OptionsFreer>;

// Far beyond any camera, and small enough that a hostile header cannot make the decoder ask
// for gigabytes.
constexpr int kMaxSide = 16384;

} // namespace HeifHandles
