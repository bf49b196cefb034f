#pragma once

#include <QString>

class L10n;

// The one-line status under the pack. It carries numbers and names, not text: the text is
// made when shown, so a language switch re-renders the last status.
class PackStatus
{
public:
    enum class Kind {
        checking,
        ready,
        saved,
        converting,
        converted,
        projectSaved,
        projectLoaded,
        watching,
        error,
        idle,
        scanning,
        empty,
        renamed,
        addFirst,
        noProblems,
        noAudioToStrip,
        exporting,
        noRoom,
        backingUp,
        verifying,
        verified,
        verifyFailed,
        noChecksums,
        waiting,
    };

    PackStatus() = default;
    static PackStatus checking(qint64 index, qint64 total, const QString &name);
    static PackStatus ready(qint64 count);
    static PackStatus saved(const QString &name);
    static PackStatus converting(qint64 index, qint64 total, const QString &name);
    static PackStatus converted(qint64 count);
    static PackStatus projectSaved(const QString &name);
    static PackStatus projectLoaded(qint64 count, qint64 missing);
    static PackStatus watching(const QString &path);
    static PackStatus error(const QString &message);
    static PackStatus idle() { return PackStatus(Kind::idle); }
    static PackStatus scanning() { return PackStatus(Kind::scanning); }
    static PackStatus empty() { return PackStatus(Kind::empty); }
    static PackStatus renamed() { return PackStatus(Kind::renamed); }
    static PackStatus addFirst() { return PackStatus(Kind::addFirst); }
    static PackStatus noProblems() { return PackStatus(Kind::noProblems); }
    static PackStatus noAudioToStrip() { return PackStatus(Kind::noAudioToStrip); }
    static PackStatus exporting(qint64 index, qint64 total, const QString &name);
    // The target cannot take what would be written; nothing was.
    static PackStatus noRoom(const QString &target, qint64 neededBytes, qint64 freeBytes);
    static PackStatus backingUp(qint64 index, qint64 total, const QString &name);
    static PackStatus verifying(qint64 index, qint64 total, const QString &name);
    static PackStatus verified(qint64 count);
    // `problem` is a PackVerifier::Problem; `name` the first bad file.
    static PackStatus verifyFailed(int problem, qint64 problems, const QString &name);
    static PackStatus noChecksums(const QString &folder);
    // Files in the watched folder still being written; they join once complete.
    static PackStatus waiting(qint64 count);

    Kind kind() const { return m_kind; }
    qint64 index() const { return m_first; }
    qint64 total() const { return m_second; }
    qint64 count() const { return m_first; }
    qint64 missing() const { return m_second; }
    const QString &text() const { return m_text; } // name, path or error message
    // The operation failed: a command-line verb ends with a non-zero exit status.
    bool isFailure() const;

    QString text(const L10n &strings) const;

    friend bool operator==(const PackStatus &, const PackStatus &) = default;

private:
    explicit PackStatus(Kind kind, qint64 first = 0, qint64 second = 0, QString text = {})
        : m_kind(kind), m_first(first), m_second(second), m_text(std::move(text))
    {}

    Kind m_kind = Kind::idle;
    qint64 m_first = 0;
    qint64 m_second = 0;
    QString m_text;
};
