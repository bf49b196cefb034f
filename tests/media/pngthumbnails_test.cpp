// Thumbnails of PNGs of every colour type and bit depth, made by ImageMagick (a producer the
// project does not use itself) and compared with ImageMagick's own decode of the whole picture,
// scaled down: a thumbnail shows the picture, never noise.
#include "mediafixtures.h"

#include "media/thumbnails.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

using namespace MediaFixtures;

// Bit depth and colour type from the IHDR chunk, which follows the 8-byte signature.
std::pair<int, int> depthAndType(const QString &file)
{
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return {-1, -1};
    const QByteArray head = f.read(26);
    return head.size() == 26 ? std::pair{int(uchar(head[24])), int(uchar(head[25]))}
                             : std::pair{-1, -1};
}

// Makes `file` from ImageMagick's `arguments`, then reads it back: the whole picture as
// ImageMagick decodes it, premultiplied so that the colour of transparent pixels does not count.
QImage makeAndDecode(const QStringList &arguments, const QString &file, QSize size)
{
    const Run made = run("convert", arguments + QStringList{"-write", file, "+delete", file,
                                                            "-depth", "8", "rgba:-"});
    if (made.exitCode != 0 || made.out.size() != qsizetype(size.width()) * size.height() * 4)
        return {};
    return QImage(reinterpret_cast<const uchar *>(made.out.constData()), size.width(),
                  size.height(), QImage::Format_RGBA8888)
        .convertToFormat(QImage::Format_RGBA8888_Premultiplied);
}

} // namespace

TEST(PngThumbnails, EveryColourTypeAndDepthLooksLikeThePicture)
{
    const QStringList quads = {"-size", "50x150", "xc:red",  "-size", "50x150", "xc:blue",
                               "-size", "50x150", "xc:lime", "-size", "50x150", "xc:yellow"};
    const QStringList ramp = {"-size", "150x200", "gradient:red-blue", "-rotate", "90"};
    const QStringList greyRamp = {"-size",       "150x200", "gradient:white-black", "-rotate", "90",
                                  "-colorspace", "gray"};
    const QStringList fade = {"(", "-size",    "200x150",      "gradient:white-none",
                              ")", "-compose", "copy-opacity", "-composite"};
    // bKGD left out: ImageMagick counts the background colour into the palette.
    const auto as = [](int depth, int type) {
        return (depth == 16 ? QStringList{"-depth", "16"} : QStringList{}) +
               QStringList{"-define", "png:exclude-chunk=bKGD",
                           "-define", QStringLiteral("png:bit-depth=%1").arg(depth),
                           "-define", QStringLiteral("png:color-type=%1").arg(type)};
    };
    struct Row {
        const char *name;
        QStringList arguments; // ImageMagick's, before the output file
        int depth;
        int type; // 0 grey, 2 RGB, 3 palette, 4 grey + alpha, 6 RGBA
        QSize size = {200, 150};
    };
    const Row rows[] = {
        {"palette 1-bit, solid", {"-size", "800x600", "xc:blue"}, 1, 3, {800, 600}},
        {"palette 1-bit", quads.mid(0, 6) + QStringList{"+append"} + as(1, 3), 1, 3, {100, 150}},
        {"palette 2-bit", quads + QStringList{"+append"} + as(2, 3), 2, 3},
        {"palette 4-bit", ramp + QStringList{"-colors", "12"} + as(4, 3), 4, 3},
        {"palette 8-bit", ramp + QStringList{"-colors", "200"} + as(8, 3), 8, 3},
        {"grey 1-bit",
         QStringList{"-size", "100x150", "xc:black", "-size", "100x150", "xc:white", "+append"} +
             as(1, 0),
         1, 0},
        {"grey 2-bit", greyRamp + QStringList{"-depth", "2"} + as(2, 0), 2, 0},
        {"grey 4-bit", greyRamp + QStringList{"-depth", "4"} + as(4, 0), 4, 0},
        {"grey 8-bit", greyRamp + as(8, 0), 8, 0},
        {"grey 16-bit", greyRamp + as(16, 0), 16, 0},
        {"grey and alpha 8-bit", greyRamp + fade + as(8, 4), 8, 4},
        {"grey and alpha 16-bit", greyRamp + fade + as(16, 4), 16, 4},
        {"RGB 16-bit", ramp + as(16, 2), 16, 2},
        {"RGBA 16-bit", ramp + fade + as(16, 6), 16, 6},
    };
    QTemporaryDir dir;
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        const QString file = dir.filePath(QString::fromLatin1(row.name).replace(' ', '_') + ".png");
        const QImage reference = makeAndDecode(row.arguments, file, row.size);
        if (depthAndType(file) != std::pair(row.depth, row.type)) {
            ADD_FAILURE() << "ImageMagick made another kind of PNG";
            continue;
        }
        const QImage thumbnail = Thumbnails::still(file);
        const QSize size = row.size.scaled(120, 120, Qt::KeepAspectRatio);
        EXPECT_EQ(thumbnail.size(), size);
        EXPECT_FALSE(reference.isNull());
        if (thumbnail.size() != size || reference.isNull())
            continue;
        const QImage expected =
            reference.scaled(thumbnail.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        // Per channel, 0 to 255; both are RGBA, whose lines need no padding.
        EXPECT_LT(meanDifference(
                      samples(thumbnail.convertToFormat(QImage::Format_RGBA8888_Premultiplied)),
                      samples(expected)),
                  4.0);
    }
}
