// Compiled into every program that links the still-image code in (the window, tests,
// benchmarks): it installs that code before main, so they never look for the module.
#include "imagemodule.h"

namespace {

const bool installed = (ImageModule::install(cuebox_image_module()), true);

} // namespace
