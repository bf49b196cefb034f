#include "stillimage.h"

#include "fitsize.h"
#include "heif/heifimage.h"
#include "model/filesystem.h"
#include "stillalpha.h"

#include <QImageReader>

namespace StillImage {

namespace {

QImage readUpright(const QString &path, std::optional<QSize> scaled)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    if (scaled)
        reader.setScaledSize(*scaled);
    return reader.read();
}

} // namespace

ImageFacts readFacts(const QString &path)
{
    if (FileSystem::isSpecial(path)) // a pipe would block the reader for ever
        return {};
    if (HeifImage::looksLikeHeif(path)) {
        ImageFacts facts = HeifImage::readFacts(path);
        facts.hasAlpha = facts.hasAlpha && StillAlpha::anyTranslucentPixel(path);
        return facts;
    }
    QImageReader reader(path);
    ImageFacts facts;
    facts.opened = reader.canRead();
    if (!facts.opened)
        return facts;
    const QSize size = reader.size(); // from the header; the handlers decode nothing for it
    if (size.isValid() && !size.isEmpty()) {
        facts.hasProperties = true;
        facts.width = size.width();
        facts.height = size.height();
        facts.hasAlpha = StillAlpha::mayHaveAlpha(reader.imageFormat()) &&
                         StillAlpha::anyTranslucentPixel(path);
    }
    return facts;
}

QImage thumbnail(const QString &path, int maxSide)
{
    if (FileSystem::isSpecial(path))
        return {};
    if (HeifImage::looksLikeHeif(path))
        return HeifImage::thumbnail(path, maxSide);
    const QSize box(maxSide, maxSide);
    std::optional<QSize> scaled;
    {
        QImageReader probe(path);
        const QSize stored = probe.size();
        // JPEG decodes straight at a fraction of its size; that is worth a scaled read. Other
        // readers only scale after decoding, with QImage::scaled, which gets 1-bit pictures
        // wrong (see below), so they are read whole and scaled here. Scaling happens before the
        // orientation turn, and a turn keeps the long side long, so fitting the stored size
        // into the square fits the upright picture too.
        if (probe.format() == "jpeg" && stored.isValid() && fitWithin(stored, box) != stored)
            scaled = fitWithin(stored, box);
    }
    QImage image = readUpright(path, scaled);
    if (image.isNull() && scaled) // some readers refuse a scaled read; take the whole picture
        image = readUpright(path, std::nullopt);
    if (image.isNull())
        return {};
    const QSize size = fitWithin(image.size(), box);
    if (size == image.size())
        return image;
    // QImage scales a 1-bit picture into a 1-bit one with a black-and-white colour table, not
    // the picture's own two colours: a blue slate came out black. Scale in 32 bits.
    if (image.depth() < 32)
        image = image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                              : QImage::Format_RGB32);
    return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace StillImage
