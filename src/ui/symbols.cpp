#include "symbols.h"

#include <QHash>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <cmath>

namespace Symbols {

namespace {

// Symbol name → resource file. The names are the ones the screens are designed with; a few
// share a picture where our set has no closer one.
const QHash<QString, QString> &table()
{
    static const QHash<QString, QString> files = [] {
        QHash<QString, QString> t;
        for (const char *name : {"folder",
                                 "folder.badge.plus",
                                 "doc",
                                 "doc.on.doc",
                                 "square.and.arrow.down",
                                 "square.and.arrow.up",
                                 "ladybug.fill",
                                 "film",
                                 "film.stack",
                                 "photo",
                                 "trash",
                                 "line.3.horizontal",
                                 "waveform",
                                 "speaker.slash",
                                 "play.fill",
                                 "pause.fill",
                                 "backward.end.fill",
                                 "checkmark.seal.fill",
                                 "checkmark.circle.fill",
                                 "exclamationmark.triangle.fill",
                                 "xmark.octagon.fill",
                                 "questionmark.circle",
                                 "lightbulb.max.fill",
                                 "xmark",
                                 "gearshape",
                                 // the studios' own pictures (src/ui/studios/icons)
                                 "bolt.horizontal.circle.fill",
                                 "arrow.up.forward.app",
                                 "arrow.triangle.2.circlepath",
                                 // the settings window's (src/ui/settings/icons)
                                 "globe",
                                 "textformat",
                                 "exclamationmark.triangle",
                                 "laptopcomputer",
                                 // the sidebar's (src/ui/sidebar/icons)
                                 "checklist",
                                 "checkmark",
                                 "circle",
                                 "display",
                                 "exclamationmark",
                                 "eye",
                                 "hand.tap",
                                 "heart.text.clipboard",
                                 "pencil",
                                 "rectangle",
                                 "rectangle.portrait",
                                 "rectangle.stack.badge.minus",
                                 "square.stack.3d.up",
                                 "textformat.abc",
                                 "tv"}) {
            const QString n = QString::fromLatin1(name);
            t.insert(n, QStringLiteral(":/icons/%1.svg").arg(n));
        }
        return t;
    }();
    return files;
}

QImage render(const QString &file, const QColor &color, int sidePx)
{
    QImage image(sidePx, sidePx, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer renderer(file);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    renderer.render(&p, QRectF(0, 0, sidePx, sidePx));
    // The SVGs are white with darker cut-outs; multiplying keeps the cut-outs and tints the rest.
    p.setCompositionMode(QPainter::CompositionMode_Multiply);
    p.fillRect(image.rect(), QColor(color.red(), color.green(), color.blue()));
    p.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    QImage mask(sidePx, sidePx, QImage::Format_ARGB32_Premultiplied);
    mask.fill(Qt::transparent);
    {
        QPainter m(&mask);
        m.setRenderHint(QPainter::Antialiasing);
        renderer.render(&m, QRectF(0, 0, sidePx, sidePx));
    }
    p.drawImage(0, 0, mask);
    p.end();
    if (color.alpha() < 255) {
        QImage faded(image.size(), QImage::Format_ARGB32_Premultiplied);
        faded.fill(Qt::transparent);
        QPainter f(&faded);
        f.setOpacity(color.alphaF());
        f.drawImage(0, 0, image);
        return faded;
    }
    return image;
}

} // namespace

QStringList names()
{
    QStringList all = table().keys();
    all.sort();
    return all;
}

bool contains(const QString &name)
{
    return table().contains(name);
}

QPixmap pixmap(const QString &name, const QColor &color, int sidePx, qreal dpr)
{
    const int device = std::max(1, static_cast<int>(std::ceil(sidePx * dpr)));
    const QString key = QStringLiteral("sym|%1|%2|%3").arg(name).arg(color.rgba()).arg(device);
    QPixmap cached;
    if (QPixmapCache::find(key, &cached))
        return cached;
    const QString file = table().value(name, QStringLiteral(":/icons/questionmark.circle.svg"));
    cached = QPixmap::fromImage(render(file, color, device));
    cached.setDevicePixelRatio(dpr);
    QPixmapCache::insert(key, cached);
    return cached;
}

QIcon icon(const QString &name, const QColor &color)
{
    QIcon result;
    for (int side : {16, 20, 24, 32, 48}) {
        result.addPixmap(pixmap(name, color, side), QIcon::Normal);
        result.addPixmap(pixmap(name, QColor(255, 255, 255, 70), side), QIcon::Disabled);
    }
    return result;
}

void paint(QPainter *painter, const QString &name, const QColor &color, const QRectF &rect)
{
    const qreal side = std::min(rect.width(), rect.height());
    const qreal dpr = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
    const QPixmap pm = pixmap(name, color, static_cast<int>(std::lround(side)), dpr);
    const QRectF target(rect.center().x() - side / 2, rect.center().y() - side / 2, side, side);
    painter->drawPixmap(target, pm, QRectF(QPointF(0, 0), QSizeF(pm.size())));
}

QIcon applicationIcon()
{
    return QIcon(QStringLiteral(":/icons/cuebox.svg"));
}

} // namespace Symbols
