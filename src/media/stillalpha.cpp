#include "stillalpha.h"

#include "convert/storedimage.h"

#include <QPixelFormat>

#include <algorithm>

namespace StillAlpha {

bool mayHaveAlpha(QImage::Format format)
{
    return format == QImage::Format_Invalid ||
           QImage::toPixelFormat(format).alphaUsage() == QPixelFormat::UsesAlpha;
}

bool anyTranslucentPixel(const QString &path)
{
    return anyTranslucentPixel(StoredImage::read(path));
}

bool anyTranslucentPixel(const QImage &image)
{
    if (image.isNull() || !image.hasAlphaChannel())
        return false;
    // 16-bit alpha is compared at full depth: 65534 of 65535 is still see-through.
    if (image.depth() == 64) {
        const QImage deep = image.convertToFormat(QImage::Format_RGBA64);
        for (int y = 0; y < deep.height(); ++y) {
            const auto *row = reinterpret_cast<const QRgba64 *>(deep.constScanLine(y));
            if (std::any_of(row, row + deep.width(), [](QRgba64 p) { return p.alpha() != 0xffff; }))
                return true;
        }
        return false;
    }
    const QImage alpha = image.convertToFormat(QImage::Format_Alpha8);
    for (int y = 0; y < alpha.height(); ++y) {
        const uchar *row = alpha.constScanLine(y);
        if (std::any_of(row, row + alpha.width(), [](uchar a) { return a != 0xff; }))
            return true;
    }
    return false;
}

} // namespace StillAlpha
