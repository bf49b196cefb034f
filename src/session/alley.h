#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

class Desktop;

// Resolume Alley makes DXV3, which we do not encode ourselves: find it and hand it the clips,
// or send the operator to its download page.
namespace Alley {

// Where Alley may live, tried in order: the vendor's own install locations, then a Wine
// prefix (Alley ships for Windows and macOS only).
QStringList candidatePaths(const QString &home);
std::optional<QString> alleyURL(const QString &home);
bool isResolumeAlleyInstalled(const QString &home);
QUrl downloadPage();

// Opens all files with Alley in one request, or the download page when it is missing.
void open(const QStringList &files, Desktop &desktop, const QString &home);
void open(const QStringList &files, Desktop &desktop); // the user's home folder

} // namespace Alley
