#include "clippreviewview.h"

#include "apptheme.h"
#include "kitbuttons.h"
#include "media/stillimage.h"
#include "media/thumbnails.h"
#include "previewplayer.h"
#include "symbols.h"

#include <QFutureWatcher>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QVBoxLayout>
#include <QtConcurrent>

namespace {
constexpr int kPanelHeight = 148;
constexpr int kCompactPanelHeight = 110;
constexpr int kControlsGap = 8;
} // namespace

ClipPreviewView::ClipPreviewView(QWidget *parent)
    : QWidget(parent)
    , m_controls(new QWidget(this))
    , m_play(new RoundIconButton(QStringLiteral("play.fill"), 32, 11))
    , m_restart(new RoundIconButton(QStringLiteral("backward.end.fill"), 32, 10))
    , m_duration(new QLabel)
{
    setObjectName(QStringLiteral("clipPreview"));
    m_play->setColors(AppTheme::accentGreen, AppTheme::white(0.9));
    m_restart->setColors(AppTheme::white(0.08), AppTheme::white(0.85));
    m_duration->setFont(AppTheme::font(11, QFont::Normal, AppTheme::Face::rounded));
    QPalette pal = m_duration->palette();
    pal.setColor(QPalette::WindowText, AppTheme::white(0.55));
    m_duration->setPalette(pal);
    auto *row = new QHBoxLayout(m_controls);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(m_play);
    row->addWidget(m_restart);
    row->addWidget(m_duration);
    row->addStretch(1);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, kPanelHeight + kControlsGap, 0, 0);
    column->addWidget(m_controls);
    m_controls->hide();
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setCompact(false);

    m_stopAfter.setSingleShot(true);
    connect(&m_stopAfter, &QTimer::timeout, this, [this] {
        if (m_player && m_player->isPlaying()) {
            m_player->pause();
            setPlaying(false);
        }
    });
    connect(m_play, &QAbstractButton::clicked, this, &ClipPreviewView::togglePlay);
    connect(m_restart, &QAbstractButton::clicked, this, &ClipPreviewView::restart);
}

ClipPreviewView::~ClipPreviewView()
{
    teardown();
}

void ClipPreviewView::setCompact(bool compact)
{
    m_compact = compact;
    const int panel = compact ? kCompactPanelHeight : kPanelHeight;
    layout()->setContentsMargins(0, panel + kControlsGap, 0, 0);
    const bool video = m_clip && !m_clip->isImage();
    setFixedHeight(panel + (video ? kControlsGap + 32 : 0));
    update();
}

void ClipPreviewView::setDurationLabel(const QString &text)
{
    m_duration->setText(text);
}

void ClipPreviewView::setClip(const std::optional<MediaClip> &clip)
{
    const bool sameClip =
        clip && m_clip && clip->id == m_clip->id && clip->sourceURL == m_clip->sourceURL;
    if (sameClip) {
        m_clip = clip; // names and findings may change; the pictures do not
        m_duration->setText(clip->durationLabel());
        return;
    }
    teardown();
    m_clip = clip;
    load();
}

QRectF ClipPreviewView::panelRect() const
{
    return QRectF(0, 0, width(), m_compact ? kCompactPanelHeight : kPanelHeight);
}

void ClipPreviewView::load()
{
    const int generation = ++m_generation;
    m_poster = {};
    m_frame = {};
    const bool video = m_clip && !m_clip->isImage();
    m_controls->setVisible(video);
    setCompact(m_compact);
    update();
    if (!m_clip)
        return;
    const QString path = m_clip->sourcePath();
    m_duration->setText(m_clip->durationLabel());
    if (video) {
        m_player = new PreviewPlayer(this);
        connect(m_player, &PreviewPlayer::frameChanged, this, [this](const QImage &frame) {
            m_frame = frame;
            update(panelRect().toRect());
        });
        connect(m_player, &PreviewPlayer::reachedEnd, this, [this] {
            m_stopAfter.stop();
            setPlaying(false);
        });
        m_player->setSource(path, Thumbnails::kPosterBox);
    }
    // Pictures are read off the GUI thread; a result for an older generation is dropped.
    QPointer<ClipPreviewView> self(this);
    auto *watcher = new QFutureWatcher<QImage>(this);
    connect(watcher, &QFutureWatcher<QImage>::finished, this, [this, self, watcher, generation] {
        watcher->deleteLater();
        if (!self || generation != m_generation)
            return;
        m_poster = watcher->result();
        update();
        Q_EMIT posterChanged();
    });
    watcher->setFuture(QtConcurrent::run([path, video] {
        if (video)
            return Thumbnails::generatePoster(path);
        return StillImage::thumbnail(path, Thumbnails::kPosterBox.width());
    }));
}

void ClipPreviewView::teardown()
{
    m_stopAfter.stop();
    if (m_player) {
        m_player->pause();
        delete m_player;
        m_player = nullptr;
    }
    m_frame = {};
    setPlaying(false);
}

void ClipPreviewView::startShortPreview()
{
    if (!m_player)
        return;
    m_player->play();
    setPlaying(true);
    // At most eight seconds at a stretch: a preview, not a player.
    m_stopAfter.start(static_cast<int>(kPreviewSeconds * 1000));
}

void ClipPreviewView::togglePlay()
{
    if (!m_player)
        return;
    if (m_isPlaying) {
        m_stopAfter.stop();
        m_player->pause();
        setPlaying(false);
        return;
    }
    if (m_player->positionSeconds() >= kPreviewSeconds)
        m_player->seekToZero();
    startShortPreview();
}

void ClipPreviewView::restart()
{
    if (!m_player)
        return;
    m_player->seekToZero();
    startShortPreview();
}

void ClipPreviewView::setPlaying(bool playing)
{
    m_isPlaying = playing;
    m_play->setSymbol(playing ? QStringLiteral("pause.fill") : QStringLiteral("play.fill"));
}

void ClipPreviewView::hideEvent(QHideEvent *event)
{
    // Off screen nothing plays.
    if (m_player && m_isPlaying) {
        m_stopAfter.stop();
        m_player->pause();
        setPlaying(false);
    }
    QWidget::hideEvent(event);
}

void ClipPreviewView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
}

void ClipPreviewView::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRectF panel = panelRect();
    QPainterPath rounded;
    rounded.addRoundedRect(panel.adjusted(0.5, 0.5, -0.5, -0.5), 14, 14);
    p.fillPath(rounded, AppTheme::white(0.04));
    const QImage &picture = !m_frame.isNull() ? m_frame : m_poster;
    if (!picture.isNull()) {
        const QSizeF fill =
            QSizeF(picture.size()).scaled(panel.size(), Qt::KeepAspectRatioByExpanding);
        p.setClipPath(rounded);
        p.drawImage(QRectF(panel.center().x() - fill.width() / 2,
                           panel.center().y() - fill.height() / 2, fill.width(), fill.height()),
                    picture);
        p.setClipping(false);
    } else {
        Symbols::paint(&p, QStringLiteral("film"), AppTheme::white(0.3),
                       QRectF(panel.center().x() - 11, panel.center().y() - 11, 22, 22));
    }
    p.setPen(QPen(AppTheme::white(0.1), 1));
    p.setBrush(Qt::NoBrush);
    p.drawPath(rounded);
}
