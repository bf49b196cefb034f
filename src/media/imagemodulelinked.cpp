// The still-image functions as this code provides them: exported by the module for programs
// that load it, installed directly by programs that link the code in.
#include "convert/mediaconverter.h"
#include "imagemodule.h"
#include "stillimage.h"

extern "C" const ImageModule *cuebox_image_module()
{
    static const ImageModule functions{
        .readFacts = &StillImage::readFacts,
        .convertImage = &MediaConverter::convertImage,
    };
    return &functions;
}
