#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QObject>
#include <QSize>
#include <QTimer>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>

// Plays a movie's pictures, muted, into a view. A worker thread decodes ahead into a short
// queue (the media layer's PreviewDecoder); the GUI thread shows each frame when its time
// comes. Pausing leaves the worker blocked on the full queue; seeking to zero starts a fresh
// worker. Nothing here touches the session.
class PreviewPlayer final : public QObject
{
    Q_OBJECT
public:
    explicit PreviewPlayer(QObject *parent = nullptr);
    ~PreviewPlayer() override;

    // Loads the movie paused at its start; an empty path unloads.
    void setSource(const QString &path, QSize box);
    void play();
    void pause();
    void seekToZero();
    bool isPlaying() const { return m_playing; }
    double positionSeconds() const;
    bool hasVideo() const { return m_hasVideo; }

Q_SIGNALS:
    void frameChanged(const QImage &frame);
    void reachedEnd();

private:
    struct Queued {
        QImage image;
        double seconds = 0;
        bool end = false;
    };
    void startWorker();
    void stopWorker();
    void tick();

    QString m_path;
    QSize m_box;
    bool m_playing = false;
    bool m_hasVideo = false;
    double m_offsetSeconds = 0; // position when the clock last started
    QElapsedTimer m_clock;
    QTimer m_timer;

    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::deque<Queued> m_queue;
    std::jthread m_worker;
};
