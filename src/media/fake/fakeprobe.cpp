#include "fakeprobe.h"

#include "model/pathnames.h"

#include <thread>

void FakeProbe::setVideo(const QString &fileName, VideoFacts facts)
{
    QMutexLocker lock(&m_mutex);
    m_videos.insert(fileName, facts);
}

void FakeProbe::setImage(const QString &fileName, ImageFacts facts)
{
    QMutexLocker lock(&m_mutex);
    m_images.insert(fileName, facts);
}

void FakeProbe::fail(const QString &fileName, VideoFacts::Stage stage, const QString &text)
{
    VideoFacts facts = defaultVideo();
    facts.failedAt = stage;
    facts.errorText = text;
    setVideo(fileName, facts);
}

quint32 FakeProbe::code(const char (&c)[5])
{
    return (quint32(quint8(c[0])) << 24) | (quint32(quint8(c[1])) << 16) |
           (quint32(quint8(c[2])) << 8) | quint32(quint8(c[3]));
}

VideoFacts FakeProbe::defaultVideo()
{
    VideoFacts facts;
    facts.duration = 10.0;
    facts.videoTrackCount = 1;
    facts.naturalWidth = 1920;
    facts.naturalHeight = 1080;
    facts.transform = DisplayMatrix{};
    facts.nominalFrameRate = 25.0f;
    facts.videoCodecCode = code("avc1");
    return facts;
}

ImageFacts FakeProbe::defaultImage()
{
    return ImageFacts{true, true, 1920, 1080};
}

void FakeProbe::wait(std::stop_token stop) const
{
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(m_delayMs);
    while (std::chrono::steady_clock::now() < until && !stop.stop_requested())
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

VideoFacts FakeProbe::probeVideo(const QString &path, std::stop_token stop) const
{
    ++m_calls;
    wait(stop);
    QMutexLocker lock(&m_mutex);
    return m_videos.value(PathNames::lastComponent(path), defaultVideo());
}

ImageFacts FakeProbe::probeImage(const QString &path, std::stop_token stop) const
{
    ++m_calls;
    wait(stop);
    QMutexLocker lock(&m_mutex);
    return m_images.value(PathNames::lastComponent(path), defaultImage());
}
