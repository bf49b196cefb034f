#pragma once

#include <QStringList>

#include <chrono>
#include <functional>
#include <memory>

// Brings the bytes that probing and fingerprinting will read into the page cache a few files
// ahead of the probe, several files at once, and holds each file open for them (HeldFiles).
// The probe still reads one file after the other; only the waiting for a slow disk overlaps:
// on a USB drive or a network share every open and every read costs milliseconds, and a probe
// is a chain of a few dependent ones.
class ReadAhead
{
public:
    struct Options {
        int depth = 32;  // files read ahead of the one being probed
        int readers = 8; // reads in flight at once
        // Files behind the probe kept open for work that reads them after it (fingerprints).
        int heldBehind = 1;
        // Called on a reader before it opens a file; tests slow the disk down with it.
        std::function<void(const QString &path)> beforeOpen;
    };

    ReadAhead(QStringList files, Options options);
    explicit ReadAhead(QStringList files) : ReadAhead(std::move(files), Options{}) {}
    ~ReadAhead(); // stops the readers and closes every file still held

    ReadAhead(const ReadAhead &) = delete;
    ReadAhead &operator=(const ReadAhead &) = delete;

    // The probe is about to read file `index`: files up to `index + depth` are queued, and when
    // file `index` is being read ahead right now, this waits for it (its open is paid already,
    // opening again would only pay twice). Files more than `heldBehind` before it are let go.
    void reach(qsizetype index);

    // The bytes read ahead of each file: the head (container header, fingerprint sample) and
    // the tail (the fingerprint's second sample, a movie header written last).
    static constexpr qint64 kHeadBytes = 512 * 1024;
    static constexpr qint64 kTailBytes = 256 * 1024;

private:
    struct State;
    std::shared_ptr<State> m_state;
};
