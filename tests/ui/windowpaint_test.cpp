// The window painted in its main states: every kind of row (ok, warn, fail, still, duplicate),
// a selected warn clip in the sidebar, the scanning overlay, compact mode and Japanese. A
// picture of one plain fill means a part stopped drawing.
#include "uifixture.h"

#include "ui/contentview.h"
#include "ui/detailarea.h"
#include "ui/scanningoverlay.h"

namespace {

qsizetype colours(QWidget *widget)
{
    const QImage shot = widget->grab().toImage();
    QSet<QRgb> seen;
    for (int y = 0; y < shot.height(); y += 7)
        for (int x = 0; x < shot.width(); x += 7)
            seen.insert(shot.pixel(x, y));
    return seen.size();
}

} // namespace

TEST_F(WindowTest, EveryStatePaintsMoreThanAPlainFill)
{
    m_localization.setLanguage(AppLanguage::japanese);
    EXPECT_GT(colours(&window()), 50) << "empty drop zone";
    VideoFacts small = FakeProbe::defaultVideo();
    small.naturalWidth = 640;
    small.naturalHeight = 360;
    m_probe->setVideo(QStringLiteral("Crowd Small.mov"), small);
    withAudio(QStringLiteral("Drop Loud.mp4"));
    m_probe->fail(QStringLiteral("Broken.mov"), VideoFacts::Stage::open, QStringLiteral("broken"));
    touch(QStringLiteral("Twin A.mov"), QByteArray(64, 't'));
    touch(QStringLiteral("Twin B.mov"), QByteArray(64, 't'));
    addClips({"Intro.mov", "Crowd Small.mov", "Drop Loud.mp4", "Broken.mov", "Logo.png",
              "Twin A.mov", "Twin B.mov"});
    vm().setSelectedClipID(vm().clips()[2].id);
    ASSERT_EQ(vm().selectedClip()->health(), ClipHealth::warn);
    waitUntil([this] { return m_thumbnails.count() >= vm().clips().size(); }, 3000);
    for (bool compact : {false, true}) {
        m_preferences.setCompactMode(compact);
        QApplication::processEvents();
        EXPECT_GT(colours(&window()), 50) << "compact " << compact;
    }
    m_probe->setDelay(std::chrono::milliseconds(1500));
    vm().handleDrop({url(touch(QStringLiteral("Encore.mov")))});
    ASSERT_TRUE(waitUntil(
        [this] { return window().content()->detail()->overlay()->message().contains(u"Encore"); }));
    EXPECT_GT(colours(&window()), 50) << "scanning";
    ASSERT_TRUE(waitUntil([this] { return !vm().isScanning(); }));
}
