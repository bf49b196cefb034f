#include "imagemodule.h"

#include "modulefile.h"

namespace {

ModuleFile::Slot<ImageModule> &slot()
{
    static ModuleFile::Slot<ImageModule> images("cuebox-images.so", "cuebox_image_module",
                                                "stills cannot be read or written");
    return images;
}

} // namespace

void ImageModule::install(const ImageModule *linked)
{
    slot().install(linked);
}

const ImageModule *ImageModule::get(QString *why)
{
    return slot().get(why);
}
