#include "inputfile.h"

#include "media/heldfiles.h"
#include "model/filesystem.h"
#include "model/pathnames.h"
#include "vectorstate.h"

#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <mutex>

namespace {

using Clock = std::chrono::steady_clock;

// Enough for the streams of an MPEG program stream and the parameters of their codecs; files
// with a real header never get here.
constexpr int64_t kStreamInfoBytes = 1 << 20;
constexpr int64_t kStreamInfoMicroseconds = 1'000'000;

// Demuxers that open further files on their own, out of reach of the guard on io_open: a
// text file named .mov can be a concat script or a playlist that sends the probe to a pipe or a
// device beside it. Playlists and manifests are listed too, so that they fail with one clear
// error instead of half-way through.
constexpr const char *kFollowingDemuxers[] = {"concat", "vobsub", "hls", "dash", "imf"};

// Every demuxer of the library except the ones above, comma-separated, as FFmpeg's format
// whitelist wants it.
const QByteArray &demuxerWhitelist()
{
    static const QByteArray list = [] {
        QByteArray names;
        void *state = nullptr;
        while (const AVInputFormat *format = av_demuxer_iterate(&state)) {
            const QByteArray name(format->name);
            if (std::any_of(std::begin(kFollowingDemuxers), std::end(kFollowingDemuxers),
                            [&](const char *banned) { return name == banned; }))
                continue;
            names += (names.isEmpty() ? "" : ",") + name;
        }
        return names;
    }();
    return list;
}

QString refusalText(const QString &path)
{
    const FileSystem::Look look = FileSystem::look(path);
    if (look.folder)
        return avErrorText(AVERROR(EISDIR));
    if (look.special)
        // A pipe or a device could block a read forever, out of reach of any deadline.
        return FileSystem::notRegularText();
    return {}; // FFmpeg says why a missing file, a dangling link or a locked file fails
}

// The demuxer that the extensions show media mostly come with name. Opening with it skips
// trying every demuxer's signature on the first bytes, which was nearly half of an open.
const AVInputFormat *demuxerNamedBy(const QString &path)
{
    static const struct Named {
        const char *extension;
        const AVInputFormat *demuxer;
    } kNamed[] = {
        {"mov", av_find_input_format("mov")},       {"mp4", av_find_input_format("mov")},
        {"m4v", av_find_input_format("mov")},       {"mkv", av_find_input_format("matroska")},
        {"webm", av_find_input_format("matroska")}, {"avi", av_find_input_format("avi")},
    };
    const QString extension = PathNames::extension(path);
    for (const Named &named : kNamed) {
        if (extension.compare(QLatin1String(named.extension), Qt::CaseInsensitive) == 0)
            return named.demuxer;
    }
    return nullptr;
}

// Reads a descriptor lent by a reader ahead of the probe (see HeldFiles): the open it already
// paid for is not paid again. pread keeps the shared file position out of it.
struct LentFile {
    int fd = -1;
    int64_t position = 0;
    int64_t size = -1; // asked for more than once per open: looked up once
    AVIOContext *io = nullptr;

    ~LentFile()
    {
        if (io) {
            av_freep(&io->buffer);
            avio_context_free(&io);
        }
        if (fd >= 0)
            ::close(fd);
    }

    static int read(void *opaque, uint8_t *buffer, int size)
    {
        auto *file = static_cast<LentFile *>(opaque);
        ssize_t n;
        do
            n = ::pread(file->fd, buffer, static_cast<size_t>(size), file->position);
        while (n < 0 && errno == EINTR);
        if (n < 0)
            return AVERROR(errno);
        if (n == 0)
            return AVERROR_EOF;
        file->position += n;
        return static_cast<int>(n);
    }

    static int64_t seek(void *opaque, int64_t offset, int whence)
    {
        auto *file = static_cast<LentFile *>(opaque);
        struct stat st {
        };
        switch (whence & ~AVSEEK_FORCE) {
        case AVSEEK_SIZE:
            if (file->size < 0 && ::fstat(file->fd, &st) == 0)
                file->size = st.st_size;
            return file->size >= 0 ? file->size : AVERROR(errno);
        case SEEK_SET:
            file->position = offset;
            return file->position;
        case SEEK_CUR:
            file->position += offset;
            return file->position;
        case SEEK_END:
            if (::fstat(file->fd, &st) != 0)
                return AVERROR(errno);
            file->position = st.st_size + offset;
            return file->position;
        default:
            return AVERROR(EINVAL);
        }
    }
};

// The same buffer size FFmpeg's file protocol reads with.
constexpr int kLentBufferBytes = 32768;

} // namespace

struct InputFile::Guard {
    std::stop_token stop;
    Clock::time_point deadline;
    QByteArray url;
    LentFile lent; // destroyed after the format context that reads through it
    bool mainOpened = false;
    int (*defaultOpen)(AVFormatContext *, AVIOContext **, const char *, int,
                       AVDictionary **) = nullptr;

    static int interrupt(void *opaque)
    {
        const auto *guard = static_cast<const Guard *>(opaque);
        return guard->stop.stop_requested() || Clock::now() >= guard->deadline;
    }

    // The first open is the file itself; any later one is a demuxer following a reference out
    // of the file (HLS and DASH playlists, IMF packages, QuickTime data references).
    static int openOnce(AVFormatContext *context, AVIOContext **pb, const char *url, int flags,
                        AVDictionary **options)
    {
        auto *guard = static_cast<Guard *>(context->opaque);
        if (guard->mainOpened || guard->url != url)
            return AVERROR(EPERM);
        guard->mainOpened = true;
        return guard->defaultOpen(context, pb, url, flags, options);
    }
};

void silenceFfmpegLog()
{
    static std::once_flag once;
    std::call_once(once, [] { av_log_set_level(AV_LOG_QUIET); });
}

InputFile::InputFile(std::unique_ptr<Guard> guard, FormatHandle format)
    : m_guard(std::move(guard)), m_format(std::move(format))
{}

InputFile::~InputFile() = default;

Result<InputFile> InputFile::open(const QString &path, std::stop_token stop,
                                  std::chrono::milliseconds budget)
{
    silenceFfmpegLog();
    // A held file is one a reader opened after checking it is a regular file; its holder lets
    // it go only once the probe is past it, so there is nothing to look at again.
    if (!HeldFiles::holds(path)) {
        if (const QString text = refusalText(path); !text.isEmpty())
            return Error{Error::Kind::Unreadable, text, path, AVERROR(EINVAL)};
    }
    const Clock::time_point deadline = Clock::now() + budget;
    if (const AVInputFormat *named = demuxerNamedBy(path)) {
        Result<InputFile> input = attempt(path, stop, deadline, named);
        if (input || stop.stop_requested() || Clock::now() >= deadline)
            return input;
        // A name that lies (a transport stream called .mp4): every demuxer has its say.
    }
    return attempt(path, std::move(stop), deadline, nullptr);
}

Result<InputFile> InputFile::attempt(const QString &path, std::stop_token stop,
                                     std::chrono::steady_clock::time_point deadline,
                                     const AVInputFormat *demuxer)
{
    const QByteArray local = QFile::encodeName(path);
    const auto fail = [&](int code) {
        return Error{Error::Kind::Unreadable, avErrorText(code), path, code};
    };
    auto guard = std::make_unique<Guard>();
    guard->stop = std::move(stop);
    guard->deadline = deadline;
    // The prefix keeps a colon in a file name from being read as a protocol.
    guard->url = QByteArrayLiteral("file:") + local;

    AVFormatContext *raw = avformat_alloc_context();
    if (!raw)
        return fail(AVERROR(ENOMEM));
    raw->interrupt_callback = {&Guard::interrupt, guard.get()};
    raw->opaque = guard.get();
    guard->defaultOpen = raw->io_open;
    raw->io_open = &Guard::openOnce;
    if (const int fd = HeldFiles::borrow(path); fd >= 0) {
        guard->lent.fd = fd;
        auto *buffer = static_cast<unsigned char *>(av_malloc(kLentBufferBytes));
        guard->lent.io = buffer ? avio_alloc_context(buffer, kLentBufferBytes, 0, &guard->lent,
                                                     &LentFile::read, nullptr, &LentFile::seek)
                                : nullptr;
        if (!guard->lent.io) {
            av_free(buffer);
            avformat_free_context(raw);
            return fail(AVERROR(ENOMEM));
        }
        raw->pb = guard->lent.io;
        raw->flags |= AVFMT_FLAG_CUSTOM_IO;
        guard->mainOpened = true; // the demuxer still may not open anything else
    }

    AVDictionary *options = nullptr;
    av_dict_set(&options, "protocol_whitelist", "file", 0);
    // The demuxers named by an extension open nothing on their own: the list of every other
    // demuxer (some 2 kB, copied twice and searched per open) only matters when the first bytes
    // choose.
    if (!demuxer)
        av_dict_set(&options, "format_whitelist", demuxerWhitelist().constData(), 0);
    clearUpperVectorState();
    const int error = avformat_open_input(&raw, guard->url.constData(), demuxer, &options);
    DictionaryHandle leftovers(options);
    if (error < 0) { // FFmpeg has freed the context already
        // A demuxer cut off mid-header may call it invalid data; the reason is the cut.
        return fail(Guard::interrupt(guard.get()) ? AVERROR_EXIT : error);
    }
    return InputFile(std::move(guard), FormatHandle(raw));
}

int InputFile::readStreamInfo()
{
    AVFormatContext *format = m_format.get();
    format->probesize = kStreamInfoBytes;
    format->max_analyze_duration = kStreamInfoMicroseconds;
    clearUpperVectorState();
    return avformat_find_stream_info(format, nullptr);
}

void InputFile::extendDeadline(std::chrono::milliseconds budget)
{
    m_guard->deadline = Clock::now() + budget;
}

bool InputFile::interrupted() const
{
    return Guard::interrupt(m_guard.get()) != 0;
}
