#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <utility>

// Hands a conversion's progress to the caller at most once per interval of wall-clock time:
// the pipeline updates it for every frame, the caller sees a steady trickle. Values never go
// down, stay within 0…1, and finish() ends them with exactly 1.0.
class ProgressReporter
{
public:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds kInterval{120};

    ProgressReporter(std::function<void(double)> callback, double totalSeconds)
        : m_callback(std::move(callback)), m_totalSeconds(totalSeconds)
    {
        emit(0.0);
    }

    void update(double doneSeconds)
    {
        if (!m_callback || m_totalSeconds <= 0)
            return;
        const Clock::time_point now = Clock::now();
        if (now - m_lastCall < kInterval)
            return;
        emit(std::clamp(doneSeconds / m_totalSeconds, m_last, 1.0));
    }

    void finish() { emit(1.0); }

private:
    void emit(double fraction)
    {
        m_lastCall = Clock::now();
        m_last = fraction;
        if (m_callback)
            m_callback(fraction);
    }

    std::function<void(double)> m_callback;
    double m_totalSeconds;
    double m_last = 0.0;
    Clock::time_point m_lastCall;
};
