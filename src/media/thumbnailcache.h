#pragma once

#include "model/mediaclip.h"

#include <QCache>
#include <QImage>
#include <QMutex>
#include <QObject>
#include <QSet>
#include <QThreadPool>

#include <deque>
#include <functional>
#include <stop_token>

// The process-wide store of clip thumbnails: one per file version (path, modification time,
// size), made on a small pool of its own and published on the thread the cache lives on (the
// GUI thread). Memory is bounded: past the budget the least recently used pictures go, and a
// later request makes them again.
class ThumbnailCache final : public QObject
{
    Q_OBJECT
public:
    // Makes one thumbnail on a pool thread; must not touch QObjects. Null means "no picture".
    using Generator = std::function<QImage(const QString &path, std::stop_token stop)>;

    static constexpr qint64 kDefaultBudgetBytes = 64 * 1024 * 1024;
    static constexpr int kLoadThreads = 2;
    static constexpr int kLoaderNiceness = 10; // of the loading threads, as `nice` counts

    explicit ThumbnailCache(Generator generator, qint64 budgetBytes = kDefaultBudgetBytes,
                            QObject *parent = nullptr);
    ~ThumbnailCache() override;

    // The instance the views share, making real thumbnails. Created on first use, on the GUI
    // thread, and owned by the application object.
    static ThumbnailCache &shared();

    // "path|modification seconds since 1970|size in bytes"; 0.0 and 0 when the file is gone.
    static QString cacheKey(const QString &path);

    // Makes sure the file's thumbnail will be in memory; thumbnailReady(key) follows when a new
    // one is stored. Nothing happens while the same key is loading or already stored. A failed
    // load is not retried until the next request.
    // Waiting loads run newest first: the rows on screen now come before rows that scrolled
    // away while their loads waited.
    void request(const QString &path) { request(path, cacheKey(path)); }
    void request(const MediaClip &clip) { request(clip.sourcePath()); }
    // For a caller that already holds the file's key: no second look at the file.
    void request(const QString &path, const QString &key);

    // The stored thumbnail of the file as it is now on disk, null when there is none yet.
    QImage image(const QString &path) const { return imageForKey(cacheKey(path)); }
    QImage imageForKey(const QString &key) const;
    bool isLoading(const QString &key) const { return m_inflight.contains(key); }

    qint64 usedBytes() const { return m_memory.totalCost(); }
    qint64 budgetBytes() const { return m_memory.maxCost(); }
    qsizetype count() const { return m_memory.size(); }

Q_SIGNALS:
    void thumbnailReady(const QString &key);

private:
    void store(const QString &key, const QImage &image);
    void drainQueue(std::stop_token stop);

    struct Load {
        QString path;
        QString key;
    };

    Generator m_generator;
    mutable QCache<QString, QImage> m_memory; // reading refreshes a picture's place in the LRU
    QSet<QString> m_inflight;
    std::stop_source m_stop; // ends loads still running when the cache goes away
    // Loads wait here and a few pool threads drain them: one wake-up per burst of rows, not one
    // per row, which a scroll step paid for every picture it asked for.
    QMutex m_queueLock;
    std::deque<Load> m_queue;
    int m_draining = 0; // pool threads taking from the queue; under m_queueLock
    QThreadPool m_pool;
};
