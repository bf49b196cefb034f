#pragma once

#include <QHash>
#include <QImage>
#include <QObject>
#include <QSet>

class ThumbnailCache;

// The table's window on the shared thumbnail cache. Rows ask only when painted, so only
// visible rows start loads. A file's cache key (which needs a stat) is worked out once per
// change of the pack's files, and a load that failed is not asked for again until then; a
// picture the cache dropped for its budget is asked for again when its row shows.
class ClipThumbs final : public QObject
{
    Q_OBJECT
public:
    explicit ClipThumbs(ThumbnailCache &cache, QObject *parent = nullptr);

    // The picture if the cache has it; otherwise asks for a load (once) and returns null. The
    // loads asked for while a frame paints start after it, all together.
    QImage imageFor(const QString &path);
    // The pack changed: files may have been touched, and failed loads may be tried again.
    void forget();
    qsizetype requestCount() const { return m_requested.size(); }

Q_SIGNALS:
    void ready(const QString &path);

private:
    QString keyFor(const QString &path);
    void startLoads();

    ThumbnailCache &m_cache;
    QHash<QString, QString> m_keyByPath;
    QHash<QString, QString> m_pathByKey;
    QSet<QString> m_requested;
    QList<QString> m_toLoad; // keys asked for since the last startLoads()
};
