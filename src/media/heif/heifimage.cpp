#include "heifimage.h"
#include "heifhandles.h"

#include "media/fitsize.h"

#include <QFile>
#include <QImageReader>

#include <memory>

namespace HeifImage {

namespace {

using namespace HeifHandles;

struct Opened {
    Context context;
    ImageHandle primary;
};

// Only called for files that looked like HEIF, which needed the library loaded.
Opened openPrimary(const QString &path)
{
    const HeifLibrary *lib = HeifLibrary::get();
    if (!lib)
        return {};
    Opened opened;
    opened.context.reset(lib->contextAlloc());
    if (!opened.context)
        return {};
    lib->setMaximumImageSizeLimit(opened.context.get(), kMaxSide);
    const QByteArray local = QFile::encodeName(path);
    if (lib->readFromFile(opened.context.get(), local.constData(), nullptr).code != heif_error_Ok)
        return {};
    heif_image_handle *primary = nullptr;
    if (lib->primaryImageHandle(opened.context.get(), &primary).code != heif_error_Ok)
        return {};
    opened.primary.reset(primary);
    return opened;
}

} // namespace

bool looksLikeHeif(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray head = file.read(12);
    // Every HEIF file starts with its file-type box; anything else is answered without loading
    // the library.
    if (head.size() < 12 || head.mid(4, 4) != "ftyp")
        return false;
    const HeifLibrary *lib = HeifLibrary::get();
    return lib && lib->checkFiletype(reinterpret_cast<const uint8_t *>(head.constData()),
                                     static_cast<int>(head.size())) == heif_filetype_yes_supported;
}

ImageFacts readFacts(const QString &path)
{
    const Opened opened = openPrimary(path);
    ImageFacts facts;
    if (!opened.primary)
        return facts;
    const HeifLibrary *lib = HeifLibrary::get();
    facts.opened = true;
    // ispe is the size as coded, before rotation, like the pixel size of any other still.
    const int width = lib->handleIspeWidth(opened.primary.get());
    const int height = lib->handleIspeHeight(opened.primary.get());
    if (width > 0 && height > 0) {
        facts.hasProperties = true;
        facts.width = width;
        facts.height = height;
    }
    // Declared only; StillImage looks at the pixels before it calls the still transparent.
    facts.hasAlpha = lib->handleHasAlpha(opened.primary.get()) != 0;
    return facts;
}

QImage thumbnail(const QString &path, int maxSide)
{
    const Opened opened = openPrimary(path);
    if (!opened.primary)
        return {};
    const HeifLibrary *lib = HeifLibrary::get();
    // The same ceiling Qt's readers put on the other formats, so that a forged size cannot
    // make one thumbnail take gigabytes.
    const qint64 area =
        qint64(lib->handleWidth(opened.primary.get())) * lib->handleHeight(opened.primary.get());
    if (area <= 0 || area * 4 > qint64(QImageReader::allocationLimit()) * 1024 * 1024)
        return {};
    heif_image *decoded = nullptr;
    // Default options apply the file's rotation and mirroring, as the picture is meant to be seen.
    if (lib->decodeImage(opened.primary.get(), &decoded, heif_colorspace_RGB,
                         heif_chroma_interleaved_RGBA, nullptr)
            .code != heif_error_Ok)
        return {};
    const Image image(decoded);
    int stride = 0;
    const uint8_t *pixels = lib->planeReadonly(image.get(), heif_channel_interleaved, &stride);
    const int width = lib->imageWidth(image.get(), heif_channel_interleaved);
    const int height = lib->imageHeight(image.get(), heif_channel_interleaved);
    if (!pixels || width <= 0 || height <= 0 || stride < width * 4)
        return {};
    // A view of libheif's buffer; the scaled copy below is ours.
    const QImage view(pixels, width, height, stride, QImage::Format_RGBA8888);
    const QSize size = fitWithin(view.size(), {maxSide, maxSide});
    if (size == view.size())
        return view.copy();
    return view.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace HeifImage
