#include "clipthumbs.h"

#include "media/thumbnailcache.h"

ClipThumbs::ClipThumbs(ThumbnailCache &cache, QObject *parent) : QObject(parent), m_cache(cache)
{
    connect(&m_cache, &ThumbnailCache::thumbnailReady, this, [this](const QString &key) {
        // A picture that arrived may later leave the cache's budget; asking again then is fine.
        m_requested.remove(key);
        const auto it = m_pathByKey.constFind(key);
        if (it != m_pathByKey.constEnd())
            Q_EMIT ready(*it);
    });
}

QString ClipThumbs::keyFor(const QString &path)
{
    auto it = m_keyByPath.constFind(path);
    if (it != m_keyByPath.constEnd())
        return *it;
    const QString key = ThumbnailCache::cacheKey(path);
    m_keyByPath.insert(path, key);
    m_pathByKey.insert(key, path);
    return key;
}

QImage ClipThumbs::imageFor(const QString &path)
{
    const QString key = keyFor(path);
    QImage image = m_cache.imageForKey(key);
    if (image.isNull() && !m_requested.contains(key)) {
        m_requested.insert(key);
        if (m_toLoad.isEmpty())
            QMetaObject::invokeMethod(this, &ClipThumbs::startLoads, Qt::QueuedConnection);
        m_toLoad.append(key);
    }
    return image;
}

void ClipThumbs::startLoads()
{
    const QList<QString> keys = std::exchange(m_toLoad, {});
    for (const QString &key : keys) {
        const auto it = m_pathByKey.constFind(key);
        if (it != m_pathByKey.constEnd()) // not forgotten in the meantime
            m_cache.request(*it, key);
    }
}

void ClipThumbs::forget()
{
    m_keyByPath.clear();
    m_pathByKey.clear();
    m_requested.clear();
    m_toLoad.clear();
}
