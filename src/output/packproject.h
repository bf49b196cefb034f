#pragma once

#include "model/result.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

// The project file: the clip list with identity, location, names and cue position, and the
// settings that shape the pack. Probe results are not stored; opening re-probes.
struct PackProjectClip {
    QUuid id;
    QString path;
    std::optional<QByteArray> bookmark; // read when present, never written on Linux
    QString originalName;
    QString arenaName;
    qint64 cueIndex = 0;
    friend bool operator==(const PackProjectClip &, const PackProjectClip &) = default;
};

struct PackProjectFile {
    qint64 version = 1;
    QString showPrefix;
    bool zeroPad = true;
    qint64 preferredWidth = 1920;
    bool warnOnEmbeddedAudio = true;
    bool warnOnHEVC = true;
    QString convertFormat; // raw value; an unknown text leaves the session's format alone
    bool stripAudioOnConvert = true;
    bool forceEvenDimensions = true;
    QList<PackProjectClip> clips;
    QDateTime createdAt;
    friend bool operator==(const PackProjectFile &, const PackProjectFile &) = default;
};

namespace PackProject {

inline const QString kDefaultFileName = QStringLiteral("Show.cuebox.json");
inline const QString kEmptyText = QStringLiteral("No clips to save");
inline const QString kUnreadableText = QStringLiteral("Could not read this project file");

// "Show.cuebox.json", or the sanitized prefix + ".cuebox.json".
QString proposedFileName(const QString &showPrefix);

QByteArray encode(const PackProjectFile &file);
// Every key is required but a clip's bookmark; anything else gives no value.
std::optional<PackProjectFile> decode(const QByteArray &bytes);

// Atomic: a failed write leaves the earlier file intact.
Status write(const PackProjectFile &file, const QString &path);
std::optional<PackProjectFile> read(const QString &path);

} // namespace PackProject
