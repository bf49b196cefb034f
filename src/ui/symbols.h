#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>

class QPainter;
class QRectF;

// The icon table: every symbol name the interface uses ("folder", "film.stack", …) stands for
// one of our own monochrome SVGs, bundled as a resource so that the window looks the same on
// every desktop whatever icon theme is installed. Icons are drawn white and tinted on use.
namespace Symbols {

// Every name the table knows, for the test that each has a drawable picture.
QStringList names();
bool contains(const QString &name);

// The symbol tinted with `color`, `sidePx` device-independent pixels square, sharp at `dpr`.
// Cached: rows paint thousands of these per second.
QPixmap pixmap(const QString &name, const QColor &color, int sidePx, qreal dpr = 1.0);
// For actions and buttons: normal and disabled looks.
QIcon icon(const QString &name, const QColor &color = QColor(255, 255, 255, 230));
// Draws the symbol centred in `rect` (its shorter side is the icon size).
void paint(QPainter *painter, const QString &name, const QColor &color, const QRectF &rect);

QIcon applicationIcon();

} // namespace Symbols
