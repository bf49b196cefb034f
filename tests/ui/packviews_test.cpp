#include "uifixture.h"

#include "ui/contentview.h"
#include "ui/detailarea.h"
#include "ui/dropzoneview.h"
#include "ui/kitbuttons.h"
#include "ui/kitwidgets.h"
#include "ui/packheader.h"
#include "ui/packview.h"
#include "ui/scanningoverlay.h"
#include "ui/segmentbar.h"
#include "ui/statusbadge.h"

#include <QDropEvent>
#include <QMimeData>

class PackViews : public WindowTest
{
protected:
    DetailArea &detail() { return *window().content()->detail(); }
    PackHeader &header() { return *detail().packView()->header(); }

    static void dropOn(QWidget *target, const QList<QUrl> &urls)
    {
        QMimeData data;
        data.setUrls(urls);
        const QPointF at = QRectF(target->rect()).center();
        QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(target, &enter);
        ASSERT_TRUE(enter.isAccepted());
        QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(target, &drop);
        EXPECT_TRUE(drop.isAccepted());
    }
};

TEST_F(PackViews, DropsFillThePackAndClearingBringsTheDropZoneBack)
{
    window();
    const auto showsDropZone = [this](bool zone) {
        EXPECT_EQ(detail().dropZone()->isVisible(), zone);
        EXPECT_EQ(detail().packView()->isVisible(), !zone);
    };
    showsDropZone(true);
    EXPECT_FALSE(detail().dropZone()->clearButton()->isEnabled());
    EXPECT_FALSE(detail().overlay()->isVisible());
    touch(QStringLiteral("show/intro.mov"));
    touch(QStringLiteral("show/loop.mp4"));
    touch(QStringLiteral("show/notes.txt"));
    dropOn(detail().dropZone(), {url(path(QStringLiteral("show")))});
    ASSERT_TRUE(waitUntil([this] { return !vm().isScanning() && vm().clips().size() == 2; }));
    showsDropZone(false);
    dropOn(detail().packView(), {url(touch(QStringLiteral("b.mov")))});
    ASSERT_TRUE(waitUntil([this] { return vm().clips().size() == 3 && !vm().isScanning(); }));

    header().clearButton()->click();
    EXPECT_TRUE(vm().clips().isEmpty());
    showsDropZone(true);
}

TEST_F(PackViews, OverlayCoversAScanFromAnEmptyPackThenShowsTheExportsProgress)
{
    window();
    m_probe->setDelay(std::chrono::milliseconds(300));
    vm().handleDrop({url(touch(QStringLiteral("a.mov")))});
    ASSERT_TRUE(vm().isScanning());
    QApplication::processEvents();
    EXPECT_TRUE(detail().overlay()->isVisible());
    EXPECT_TRUE(vm().clips().isEmpty());
    EXPECT_EQ(detail().overlay()->message(), vm().statusText());
    EXPECT_FALSE(detail().overlay()->showsProgress());
    ASSERT_TRUE(waitUntil([this] { return !vm().isScanning(); }));
    EXPECT_FALSE(detail().overlay()->isVisible());

    addClips({"b.mov"});
    QDir().mkpath(path(QStringLiteral("out")));
    m_panels.folders.push_back(path(QStringLiteral("out")));
    bool sawProgress = false;
    QObject::connect(&vm(), &PackViewModel::statusChanged, &vm(), [&] {
        if (vm().isExporting() && detail().overlay()->isVisible() &&
            detail().overlay()->showsProgress())
            sawProgress = true;
    });
    vm().exportPack();
    ASSERT_TRUE(waitUntil([this] { return !vm().isExporting(); }));
    EXPECT_TRUE(sawProgress);
    EXPECT_FALSE(detail().overlay()->isVisible());
}

TEST_F(PackViews, HeaderCountsBadgeBarAndPills)
{
    m_probe->fail(QStringLiteral("bad.mov"), VideoFacts::Stage::open, QStringLiteral("broken"));
    VideoFacts small = FakeProbe::defaultVideo();
    small.naturalWidth = 640;
    small.naturalHeight = 360;
    m_probe->setVideo(QStringLiteral("small.mov"), small);
    addClips({"good.mov"});
    const L10n en;
    EXPECT_EQ(header().title()->text(), en.format(u"header.clips", {qint64(1)}));
    EXPECT_EQ(header().badge()->health(), ClipHealth::ok);
    EXPECT_FALSE(header().failPill()->isVisible());
    addClips({"small.mov", "bad.mov"});
    EXPECT_EQ(header().title()->text(), en.format(u"header.clips", {qint64(3)}));
    EXPECT_EQ(header().badge()->health(), ClipHealth::fail);
    EXPECT_EQ(header().warnPill()->text(), en.format(u"header.warn", {qint64(1)}));
    EXPECT_TRUE(header().failPill()->isVisible());
    QList<double> segments;
    for (const SegmentBar::Segment &segment : header().segmentBar()->segments())
        segments.append(segment.value);
    EXPECT_EQ(segments, (QList<double>{1, 1, 1}));
    vm().remove(vm().clips()[originalNames().indexOf(u"bad.mov"_qs)].id);
    EXPECT_FALSE(header().failPill()->isVisible());
    EXPECT_EQ(header().badge()->health(), ClipHealth::warn);
    EXPECT_EQ(PackHeader::summaryHealth({MediaClip::forFile(QStringLiteral("/tmp/x.mov"))}),
              ClipHealth::warn);
    EXPECT_EQ(PackHeader::summaryHealth({}), ClipHealth::warn);
}
