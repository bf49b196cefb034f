#include "thumbnailcache.h"

#include "thumbnails.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>

#include <cerrno>

#include <sys/resource.h>
#include <unistd.h>

ThumbnailCache::ThumbnailCache(Generator generator, qint64 budgetBytes, QObject *parent)
    : QObject(parent), m_generator(std::move(generator)), m_memory(budgetBytes)
{
    m_pool.setMaxThreadCount(kLoadThreads);
}

ThumbnailCache::~ThumbnailCache()
{
    // Loads check the stop token; after this no load refers to the cache any more. Results
    // already queued for it are dropped with the object.
    m_stop.request_stop();
    {
        QMutexLocker lock(&m_queueLock);
        m_queue.clear();
    }
    m_pool.waitForDone();
}

ThumbnailCache &ThumbnailCache::shared()
{
    static QPointer<ThumbnailCache> instance;
    if (!instance) {
        instance = new ThumbnailCache(
            [](const QString &path, std::stop_token stop) {
                return Thumbnails::forFile(path, std::move(stop));
            },
            kDefaultBudgetBytes, QCoreApplication::instance());
    }
    return *instance;
}

QString ThumbnailCache::cacheKey(const QString &path)
{
    const QFileInfo info(path);
    double seconds = 0.0;
    qint64 size = 0;
    if (info.exists()) {
        seconds = info.lastModified().toMSecsSinceEpoch() / 1000.0;
        size = info.size();
    }
    // Written as a decimal fraction with at least one digit after the point: 1700000000.5,
    // 1700000000.0.
    QString time = QString::number(seconds, 'f', 3);
    while (time.endsWith(u'0') && !time.endsWith(u".0"))
        time.chop(1);
    return path + u'|' + time + u'|' + QString::number(size);
}

void ThumbnailCache::request(const QString &path, const QString &key)
{
    if (m_memory.contains(key) || m_inflight.contains(key))
        return;
    m_inflight.insert(key);
    QMutexLocker lock(&m_queueLock);
    m_queue.push_back({path, key});
    if (m_draining >= kLoadThreads)
        return;
    ++m_draining;
    // The worker may use `this`: the destructor empties the queue and waits for it.
    m_pool.start([this, stop = m_stop.get_token()] { drainQueue(stop); });
}

void ThumbnailCache::drainQueue(std::stop_token stop)
{
    // Pictures for rows are a nicety: on a machine with few cores, decoding them must not take
    // the window's core while it draws. Linux applies this to the calling thread alone.
    const auto self = static_cast<id_t>(gettid());
    errno = 0;
    const int niceness = getpriority(PRIO_PROCESS, self);
    if (errno == 0 && niceness < kLoaderNiceness) // never above what the process was given
        setpriority(PRIO_PROCESS, self, kLoaderNiceness);
    // A copy of the generator, so that nothing of the cache is shared while a load runs.
    const Generator generator = m_generator;
    for (;;) {
        Load load;
        {
            QMutexLocker lock(&m_queueLock);
            if (m_queue.empty() || stop.stop_requested()) {
                --m_draining;
                return;
            }
            load = std::move(m_queue.back());
            m_queue.pop_back();
        }
        QImage image = generator(load.path, stop);
        if (stop.stop_requested())
            continue; // the next turn finds the queue emptied and leaves
        // Queued to the cache's thread: memory and the in-flight set are only touched there.
        QMetaObject::invokeMethod(
            this,
            [this, key = std::move(load.key), image = std::move(image)] { store(key, image); },
            Qt::QueuedConnection);
    }
}

QImage ThumbnailCache::imageForKey(const QString &key) const
{
    const QImage *image = m_memory.object(key);
    return image ? *image : QImage();
}

void ThumbnailCache::store(const QString &key, const QImage &image)
{
    m_inflight.remove(key);
    if (image.isNull())
        return;
    // Pixels are the cost; a picture larger than the whole budget is not kept.
    const qsizetype cost = std::max<qsizetype>(1, image.sizeInBytes());
    if (m_memory.insert(key, new QImage(image), cost))
        Q_EMIT thumbnailReady(key);
}
