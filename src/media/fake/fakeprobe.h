#pragma once

#include "media/mediaprobe.h"

#include <QHash>
#include <QMutex>

#include <atomic>
#include <chrono>

// A media layer with canned answers, keyed by file name, for tests of the logic above it.
// Files without an entry answer as a 1920×1080 H.264 movie of 10 s (or a 1920×1080 still).
class FakeProbe final : public MediaProbe
{
public:
    void setVideo(const QString &fileName, VideoFacts facts);
    void setImage(const QString &fileName, ImageFacts facts);
    void fail(const QString &fileName, VideoFacts::Stage stage, const QString &text);
    // Every probe sleeps this long first (to prove the caller does not block on it).
    void setDelay(std::chrono::milliseconds delay) { m_delayMs = delay.count(); }
    int calls() const { return m_calls; }

    static VideoFacts defaultVideo();
    static ImageFacts defaultImage();
    static quint32 code(const char (&fourChars)[5]);

    VideoFacts probeVideo(const QString &path, std::stop_token stop) const override;
    ImageFacts probeImage(const QString &path, std::stop_token stop) const override;

private:
    void wait(std::stop_token stop) const;

    mutable QMutex m_mutex;
    QHash<QString, VideoFacts> m_videos;
    QHash<QString, ImageFacts> m_images;
    std::atomic<long long> m_delayMs{0};
    mutable std::atomic<int> m_calls{0};
};
