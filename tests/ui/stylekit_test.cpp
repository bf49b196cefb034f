#include "uifixture.h"

#include "ui/ambientbackground.h"
#include "ui/apptheme.h"
#include "ui/contentview.h"
#include "ui/segmentbar.h"
#include "ui/sidebar/panelparts.h"
#include "ui/symbols.h"

#include <QLabel>
#include <QPainter>

#include <memory>

TEST(StyleKit, EverySymbolHasAPicture)
{
    const QStringList names = Symbols::names();
    EXPECT_GE(names.size(), 25);
    for (const QString &name : names) {
        SCOPED_TRACE(name.toStdString());
        const QImage image = Symbols::pixmap(name, Qt::white, 24).toImage();
        bool drawn = false;
        for (int y = 0; y < image.height() && !drawn; ++y)
            for (int x = 0; x < image.width() && !drawn; ++x)
                drawn = qAlpha(image.pixel(x, y)) > 0;
        EXPECT_TRUE(drawn);
    }
}

TEST(StyleKit, SymbolsAreTinted)
{
    const QImage image =
        Symbols::pixmap(QStringLiteral("pause.fill"), AppTheme::fail, 24).toImage();
    const QColor centre = image.pixelColor(8, 12);
    EXPECT_GT(centre.alpha(), 200);
    EXPECT_NEAR(centre.redF(), AppTheme::fail.redF(), 0.05);
    EXPECT_NEAR(centre.greenF(), AppTheme::fail.greenF(), 0.05);
}

TEST(StyleKit, SegmentBarOfAnEmptyPackDrawsOnlyTheTrack)
{
    const auto paint = [](const QList<SegmentBar::Segment> &segments) {
        QImage image(120, 7, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter p(&image);
        SegmentBar::paint(&p, QRectF(0, 0, 120, 7), segments);
        p.end();
        return image;
    };
    EXPECT_EQ(paint({{0, AppTheme::ok}, {0, AppTheme::warn}, {0, AppTheme::fail}}), paint({}));
    // Left half ok, right half fail, a gap between them.
    const QImage split = paint({{1, AppTheme::ok}, {1, AppTheme::fail}});
    EXPECT_NEAR(split.pixelColor(20, 3).greenF(), AppTheme::ok.greenF(), 0.05);
    EXPECT_NEAR(split.pixelColor(100, 3).redF(), AppTheme::fail.redF(), 0.05);
}

using Backdrop = WindowTest;

TEST_F(Backdrop, AnimatesOnlyWhileShownAndSkipsWhatCardsCover)
{
    AmbientBackground *background = window().content()->background();
    EXPECT_TRUE(background->isAnimating());
    // The clip list's card covers most of the right side; frames leave it alone.
    addClips({"a.mov"});
    QApplication::processEvents();
    const QRegion exposed = background->exposedRegion();
    qint64 exposedArea = 0;
    for (const QRect &r : exposed)
        exposedArea += qint64(r.width()) * r.height();
    EXPECT_LT(exposedArea, qint64(background->width()) * background->height() * 3 / 4);
    window().hide();
    EXPECT_FALSE(background->isAnimating());
    window().show();
    EXPECT_TRUE(background->isAnimating());
}

TEST(StyleKit, WrappedPanelLabelsMeasureTheirCurrentTextAndFont)
{
    // Panel labels remember their heights; a new text or font must still be measured afresh,
    // and the answers must be the ones a plain label gives.
    QLabel *label = PanelParts::label(QStringLiteral("short"), 12, 0.8);
    std::unique_ptr<QLabel> owner(label);
    label->setWordWrap(true);
    QLabel plain;
    plain.setFont(label->font());
    plain.setWordWrap(true);
    const auto same = [&](const QString &text) {
        label->setText(text);
        plain.setText(text);
        for (int width : {60, 200, 60, 200})
            EXPECT_EQ(label->heightForWidth(width), plain.heightForWidth(width)) << width;
    };
    same(QStringLiteral("short"));
    const int oneLine = label->heightForWidth(200);
    same(QStringLiteral("a much longer finding that has to wrap over several lines at sixty"));
    EXPECT_GT(label->heightForWidth(60), oneLine * 2);
    QFont bigger = label->font();
    bigger.setPixelSize(24);
    label->setFont(bigger);
    plain.setFont(bigger);
    same(label->text());
    EXPECT_GT(label->heightForWidth(200), oneLine);
}
