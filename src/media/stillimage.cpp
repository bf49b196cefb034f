#include "stillimage.h"

#include "fitsize.h"
#include "heif/heifimage.h"
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
    if (HeifImage::looksLikeHeif(path))
        return HeifImage::thumbnail(path, maxSide);
    const QSize box(maxSide, maxSide);
    std::optional<QSize> scaled;
    {
        QImageReader probe(path);
        const QSize stored = probe.size();
        // Scaling happens before the orientation turn, and a turn keeps the long side long, so
        // fitting the stored size into the square fits the upright picture too. JPEG decodes
        // straight at a fraction of its size this way.
        if (stored.isValid() && fitWithin(stored, box) != stored)
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
    return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace StillImage
