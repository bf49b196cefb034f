// Pictures of the window in its main states, written to the build folder for a person to look
// at (build/screenshots/*.png). Each test also checks that the picture is not blank.
#include "uifixture.h"

#include "ui/ambientbackground.h"
#include "ui/cliptableview.h"
#include "ui/contentview.h"
#include "ui/detailarea.h"
#include "ui/dropzoneview.h"
#include "ui/scanningoverlay.h"
#include "ui/sidebar/reportsidebarview.h"
#include "ui/spinnerring.h"

#include <QDir>
#include <QScrollArea>
#include <QScrollBar>

class Screenshots : public WindowTest
{
protected:
    // Stops every animation so that a picture shows a settled frame.
    void freeze()
    {
        for (auto *w : window().findChildren<AmbientBackground *>())
            w->setFrozen(true);
        for (auto *w : window().findChildren<DropZoneView *>())
            w->setFrozen(true);
        for (auto *w : window().findChildren<ScanningOverlay *>())
            w->setFrozen(true);
        for (auto *w : window().findChildren<ClipTableView *>())
            w->setPulseFrozen(true);
    }

    QString save(const QString &name, QWidget *part = nullptr)
    {
        QApplication::processEvents();
        freeze();
        const QImage shot = (part ? part : &window())->grab().toImage();
        const QString dir = QStringLiteral(CUEBOX_SCREENSHOT_DIR);
        QDir().mkpath(dir);
        const QString file = dir + u'/' + name + QStringLiteral(".png");
        EXPECT_TRUE(shot.save(file));
        // Not blank: the picture holds many colours (text, cards, accents), not one fill.
        QSet<QRgb> colours;
        for (int y = 0; y < shot.height(); y += 7)
            for (int x = 0; x < shot.width(); x += 7)
                colours.insert(shot.pixel(x, y));
        EXPECT_GT(colours.size(), 50) << file.toStdString();
        return file;
    }

    // Six clips: ok, warn (low resolution, audio), fail (unreadable), a still and a duplicate.
    void addMixedPack()
    {
        VideoFacts small = FakeProbe::defaultVideo();
        small.naturalWidth = 640;
        small.naturalHeight = 360;
        m_probe->setVideo(QStringLiteral("Crowd Small.mov"), small);
        VideoFacts loud = FakeProbe::defaultVideo();
        loud.audioTrackCount = 1;
        loud.audioCodecCode = FakeProbe::code("aac ");
        loud.videoCodecCode = FakeProbe::code("hvc1");
        m_probe->setVideo(QStringLiteral("Drop Loud.mp4"), loud);
        VideoFacts prores = FakeProbe::defaultVideo();
        prores.videoCodecCode = FakeProbe::code("apcn");
        m_probe->setVideo(QStringLiteral("Intro Loop.mov"), prores);
        m_probe->fail(QStringLiteral("Broken.mov"), VideoFacts::Stage::open,
                      QStringLiteral("Invalid data found when processing input"));
        touch(QStringLiteral("Twin B.mov"), QByteArray(64, 't'));
        addClips({QStringLiteral("Intro Loop.mov"), QStringLiteral("Crowd Small.mov"),
                  QStringLiteral("Drop Loud.mp4"), QStringLiteral("Broken.mov"),
                  QStringLiteral("Logo.png")});
        vm().handleDrop({url(touch(QStringLiteral("Twin A.mov"), QByteArray(64, 't'))),
                         url(path(QStringLiteral("Twin B.mov")))});
        ASSERT_TRUE(waitUntil([this] { return !vm().isScanning(); }));
        vm().setSelectedClipID(vm().clips()[0].id);
        // Thumbnails arrive from the cache's pool.
        waitUntil([this] { return m_thumbnails.count() >= vm().clips().size(); }, 3000);
        QApplication::processEvents();
    }

    // The whole sidebar, every card in view: the window is made tall enough for all of them.
    void saveSidebar(const QString &name)
    {
        ReportSidebarView *sidebar = window().content()->sidebar();
        QScrollBar *bar = sidebar->scrollArea()->verticalScrollBar();
        for (int height = 1200; height < 4000 && (height == 1200 || bar->isVisible());
             height += 40) {
            window().resize(window().width(), height);
            QApplication::processEvents();
        }
        EXPECT_FALSE(bar->isVisible()) << "cards cut off";
        save(name, sidebar);
    }

    void selectClip(const QString &originalName)
    {
        for (const MediaClip &clip : vm().clips())
            if (clip.originalName == originalName)
                vm().setSelectedClipID(clip.id);
        ASSERT_TRUE(vm().selectedClip().has_value());
        QApplication::processEvents();
    }
};

TEST_F(Screenshots, EmptyDropZone)
{
    window();
    save(QStringLiteral("empty_dropzone"));
}

TEST_F(Screenshots, PackWithOkWarnAndFailClips)
{
    window();
    addMixedPack();
    save(QStringLiteral("pack_ok_warn_fail"));
}

TEST_F(Screenshots, ScanningOverlay)
{
    window();
    addMixedPack();
    m_probe->setDelay(std::chrono::milliseconds(1500));
    vm().handleDrop({url(touch(QStringLiteral("Encore.mov")))});
    ASSERT_TRUE(waitUntil(
        [this] { return window().content()->detail()->overlay()->message().contains(u"Encore"); }));
    save(QStringLiteral("scanning_overlay"));
    ASSERT_TRUE(waitUntil([this] { return !vm().isScanning(); }));
}

TEST_F(Screenshots, CompactMode)
{
    m_preferences.setCompactMode(true);
    window().resize(MainWindow::defaultSize(true));
    addMixedPack();
    save(QStringLiteral("compact"));
}

TEST_F(Screenshots, Japanese)
{
    m_localization.setLanguage(AppLanguage::japanese);
    window();
    addMixedPack();
    save(QStringLiteral("japanese"));
    vm().clear();
    save(QStringLiteral("japanese_dropzone"));
}

TEST_F(Screenshots, SidebarWithASelectedWarnClip)
{
    window();
    addMixedPack();
    selectClip(QStringLiteral("Drop Loud.mp4"));
    ASSERT_EQ(vm().selectedClip()->health(), ClipHealth::warn);
    saveSidebar(QStringLiteral("sidebar_warn_clip"));
}

TEST_F(Screenshots, SidebarInJapanese)
{
    m_localization.setLanguage(AppLanguage::japanese);
    window();
    addMixedPack();
    selectClip(QStringLiteral("Drop Loud.mp4"));
    saveSidebar(QStringLiteral("sidebar_japanese"));
}

TEST_F(Screenshots, SidebarEmptyAndCompact)
{
    m_preferences.setCompactMode(true);
    window();
    saveSidebar(QStringLiteral("sidebar_empty_compact"));
}
