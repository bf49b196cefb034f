#pragma once

#include <QMutex>
#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>

// Progress handed from a worker thread to the GUI thread by value: the worker stores, a timer
// on the GUI thread samples. No pointer to a GUI object ever crosses threads.
template<typename T>
class ProgressBox
{
public:
    void store(const T &value)
    {
        QMutexLocker lock(&m_mutex);
        m_value = value;
        m_fresh = true;
    }
    // Hands the latest value to `use` if it changed since the last take.
    void take(const std::function<void(const T &)> &use)
    {
        T value;
        {
            QMutexLocker lock(&m_mutex);
            if (!m_fresh)
                return;
            m_fresh = false;
            value = m_value;
        }
        use(value);
    }

private:
    QMutex m_mutex;
    T m_value{};
    bool m_fresh = false;
};

// Samples a box on the GUI thread every `intervalMs` while it lives.
template<typename T>
std::unique_ptr<QTimer> sampleProgress(QObject *context, std::shared_ptr<ProgressBox<T>> box,
                                       std::function<void(const T &)> use, int intervalMs = 100)
{
    auto timer = std::make_unique<QTimer>();
    timer->setInterval(intervalMs);
    QObject::connect(timer.get(), &QTimer::timeout, context, [box, use] { box->take(use); });
    timer->start();
    return timer;
}
