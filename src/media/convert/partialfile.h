#pragma once

#include <QString>

#include <optional>

// An output file under construction. It lives under a hidden temporary name in the target
// folder (same file system, so the final rename is atomic) and takes its final name only in
// commit(); destroyed uncommitted, it removes itself. Nothing else in the folder is touched.
class PartialFile
{
public:
    // Reserves a fresh hidden name for `finalPath` (".name.partial-XXXXXX"); the error text is
    // the file system's own when the folder cannot take it.
    static std::optional<PartialFile> create(const QString &finalPath, QString *errorText);

    PartialFile(PartialFile &&other) noexcept;
    PartialFile &operator=(PartialFile &&) = delete;
    ~PartialFile();

    const QString &path() const { return m_path; }
    const QString &finalPath() const { return m_finalPath; }

    // Flushes the finished file to disk, renames it over the final name (replacing a file
    // there) and flushes the folder. Empty on success, else the file system's text.
    QString commit();

private:
    PartialFile(QString path, QString finalPath);

    QString m_path;
    QString m_finalPath;
    bool m_done = false;
};
