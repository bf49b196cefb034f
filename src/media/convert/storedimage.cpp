#include "storedimage.h"

#include "media/heif/heifhandles.h"
#include "media/heif/heifimage.h"
#include "model/filesystem.h"

#include <QFile>
#include <QImageReader>

#include <cstring>
#include <memory>

namespace {

using namespace HeifHandles;

// Samples of fewer than 16 bits, as libheif leaves them in 16-bit words, spread over the full
// 16-bit range so that white stays white (0x3FF becomes 0xFFFF).
void widenSamples(QImage &image, int bits)
{
    if (bits >= 16 || bits <= 8)
        return;
    for (int y = 0; y < image.height(); ++y) {
        auto *row = reinterpret_cast<quint16 *>(image.scanLine(y));
        for (int x = 0; x < image.width() * 4; ++x)
            row[x] = quint16((row[x] << (16 - bits)) | (row[x] >> (2 * bits - 16)));
    }
}

// Only called for files that looked like HEIF, which needed the library loaded.
QImage readHeif(const QString &path)
{
    const HeifLibrary *lib = HeifLibrary::get();
    if (!lib)
        return {};
    Context context(lib->contextAlloc());
    if (!context)
        return {};
    lib->setMaximumImageSizeLimit(context.get(), kMaxSide);
    if (lib->readFromFile(context.get(), QFile::encodeName(path).constData(), nullptr).code !=
        heif_error_Ok)
        return {};
    heif_image_handle *primary = nullptr;
    if (lib->primaryImageHandle(context.get(), &primary).code != heif_error_Ok)
        return {};
    ImageHandle handle(primary);
    const bool alpha = lib->handleHasAlpha(primary) != 0;
    const int bits = lib->handleLumaBits(primary);
    const bool deep = bits > 8;
    heif_chroma chroma = heif_chroma_interleaved_RGB;
    QImage::Format format = QImage::Format_RGB888;
    if (deep) {
        chroma = QSysInfo::ByteOrder == QSysInfo::LittleEndian
                     ? heif_chroma_interleaved_RRGGBBAA_LE
                     : heif_chroma_interleaved_RRGGBBAA_BE;
        format = alpha ? QImage::Format_RGBA64 : QImage::Format_RGBX64;
    } else if (alpha) {
        chroma = heif_chroma_interleaved_RGBA;
        format = QImage::Format_RGBA8888;
    }
    Options options(lib->optionsAlloc());
    if (!options)
        return {};
    options->ignore_transformations =
        1; // the stored pixels, like QImageReader without autoTransform
    heif_image *decoded = nullptr;
    if (lib->decodeImage(primary, &decoded, heif_colorspace_RGB, chroma, options.get()).code !=
        heif_error_Ok)
        return {};
    Image image(decoded);
    int stride = 0;
    const uint8_t *plane = lib->planeReadonly(decoded, heif_channel_interleaved, &stride);
    const int width = lib->imageWidth(decoded, heif_channel_interleaved);
    const int height = lib->imageHeight(decoded, heif_channel_interleaved);
    if (!plane || width <= 0 || height <= 0)
        return {};
    QImage result(width, height, format);
    if (result.isNull())
        return {};
    const qsizetype rowBytes = std::min<qsizetype>(result.bytesPerLine(), stride);
    for (int y = 0; y < height; ++y)
        std::memcpy(result.scanLine(y), plane + qsizetype(y) * stride, size_t(rowBytes));
    if (deep)
        widenSamples(result, lib->imageBitsRange(decoded, heif_channel_interleaved));
    return result;
}

} // namespace

QImage StoredImage::read(const QString &path)
{
    if (FileSystem::isSpecial(path)) // a pipe would block the reader for ever
        return {};
    if (HeifImage::looksLikeHeif(path))
        return readHeif(path);
    QImageReader reader(path);
    reader.setAutoTransform(false);
    return reader.read();
}
