#include "fakeconversion.h"

#include <QDir>
#include <QFile>

#include <thread>

void FakeConversion::failFor(const QString &arenaName, const QString &message)
{
    QMutexLocker lock(&m_mutex);
    m_failures.insert(arenaName, message);
}

QList<ConvertOptions> FakeConversion::options() const
{
    QMutexLocker lock(&m_mutex);
    return m_options;
}

QList<bool> FakeConversion::forceEvenArguments() const
{
    QMutexLocker lock(&m_mutex);
    return m_forceEven;
}

Result<QString> FakeConversion::write(const MediaClip &clip, const QString &folder,
                                      const QString &extension,
                                      const std::function<void(double)> &progress,
                                      std::stop_token stop) const
{
    ++m_calls;
    {
        QMutexLocker lock(&m_mutex);
        if (m_failures.contains(clip.arenaName))
            return Error{Error::Kind::WriteFailed, m_failures.value(clip.arenaName), {}, 0};
    }
    if (progress)
        progress(0.5);
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(m_delayMs);
    while (std::chrono::steady_clock::now() < until) {
        if (stop.stop_requested())
            return Error{Error::Kind::Cancelled, QStringLiteral("Cancelled"), {}, 0};
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    if (stop.stop_requested())
        return Error{Error::Kind::Cancelled, QStringLiteral("Cancelled"), {}, 0};
    const QString path = QDir(folder).filePath(clip.arenaName + extension);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return Error{Error::Kind::WriteFailed, file.errorString(), path, 0};
    file.write("converted " + clip.originalName.toUtf8());
    if (progress)
        progress(1.0);
    return path;
}

Result<QString> FakeConversion::convertVideo(const MediaClip &clip, const QString &folder,
                                             const ConvertOptions &options,
                                             const std::function<void(double)> &progress,
                                             std::stop_token stop) const
{
    {
        QMutexLocker lock(&m_mutex);
        m_options.append(options);
    }
    return write(clip, folder, QStringLiteral(".mov"), progress, stop);
}

Result<QString> FakeConversion::convertImage(const MediaClip &clip, const QString &folder,
                                             bool forceEven,
                                             const std::function<void(double)> &progress) const
{
    {
        QMutexLocker lock(&m_mutex);
        m_forceEven.append(forceEven);
    }
    return write(clip, folder, QStringLiteral(".png"), progress, {});
}
