// Build tool: renders the application's SVG icon into the PNG sizes of the hicolor theme, so
// that no binary image lives in git and the PNGs always match the SVG.
// Usage: cuebox_rendericon ICON.svg OUTDIR SIZE...  writes OUTDIR/SIZExSIZE/apps/cuebox.png
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char *argv[])
{
    // No display at build time; the raster painter needs none.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList args = QGuiApplication::arguments();
    if (args.size() < 4) {
        std::fputs("usage: cuebox_rendericon ICON.svg OUTDIR SIZE...\n", stderr);
        return 2;
    }
    QSvgRenderer renderer(args[1]);
    if (!renderer.isValid()) {
        std::fprintf(stderr, "cuebox_rendericon: cannot read %s\n", qPrintable(args[1]));
        return 1;
    }
    for (qsizetype i = 3; i < args.size(); ++i) {
        bool ok = false;
        const int size = args[i].toInt(&ok);
        if (!ok || size < 1 || size > 1024) {
            std::fprintf(stderr, "cuebox_rendericon: bad size '%s'\n", qPrintable(args[i]));
            return 2;
        }
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        {
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            renderer.render(&painter, QRectF(0, 0, size, size));
        }
        const QString dir = QStringLiteral("%1/%2x%2/apps").arg(args[2]).arg(size);
        const QString file = dir + QStringLiteral("/cuebox.png");
        if (!QDir().mkpath(dir) || !image.save(file, "PNG", 0)) {
            std::fprintf(stderr, "cuebox_rendericon: cannot write %s\n", qPrintable(file));
            return 1;
        }
    }
    return 0;
}
