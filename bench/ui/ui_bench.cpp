// The window with 5,000 clips: how long a frame of the clip table takes to paint when it first
// shows, while scrolling from top to bottom and when the selection changes, against the 16 ms
// of a 60 Hz frame; and the thumbnail cache's memory with a picture for every clip.
//
// Runs on the offscreen platform unless QT_QPA_PLATFORM says otherwise:
//   ./build/bench/ui/bench_ui [clips]
#include "l10n/apppreferences.h"
#include "l10n/localizationmanager.h"
#include "media/fake/fakeprobe.h"
#include "media/thumbnailcache.h"
#include "session/packviewmodel.h"
#include "session/platform.h"
#include "ui/cliptableview.h"
#include "ui/contentview.h"
#include "ui/cueboxapp.h"
#include "ui/detailarea.h"
#include "ui/mainwindow.h"
#include "ui/motion.h"
#include "ui/packview.h"
#include "ui/studios/renamestudioview.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QSettings>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <numeric>

namespace {

constexpr double kFrameBudgetMs = 16.0;

// Counts the paint events a widget receives, so a step paints the table once: the event loop
// already repaints it when the selection scrolls it, and a second, forced paint would count a
// frame twice.
class PaintCounter final : public QObject
{
public:
    int count = 0;
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++count;
        return false;
    }
};

struct Frames {
    QList<double> ms;
    void add(qint64 ns) { ms.append(ns / 1e6); }
    double percentile(double p) const
    {
        QList<double> s = ms;
        std::sort(s.begin(), s.end());
        return s.isEmpty() ? 0 : s[std::min<qsizetype>(s.size() - 1, qsizetype(p * s.size()))];
    }
    double max() const { return ms.isEmpty() ? 0 : *std::max_element(ms.begin(), ms.end()); }
    double mean() const
    {
        return ms.isEmpty() ? 0 : std::accumulate(ms.begin(), ms.end(), 0.0) / ms.size();
    }
    int over() const
    {
        return int(
            std::count_if(ms.begin(), ms.end(), [](double m) { return m > kFrameBudgetMs; }));
    }
    void print(const char *name) const
    {
        std::printf("%-28s frames %5lld  mean %6.2f ms  p50 %6.2f  p99 %6.2f  max %6.2f  "
                    "over 16 ms: %d  %s\n",
                    name, static_cast<long long>(ms.size()), mean(), percentile(0.5),
                    percentile(0.99), max(), over(), max() <= kFrameBudgetMs ? "PASS" : "FAIL");
    }
};

qint64 residentKb()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').front().toLongLong();
    }
    return 0;
}

// Clips as the session holds them after an ingest: every column filled, a mix of verdicts.
QList<MediaClip> makeClips(int count)
{
    QList<MediaClip> clips;
    clips.reserve(count);
    const QStringList codecs = {QStringLiteral("apcn"), QStringLiteral("avc1"),
                                QStringLiteral("hvc1"), QStringLiteral("Hap1")};
    for (int i = 0; i < count; ++i) {
        MediaClip c = MediaClip::forFile(
            QStringLiteral("/shows/festival/clips/Loop %1 long descriptive name.mov").arg(i));
        c.cueIndex = i + 1;
        c.arenaName = QStringLiteral("%1_loop_%2_long_descriptive_name")
                          .arg(i + 1, 4, 10, QChar(u'0'))
                          .arg(i);
        c.fileSize = 120'000'000 + i;
        c.duration = 12.5 + i % 30;
        c.width = i % 7 == 0 ? 1280 : 1920;
        c.height = i % 7 == 0 ? 720 : 1080;
        c.frameRate = i % 3 == 0 ? 29.97 : 30.0;
        c.videoCodec = codecs[i % codecs.size()];
        c.hasAudio = i % 4 == 0;
        c.isInspected = true;
        c.isDuplicate = i % 50 == 0;
        if (i % 5 == 0)
            c.issues.append(ClipIssue::make(ClipHealth::warn, IssueKind::lowRes));
        if (i % 11 == 0)
            c.issues.append(ClipIssue::make(ClipHealth::fail, IssueKind::readError));
        clips.append(c);
    }
    return clips;
}

// How long a fake thumbnail keeps its pool thread busy, as decoding a real file does.
std::atomic<int> g_decodeMs{0};

QImage fakeThumbnail(const QString &path)
{
    QElapsedTimer busy;
    busy.start();
    while (busy.elapsed() < g_decodeMs) {
    }
    // The size the real cache keeps for a movie: 160 × 90.
    QImage image(160, 90, QImage::Format_RGB32);
    image.fill(QColor::fromHsv(int(qHash(path) % 360), 140, 190));
    return image;
}

// The same fixed piece of painting every time: its spread, measured between the frames above,
// shows how much of a slow frame is this shared machine rather than the window.
qint64 fixedWorkNs(QImage &canvas)
{
    QElapsedTimer clock;
    clock.start();
    QPainter p(&canvas);
    QLinearGradient gradient(0, 0, canvas.width(), canvas.height());
    gradient.setColorAt(0, Qt::darkGreen);
    gradient.setColorAt(1, Qt::black);
    for (int i = 0; i < 6; ++i)
        p.fillRect(canvas.rect(), gradient);
    p.end();
    return clock.nsecsElapsed();
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int count = argc > 1 ? std::atoi(argv[1]) : 5000;
    QTemporaryDir dir;
    QSettings settings(dir.filePath(QStringLiteral("bench.conf")), QSettings::IniFormat);
    LocalizationManager localization(settings);
    AppPreferences preferences(settings);
    CueboxApp::applyLook();
    Motion::setInstant(true);

    ThumbnailCache cache([](const QString &path, std::stop_token) { return fakeThumbnail(path); });
    PackViewModel::Services services;
    services.probe = std::make_shared<FakeProbe>();
    services.localization = &localization;
    services.preferences = &preferences;
    services.requestThumbnail = [](const MediaClip &) {};
    PackViewModel vm(services);
    UiContext context{vm, localization, preferences, cache};
    class NoDesktop final : public Desktop
    {
    public:
        void reveal(const QString &) override {}
        void openWithApplication(const QStringList &, const QString &) override {}
        void openUrl(const QUrl &) override {}
    } desktop;
    MainWindow window(context, desktop);
    window.resize(MainWindow::defaultSize(false));
    window.show();
    QApplication::processEvents();

    QElapsedTimer clock;
    clock.start();
    vm.setClips(makeClips(count));
    vm.setSelectedClipID(vm.clips().front().id);
    QApplication::processEvents();
    std::printf("clips: %d   load into the table: %.1f ms\n", count, clock.nsecsElapsed() / 1e6);
    ClipTableView *table = window.content()->detail()->packView()->table();
    table->setPulseFrozen(true); // one frame per step, not the badges' breathing in between
    QWidget *viewport = table->viewport();

    Frames firstPaint;
    for (int i = 0; i < 20; ++i) {
        clock.restart();
        viewport->repaint();
        firstPaint.add(clock.nsecsElapsed());
    }
    Frames windowPaint;
    for (int i = 0; i < 10; ++i) {
        clock.restart();
        window.repaint();
        windowPaint.add(clock.nsecsElapsed());
    }

    // Top to bottom a third of a page at a time, as a fast wheel does; the thumbnail cache
    // loads the rows that come into view in the background meanwhile.
    QScrollBar *bar = table->verticalScrollBar();
    Frames scroll;
    const int step = std::max(1, viewport->height() / 3);
    for (int value = 0; value <= bar->maximum(); value += step) {
        clock.restart();
        bar->setValue(value);
        viewport->repaint();
        scroll.add(clock.nsecsElapsed());
        QApplication::processEvents(); // thumbnails arriving: their rows repaint
    }

    PaintCounter tablePaints;
    viewport->installEventFilter(&tablePaints);
    QImage canvas(800, 600, QImage::Format_ARGB32_Premultiplied);
    Frames control;
    // A click on a random clip: the sidebar's card updates, the row scrolls into view, and
    // the rows that come into view ask for their thumbnails.
    const auto selectRandomly = [&](quint32 seed, Frames &frames) {
        QRandomGenerator random(seed);
        for (int i = 0; i < 300; ++i) {
            const MediaClip &clip = vm.clips()[random.bounded(count)];
            clock.restart();
            const int paintsBefore = tablePaints.count;
            vm.setSelectedClipID(clip.id);
            QApplication::processEvents();
            if (tablePaints.count == paintsBefore)
                viewport->repaint(); // the whole view, although two rows would do
            frames.add(clock.nsecsElapsed());
            control.add(fixedWorkNs(canvas));
        }
    };
    Frames selection, selectionDecoding;
    selectRandomly(42, selection);
    // Again with each thumbnail costing its pool thread 20 ms of CPU, as a real decode does:
    // two loading threads and the window share this machine's two cores.
    g_decodeMs = 20;
    selectRandomly(7, selectionDecoding);
    g_decodeMs = 0;
    for (clock.restart(); clock.elapsed() < 500;) // the loads still queued finish
        QApplication::processEvents(QEventLoop::AllEvents, 20);

    Frames rename, renameSession, renameEvents;
    const QUuid renamed = vm.clips()[count / 2].id;
    for (int i = 0; i < 100; ++i) {
        clock.restart();
        const int paintsBefore = tablePaints.count;
        vm.setArenaName(renamed, QStringLiteral("renamed_%1").arg(i));
        const qint64 session = clock.nsecsElapsed();
        QApplication::processEvents();
        const qint64 events = clock.nsecsElapsed();
        if (tablePaints.count == paintsBefore)
            viewport->repaint();
        rename.add(clock.nsecsElapsed());
        renameSession.add(session);
        renameEvents.add(events - session);
    }

    // The rename studio over the whole pack: opening it, then prefix keystrokes, each of which
    // renames every row of its draft (typing a letter, then taking it back).
    clock.restart();
    vm.setShowRenameStudio(true);
    while (!(window.renameSheet() && window.renameSheet()->isVisible()) && clock.elapsed() < 10000)
        QApplication::processEvents();
    QApplication::processEvents();
    const double studioOpenMs = clock.nsecsElapsed() / 1e6;
    auto *studio =
        window.renameSheet() ? window.renameSheet()->findChild<RenameStudioView *>() : nullptr;
    Frames prefixKeys;
    for (int i = 0; studio && i < 40; ++i) {
        const bool typing = i % 2 == 0;
        const Qt::Key key = typing ? Qt::Key_X : Qt::Key_Backspace;
        const QString text = typing ? QStringLiteral("x") : QString();
        clock.restart();
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
        QApplication::sendEvent(studio->prefixField(), &press);
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
        QApplication::sendEvent(studio->prefixField(), &release);
        QApplication::processEvents();
        prefixKeys.add(clock.nsecsElapsed());
    }

    std::printf("\n");
    firstPaint.print("table paint (full view)");
    windowPaint.print("whole window paint");
    scroll.print("scroll top to bottom");
    selection.print("change selection");
    selectionDecoding.print("  ... while thumbnails decode");
    rename.print("rename one clip (keystroke)");
    renameSession.print("  of which session and views");
    renameEvents.print("  of which posted events");
    std::printf("rename studio: opened over %d clips in %.1f ms%s\n", count, studioOpenMs,
                studio ? "" : " (did NOT open)");
    prefixKeys.print("  prefix keystroke (all rows)");
    control.print("control: fixed painting");
    std::printf("\nThe control paints the same picture between the selection frames; its max "
                "over its p50 (%.2f) is this machine's noise in the same run.\n",
                control.max() / std::max(0.001, control.percentile(0.5)));

    // Every clip's thumbnail asked for at once, as when a pack finished probing.
    const qint64 before = residentKb();
    clock.restart();
    for (const MediaClip &clip : vm.clips())
        cache.request(clip);
    while (clock.elapsed() < 60000) {
        QApplication::processEvents(QEventLoop::AllEvents, 20);
        bool loading = false;
        for (int i = 0; i < 20 && !loading; ++i)
            loading =
                cache.isLoading(ThumbnailCache::cacheKey(vm.clips()[count - 1 - i].sourcePath()));
        if (!loading && cache.count() > 0)
            break;
    }
    const qint64 after = residentKb();
    std::printf("\nthumbnails: %d requested, %lld kept, %.1f MiB used of a %.1f MiB budget "
                "(%s); made in %.1f s\n",
                count, static_cast<long long>(cache.count()), cache.usedBytes() / 1048576.0,
                cache.budgetBytes() / 1048576.0,
                cache.usedBytes() <= cache.budgetBytes() ? "within" : "OVER",
                clock.elapsed() / 1000.0);
    std::printf("process memory: %.1f MiB before, %.1f MiB after the thumbnails\n", before / 1024.0,
                after / 1024.0);
    return 0;
}
