#pragma once

#include <libheif/heif.h>

#include <memory>

// Owners for libheif's objects, shared by the thumbnail path and the converter.
namespace HeifHandles {

struct ContextFreer {
    void operator()(heif_context *p) const { heif_context_free(p); }
};
struct HandleReleaser {
    void operator()(const heif_image_handle *p) const { heif_image_handle_release(p); }
};
struct ImageReleaser {
    void operator()(const heif_image *p) const { heif_image_release(p); }
};
struct OptionsFreer {
    void operator()(heif_decoding_options *p) const { heif_decoding_options_free(p); }
};
using Context = std::unique_ptr<heif_context, ContextFreer>;
using ImageHandle = std::unique_ptr<const heif_image_handle, HandleReleaser>;
using Image = std::unique_ptr<const heif_image, ImageReleaser>;
using Options = std::unique_ptr<heif_decoding_options, OptionsFreer>;

// Far beyond any camera, and small enough that a hostile header cannot make the decoder ask
// for gigabytes.
constexpr int kMaxSide = 16384;

} // namespace HeifHandles
