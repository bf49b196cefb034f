#pragma once

#include "model/mediaclip.h"

#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

struct ChecklistItem {
    QString id; // "health", "audio", "dxv", "backup", "duplicates"
    bool ok = false;
    QString titleKey;
    QString detailKey;
    std::optional<qint64> count; // absent for the backup line

    friend bool operator==(const ChecklistItem &, const ChecklistItem &) = default;
};

// Five green-or-not lines derived afresh from the pack whenever they are read.
struct PreShowChecklist {
    QList<ChecklistItem> items;

    static PreShowChecklist build(const QList<MediaClip> &clips,
                                  const std::optional<QUrl> &lastExportURL,
                                  const std::optional<QUrl> &lastBackupURL);
    qint64 readyCount() const;
    friend bool operator==(const PreShowChecklist &, const PreShowChecklist &) = default;
};
