#pragma once

#include "media/mediaconversion.h"

#include <QMutex>
#include <QSet>

#include <atomic>
#include <chrono>

// A converter with canned behaviour for tests of the logic above it: it writes a small file
// named like the real converter would (Arena name + ".mov", or ".png" for stills), reports
// progress, fails for chosen clips and honours the stop token.
class FakeConversion final : public MediaConversion
{
public:
    void failFor(const QString &arenaName, const QString &message);
    void setDelay(std::chrono::milliseconds delay) { m_delayMs = delay.count(); }
    int calls() const { return m_calls; }
    QList<ConvertOptions> options() const;
    QList<bool> forceEvenArguments() const; // of every convertImage call, in order

    Result<QString> convertVideo(const MediaClip &clip, const QString &folder,
                                 const ConvertOptions &options,
                                 const std::function<void(double)> &progress,
                                 std::stop_token stop) const override;
    Result<QString> convertImage(const MediaClip &clip, const QString &folder, bool forceEven,
                                 const std::function<void(double)> &progress) const override;

private:
    Result<QString> write(const MediaClip &clip, const QString &folder, const QString &extension,
                          const std::function<void(double)> &progress, std::stop_token stop) const;

    mutable QMutex m_mutex;
    QHash<QString, QString> m_failures;
    mutable QList<ConvertOptions> m_options;
    mutable QList<bool> m_forceEven;
    std::atomic<long long> m_delayMs{0};
    mutable std::atomic<int> m_calls{0};
};
