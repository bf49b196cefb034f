// MediaConverter::convertImage: a still rewritten as PNG, optionally cropped to even sizes.
#include "mediaconverter.h"

#include "outputnames.h"
#include "partialfile.h"
#include "storedimage.h"

#include <QFile>
#include <QImageWriter>

namespace {

// Odd sides lose their last column or row, kept from the top-left corner. A side of one pixel
// has nothing to give, so such an image keeps its size rather than vanish.
QImage cropToEven(const QImage &image)
{
    const int width = image.width() - image.width() % 2;
    const int height = image.height() - image.height() % 2;
    if (width <= 0 || height <= 0 || (width == image.width() && height == image.height()))
        return image;
    const QImage cropped = image.copy(0, 0, width, height);
    return cropped.isNull() ? image : cropped;
}

} // namespace

ConvertResult MediaConverter::convertImage(const MediaClip &clip, const QString &folder,
                                           bool forceEven, std::function<void(double)> progress)
{
    if (!clip.sourceURL.isLocalFile())
        return MediaConverterError::unsupported();
    const QString source = clip.sourcePath();
    Result<QString> target = OutputNames::targetPath(folder, clip.arenaName, u".png");
    if (!target)
        return MediaConverterError::exportFailed(target.error().message);

    QImage image = StoredImage::read(source);
    if (image.isNull())
        return MediaConverterError::unsupported();
    if (forceEven)
        image = cropToEven(image);

    QString createError;
    std::optional<PartialFile> partial = PartialFile::create(*target, &createError);
    if (!partial)
        return MediaConverterError::exportFailed(QStringLiteral("PNG writer failed"));
    QFile file(partial->path());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return MediaConverterError::exportFailed(QStringLiteral("PNG writer failed"));
    QImageWriter writer(&file, "png");
    if (!writer.canWrite())
        return MediaConverterError::exportFailed(QStringLiteral("PNG writer failed"));
    // Qt's PNG writer keeps the image's depth: 16-bit formats are written as 16-bit PNG.
    const bool written = writer.write(image);
    file.close();
    if (!written || file.error() != QFileDevice::NoError)
        return MediaConverterError::exportFailed(QStringLiteral("PNG finalize failed"));
    if (const QString failed = partial->commit(); !failed.isEmpty())
        return MediaConverterError::exportFailed(failed);
    if (progress)
        progress(1.0);
    return *target;
}
