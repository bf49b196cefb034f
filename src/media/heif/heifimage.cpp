#include "heifimage.h"
#include "heifhandles.h"

#include "media/fitsize.h"

#include <QFile>
#include <QImageReader>

#include <libheif/heif.h>

#include <memory>

namespace HeifImage {

namespace {

using namespace HeifHandles;

struct Opened {
    Context context;
    ImageHandle primary;
};

Opened openPrimary(const QString &path)
{
    Opened opened;
    opened.context.reset(heif_context_alloc());
    if (!opened.context)
        return {};
    heif_context_set_maximum_image_size_limit(opened.context.get(), kMaxSide);
    const QByteArray local = QFile::encodeName(path);
    if (heif_context_read_from_file(opened.context.get(), local.constData(), nullptr).code !=
        heif_error_Ok)
        return {};
    heif_image_handle *primary = nullptr;
    if (heif_context_get_primary_image_handle(opened.context.get(), &primary).code != heif_error_Ok)
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
    if (head.size() < 12)
        return false;
    return heif_check_filetype(reinterpret_cast<const uint8_t *>(head.constData()),
                               static_cast<int>(head.size())) == heif_filetype_yes_supported;
}

ImageFacts readFacts(const QString &path)
{
    const Opened opened = openPrimary(path);
    ImageFacts facts;
    if (!opened.primary)
        return facts;
    facts.opened = true;
    // ispe is the size as coded, before rotation, like the pixel size of any other still.
    const int width = heif_image_handle_get_ispe_width(opened.primary.get());
    const int height = heif_image_handle_get_ispe_height(opened.primary.get());
    if (width > 0 && height > 0) {
        facts.hasProperties = true;
        facts.width = width;
        facts.height = height;
    }
    // Declared only; StillImage looks at the pixels before it calls the still transparent.
    facts.hasAlpha = heif_image_handle_has_alpha_channel(opened.primary.get()) != 0;
    return facts;
}

QImage thumbnail(const QString &path, int maxSide)
{
    const Opened opened = openPrimary(path);
    if (!opened.primary)
        return {};
    // The same ceiling Qt's readers put on the other formats, so that a forged size cannot
    // make one thumbnail take gigabytes.
    const qint64 area = qint64(heif_image_handle_get_width(opened.primary.get())) *
                        heif_image_handle_get_height(opened.primary.get());
    if (area <= 0 || area * 4 > qint64(QImageReader::allocationLimit()) * 1024 * 1024)
        return {};
    heif_image *decoded = nullptr;
    // Default options apply the file's rotation and mirroring, as the picture is meant to be seen.
    if (heif_decode_image(opened.primary.get(), &decoded, heif_colorspace_RGB,
                          heif_chroma_interleaved_RGBA, nullptr)
            .code != heif_error_Ok)
        return {};
    const Image image(decoded);
    int stride = 0;
    const uint8_t *pixels =
        heif_image_get_plane_readonly(image.get(), heif_channel_interleaved, &stride);
    const int width = heif_image_get_width(image.get(), heif_channel_interleaved);
    const int height = heif_image_get_height(image.get(), heif_channel_interleaved);
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
