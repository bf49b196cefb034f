// Compiled into every program that links the FFmpeg code in (tests, benchmarks): it installs
// that code before main, so they never look for the module.
#include "mediamodule.h"

namespace {

const bool installed = (MediaModule::install(cuebox_media_module()), true);

} // namespace
