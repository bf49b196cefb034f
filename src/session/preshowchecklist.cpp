#include "preshowchecklist.h"

namespace {

bool isDxv(const MediaClip &clip)
{
    if (!clip.videoCodec)
        return false;
    const QString codec = clip.videoCodec->toUpper();
    return codec.contains(u"DXV") || codec.contains(u"DXD") || codec.contains(u"DX3");
}

// The open GPU family the media server also decodes on the graphics card: HAP, HAP Alpha,
// HAP Q, HAP Q Alpha and the alpha-only texture, in whatever case the file spells them.
bool isHap(const MediaClip &clip)
{
    if (!clip.videoCodec)
        return false;
    const QString codec = clip.videoCodec->toUpper();
    return codec == u"HAP1" || codec == u"HAP5" || codec == u"HAPY" || codec == u"HAPM" ||
           codec == u"HAPA";
}

ChecklistItem item(const QString &id, bool ok, std::optional<qint64> count)
{
    const QString title = QStringLiteral("checklist.") + id;
    return ChecklistItem{id, ok, title,
                         title + (ok ? QStringLiteral(".ok") : QStringLiteral(".bad")), count};
}

} // namespace

PreShowChecklist PreShowChecklist::build(const QList<MediaClip> &clips,
                                         const std::optional<QUrl> &lastExportURL,
                                         const std::optional<QUrl> &lastBackupURL)
{
    qint64 fail = 0, warn = 0, audio = 0, videos = 0, dxv = 0, hap = 0, duplicates = 0;
    for (const MediaClip &clip : clips) {
        const ClipHealth health = clip.health();
        fail += health == ClipHealth::fail;
        warn += health == ClipHealth::warn;
        const bool image = clip.isImage();
        audio += clip.hasAudio && !image;
        videos += !image;
        dxv += !image && (isDxv(clip) || isHap(clip));
        hap += !image && isHap(clip);
        duplicates += clip.isDuplicate;
    }

    PreShowChecklist list;
    list.items.append(item(QStringLiteral("health"), !clips.isEmpty() && fail == 0, fail + warn));
    list.items.append(item(QStringLiteral("audio"), audio == 0, audio));

    ChecklistItem dxvItem = item(QStringLiteral("dxv"), true, dxv);
    if (videos == 0)
        dxvItem.detailKey = QStringLiteral("checklist.dxv.none");
    else if (dxv == videos)
        dxvItem.detailKey =
            hap > 0 ? QStringLiteral("checklist.dxv.gpu") : QStringLiteral("checklist.dxv.ok");
    else if (lastExportURL)
        dxvItem.detailKey = QStringLiteral("checklist.dxv.exported");
    else {
        dxvItem.ok = false;
        dxvItem.detailKey = QStringLiteral("checklist.dxv.bad");
    }
    list.items.append(dxvItem);

    list.items.append(item(QStringLiteral("backup"),
                           lastBackupURL.has_value() || lastExportURL.has_value(), std::nullopt));
    list.items.append(item(QStringLiteral("duplicates"), duplicates == 0, duplicates));
    return list;
}

qint64 PreShowChecklist::readyCount() const
{
    return std::count_if(items.cbegin(), items.cend(), [](const ChecklistItem &i) { return i.ok; });
}
