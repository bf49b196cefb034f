#include "readahead.h"

#include "media/heldfiles.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace {

enum class Step { waiting, queued, hinted, reading, held, done };

// Below this wait per file the disk counts as fast; a reader's own cost (a few system calls and
// a wake-up) is tens of microseconds.
constexpr double kFastDiskUs = 250;
constexpr int kFastAfter = 8;
constexpr qsizetype kSampleEvery = 32;
// On a fast disk the readers are woken for this many files at once: a wake-up costs the probe
// thread about as much as the reader's work for one file.
constexpr qsizetype kHintBatch = 8;
constexpr qint64 kBufferBytes = 128 * 1024;

// The buffer is made on a reader's first read, and left unfilled: a reader that only hands
// reads to the kernel never needs one, and zeroing eight of them held up the probe's start.
void readRange(int fd, std::unique_ptr<char[]> &buffer, qint64 offset, qint64 length)
{
    if (!buffer)
        buffer = std::make_unique_for_overwrite<char[]>(kBufferBytes);
    qint64 got = 0;
    while (got < length) {
        const qint64 want = std::min(length - got, kBufferBytes);
        const ssize_t n =
            ::pread(fd, buffer.get(), static_cast<size_t>(want), static_cast<off_t>(offset + got));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return;
        got += n;
    }
}

// Whether the first and the last byte of the file are in the page cache already: a read that
// may not wait for the disk says so for the cost of a system call.
bool isCached(int fd, qint64 size)
{
    char byte = 0;
    iovec one{&byte, 1};
    return size == 0 || (::preadv2(fd, &one, 1, 0, RWF_NOWAIT) == 1 &&
                         ::preadv2(fd, &one, 1, static_cast<off_t>(size - 1), RWF_NOWAIT) == 1);
}

struct Opened {
    int fd = -1;         // held for the probe; -1 for a hint, which lets the file go at once
    bool found = false;  // a readable regular file
    bool cached = false; // its ends were in the page cache before this reader came
};

// Opens and reads one file ahead; anything that is not a readable regular file is not found.
// Only a regular file is ever opened: opening a pipe waits for a writer, and opening a device
// can have effects of its own. With `hintOnly`, the reads are handed to the kernel, which starts
// them and returns at once: on a fast disk that hides a cold read for the cost of a system call,
// where reading it here would hold the reader (and the CPU) for as long as the read takes.
Opened readAheadOne(const QString &path, std::unique_ptr<char[]> &buffer, bool hintOnly)
{
    const QByteArray local = QFile::encodeName(path);
    struct stat st {
    };
    if (::stat(local.constData(), &st) != 0 || !S_ISREG(st.st_mode))
        return {};
    const int fd = ::open(local.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0)
        return {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) { // replaced between stat and open
        ::close(fd);
        return {};
    }
    const qint64 size = st.st_size;
    const bool cached = isCached(fd, size);
    if (hintOnly) {
        if (!cached) {
            ::posix_fadvise(fd, 0, std::min(size, ReadAhead::kHeadBytes), POSIX_FADV_WILLNEED);
            if (size > ReadAhead::kHeadBytes)
                ::posix_fadvise(fd, std::max(ReadAhead::kHeadBytes, size - ReadAhead::kTailBytes),
                                ReadAhead::kTailBytes, POSIX_FADV_WILLNEED);
        }
        ::close(fd);
        return {-1, true, cached};
    }
    if (size <= ReadAhead::kHeadBytes + ReadAhead::kTailBytes) {
        readRange(fd, buffer, 0, size);
    } else {
        readRange(fd, buffer, 0, ReadAhead::kHeadBytes);
        readRange(fd, buffer, size - ReadAhead::kTailBytes, ReadAhead::kTailBytes);
    }
    return {fd, true, cached};
}

} // namespace

struct ReadAhead::State {
    QStringList files;
    Options options;
    std::mutex mutex;
    std::condition_variable work;     // readers wait on it for files to read
    std::condition_variable finished; // the probe waits on it for the file a reader has open
    std::vector<Step> steps;
    qsizetype nextToQueue = 0; // files below this were queued (or skipped)
    qsizetype nextToTake = 0;  // the first queued file no reader has taken yet
    bool stopping = false;
    // How long a reader waits for one file (open and reads), averaged over the last few: where
    // the disk answers at once (the page cache, a fast SSD), reading in a reader only costs CPU
    // time, so then the files are only opened and their reads handed to the kernel, and every
    // kSampleEvery-th file is read through, to notice when the disk slows down.
    double meanWaitUs = 0;
    int waits = 0;

    bool diskIsFast() const { return waits >= kFastAfter && meanWaitUs < kFastDiskUs; }
    // Files in a row found in the page cache already. Then a fast disk's files are only sampled
    // too, as handing the kernel reads of cached bytes would cost CPU time for nothing; one file
    // found cold starts handing every file's reads to the kernel again.
    int cachedRun = 0;
    bool cacheIsWarm() const { return cachedRun >= kFastAfter; }

    void readerLoop()
    {
        std::unique_ptr<char[]> buffer;
        std::unique_lock lock(mutex);
        for (;;) {
            work.wait(lock, [&] { return stopping || nextToTake < nextToQueue; });
            if (stopping)
                return;
            const qsizetype index = nextToTake++;
            const Step queued = steps[static_cast<size_t>(index)];
            if (queued != Step::queued && queued != Step::hinted)
                continue; // the probe passed it already
            const bool hintOnly = queued == Step::hinted;
            steps[static_cast<size_t>(index)] = Step::reading;
            const QString path = files[index];
            lock.unlock();
            const auto started = std::chrono::steady_clock::now();
            if (options.beforeOpen)
                options.beforeOpen(path);
            const Opened opened = readAheadOne(path, buffer, hintOnly);
            const int fd = opened.fd;
            const double waitedUs = std::chrono::duration<double, std::micro>(
                                        std::chrono::steady_clock::now() - started)
                                        .count();
            lock.lock();
            if (!hintOnly) { // a hint returns before the disk answers: it says nothing of it
                meanWaitUs = waits == 0 ? waitedUs : meanWaitUs + (waitedUs - meanWaitUs) / 8;
                ++waits;
            }
            if (opened.found)
                cachedRun = opened.cached ? cachedRun + 1 : 0;
            Step &step = steps[static_cast<size_t>(index)];
            if (fd >= 0 && step == Step::reading && !stopping) {
                HeldFiles::hold(path, fd);
                step = Step::held;
            } else {
                if (fd >= 0)
                    ::close(fd);
                step = Step::done;
            }
            finished.notify_one(); // the probe may be waiting for this file
        }
    }
};

ReadAhead::ReadAhead(QStringList files, Options options) : m_state(std::make_shared<State>())
{
    State &s = *m_state;
    s.files = std::move(files);
    s.options = std::move(options);
    s.steps.assign(static_cast<size_t>(s.files.size()), Step::waiting);
    // Depth 0 switches reading ahead off: the probe opens and reads every file itself.
    const int readers = s.options.depth > 0
                            ? static_cast<int>(std::min<qsizetype>(
                                  std::clamp(s.options.readers, 1, 16), s.files.size()))
                            : 0;
    // The first reader starts the others: starting a thread held the probe's thread up to half
    // a millisecond each, several milliseconds before the first probe.
    if (readers > 0) {
        std::thread([state = m_state, readers] {
            for (int i = 1; i < readers; ++i)
                std::thread([state] { state->readerLoop(); }).detach();
            state->readerLoop();
        }).detach();
    }
}

ReadAhead::~ReadAhead()
{
    State &s = *m_state;
    {
        const std::lock_guard lock(s.mutex);
        s.stopping = true;
    }
    s.work.notify_all();
    // The readers are not joined: one stuck in an open on a share that went away must not take
    // the ingest with it. Each holds the state and closes what it opens once it sees `stopping`.
    const std::lock_guard lock(s.mutex);
    for (qsizetype i = 0; i < s.files.size(); ++i) {
        if (s.steps[static_cast<size_t>(i)] == Step::held)
            HeldFiles::release(s.files[i]);
    }
}

void ReadAhead::reach(qsizetype index)
{
    State &s = *m_state;
    if (s.options.depth <= 0)
        return;
    std::unique_lock lock(s.mutex);
    for (qsizetype i = s.nextToTake; i < std::min(index, s.nextToQueue); ++i) {
        // Behind the probe: what no reader has started is not worth reading any more.
        Step &step = s.steps[static_cast<size_t>(i)];
        if (step == Step::queued || step == Step::hinted)
            step = Step::done;
    }
    // The work that follows the probe (fingerprints) is done with files further back.
    const qsizetype behind = index - 1 - std::max(0, s.options.heldBehind);
    if (behind >= 0 && s.steps[static_cast<size_t>(behind)] == Step::held) {
        HeldFiles::release(s.files[behind]);
        s.steps[static_cast<size_t>(behind)] = Step::done;
    }
    const qsizetype end = std::min(s.files.size(), index + 1 + s.options.depth);
    const bool fast = s.diskIsFast();
    for (; s.nextToQueue < end; ++s.nextToQueue) {
        Step &step = s.steps[static_cast<size_t>(s.nextToQueue)];
        if (step != Step::waiting)
            continue;
        if (!fast || s.nextToQueue % kSampleEvery == 0)
            step = Step::queued;
        else if (!s.cacheIsWarm())
            step = Step::hinted;
        else {
            step = Step::done;
            continue;
        }
        // A reader woken takes every file queued: on a fast disk one wake-up serves a batch.
        if (!fast || s.nextToQueue - s.nextToTake + 1 >= kHintBatch ||
            s.nextToQueue + 1 == s.files.size())
            s.work.notify_one();
    }
    if (index < s.files.size())
        s.finished.wait(lock, [&] { return s.steps[static_cast<size_t>(index)] != Step::reading; });
}
