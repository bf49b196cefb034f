#include "previewplayer.h"

#include "media/ffmpeg/previewdecoder.h"

namespace {
// Enough to ride out a slow frame; small enough that 640×360 pictures cost a few MB.
constexpr size_t kQueueDepth = 6;
constexpr int kTickMs = 8;
} // namespace

PreviewPlayer::PreviewPlayer(QObject *parent) : QObject(parent)
{
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(kTickMs);
    connect(&m_timer, &QTimer::timeout, this, &PreviewPlayer::tick);
}

PreviewPlayer::~PreviewPlayer()
{
    stopWorker();
}

void PreviewPlayer::setSource(const QString &path, QSize box)
{
    pause();
    stopWorker();
    m_path = path;
    m_box = box;
    m_offsetSeconds = 0;
    m_hasVideo = false;
    if (!m_path.isEmpty())
        startWorker();
}

void PreviewPlayer::startWorker()
{
    {
        std::lock_guard lock(m_mutex);
        m_queue.clear();
    }
    m_worker = std::jthread([this, path = m_path, box = m_box](std::stop_token stop) {
        // The worker owns its decoder; it only shares the queue, under the mutex.
        std::unique_ptr<PreviewDecoder> decoder = PreviewDecoder::open(path, box, stop);
        for (;;) {
            std::optional<PreviewDecoder::Frame> frame;
            if (decoder)
                frame = decoder->next();
            std::unique_lock lock(m_mutex);
            if (!m_changed.wait(lock, stop, [this] { return m_queue.size() < kQueueDepth; }))
                return;
            if (!frame) {
                m_queue.push_back({QImage(), 0, true});
                return;
            }
            m_queue.push_back({std::move(frame->image), frame->seconds, false});
        }
    });
}

void PreviewPlayer::stopWorker()
{
    if (m_worker.joinable()) {
        m_worker.request_stop();
        m_changed.notify_all();
        m_worker.join();
    }
    std::lock_guard lock(m_mutex);
    m_queue.clear();
}

void PreviewPlayer::play()
{
    if (m_playing || m_path.isEmpty())
        return;
    m_playing = true;
    m_clock.start();
    m_timer.start();
}

void PreviewPlayer::pause()
{
    if (!m_playing)
        return;
    m_offsetSeconds = positionSeconds();
    m_playing = false;
    m_timer.stop();
}

void PreviewPlayer::seekToZero()
{
    const bool wasPlaying = m_playing;
    pause();
    stopWorker();
    m_offsetSeconds = 0;
    if (!m_path.isEmpty())
        startWorker();
    if (wasPlaying)
        play();
}

double PreviewPlayer::positionSeconds() const
{
    if (!m_playing)
        return m_offsetSeconds;
    return m_offsetSeconds + m_clock.nsecsElapsed() / 1e9;
}

void PreviewPlayer::tick()
{
    const double now = positionSeconds();
    std::optional<Queued> shown;
    bool ended = false;
    {
        std::lock_guard lock(m_mutex);
        // Show the latest frame that is due; frames late by more than one are skipped.
        while (!m_queue.empty() && (m_queue.front().end || m_queue.front().seconds <= now)) {
            if (m_queue.front().end) {
                ended = true;
                m_queue.pop_front();
                break;
            }
            shown = std::move(m_queue.front());
            m_queue.pop_front();
        }
    }
    m_changed.notify_all();
    if (shown) {
        m_hasVideo = true;
        Q_EMIT frameChanged(shown->image);
    }
    if (ended) {
        // The end of the item: rewind and stop, ready to play again.
        pause();
        seekToZero();
        Q_EMIT reachedEnd();
    }
}
