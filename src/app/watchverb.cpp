#include "watchverb.h"

#include "clireport.h"
#include "output/jsonwriter.h"
#include "session/packviewmodel.h"
#include "session/watchfoldermonitor.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QTextStream>
#include <QTimer>

#include <cstdio>
#include <optional>

#include <unistd.h>

namespace WatchVerb {

namespace {

// The writer's layout on one line, so that a script reads one event per line. Line breaks
// inside texts are escaped by the writer, so every raw one is layout.
QByteArray oneLine(const QByteArray &json)
{
    static const QRegularExpression layout(QStringLiteral("\n *"));
    return QString::fromUtf8(json).remove(layout).toUtf8();
}

struct Event {
    const char *key; // the word in the text line
    const char *raw; // the "event" of the JSON line
};

// Prints each clip's line once it is final: new clips when the ingest that adds them ends,
// clips probed again in place as soon as that probe is done.
class EventPrinter
{
public:
    EventPrinter(const PackViewModel &session, bool json, const L10n &strings)
        : m_session(session), m_json(json), m_strings(strings), m_colour(::isatty(1) == 1)
    {}

    void printAdded()
    {
        for (const MediaClip &clip : m_session.clips()) {
            if (!m_known.contains(clip.id)) {
                m_known.insert(clip.id);
                print(clip, Event{"cli.added", "added"});
            }
        }
    }

    void printProbed(const QList<QUuid> &ids)
    {
        printAdded(); // in the order they happened
        for (const MediaClip &clip : m_session.clips()) {
            if (ids.contains(clip.id))
                print(clip, QFileInfo::exists(clip.sourcePath()) ? Event{"cli.changed", "changed"}
                                                                 : Event{"cli.gone", "gone"});
        }
    }

private:
    void print(const MediaClip &clip, const Event &event)
    {
        QTextStream out(stdout);
        if (m_json) {
            JsonValue line = CliReport::clipJson(clip, m_strings);
            line.object().insert_or_assign(QStringLiteral("event"), QString::fromLatin1(event.raw));
            if (const Result<QByteArray> encoded = encodeJson(line))
                out << QString::fromUtf8(oneLine(*encoded)) << "\n";
        } else {
            out << CliReport::eventLine(event.key, clip, m_strings, m_colour) << "\n";
        }
        out.flush();
        std::fflush(stdout); // a pipe is block-buffered: the script reading it waits otherwise
    }

    const PackViewModel &m_session;
    bool m_json;
    const L10n &m_strings;
    bool m_colour;
    QSet<QUuid> m_known;
};

} // namespace

int run(PackViewModel &session, const QString &folder, bool json, const L10n &strings,
        const std::atomic<bool> &interrupted)
{
    QTextStream err(stderr);
    if (!QFileInfo(folder).isDir()) {
        err << "cuebox: '" << folder << "' is not a folder\n";
        return 2;
    }
    EventPrinter events(session, json, strings);
    QString lastStatus;
    QObject receiver; // the connections below end with this function
    QObject::connect(&session, &PackViewModel::statusChanged, &receiver, [&] {
        if (!session.isScanning()) // an ingest has ended: its clips are final
            events.printAdded();
        const QString status = session.status().text(strings);
        if (status != lastStatus && !status.isEmpty()) {
            err << status << "\n";
            err.flush();
        }
        lastStatus = status;
    });

    QObject::connect(&session, &PackViewModel::watchedClipsProbed, &receiver,
                     [&](const QList<QUuid> &ids) { events.printProbed(ids); });
    session.startWatching(folder);
    if (!session.watchFolder().isWatching()) {
        err << "cuebox: cannot watch '" << folder << "'\n";
        return 1;
    }
    QEventLoop loop;
    int exitCode = 0;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (interrupted) {
            exitCode = 130;
            loop.quit();
        } else if (!session.watchFolder().isWatching() && !session.isScanning()) {
            exitCode = 1; // the folder went away; the status says so
            loop.quit();
        }
    });
    poll.start(50);
    loop.exec();
    const QString endStatus = lastStatus;

    // A clean stop: no new work, and a probe under way ends with its line printed.
    session.stopWatching();
    const QDeadlineTimer patience(10'000);
    while (session.isScanning() && !patience.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    events.printAdded();
    if (exitCode == 1)
        err << "cuebox: " << endStatus << "\n";
    return exitCode;
}

} // namespace WatchVerb
