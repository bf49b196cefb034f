#include "commandline.h"

#include "cliarguments.h"
#include "clireport.h"
#include "l10n/apppreferences.h"
#include "l10n/localizationmanager.h"
#include "media/mediamodule.h"
#include "output/jsonwriter.h"
#include "session/packviewmodel.h"
#include "session/platform.h"
#include "session/transparencyloss.h"
#include "watchverb.h"

#include <QCoroTask>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

#include <atomic>
#include <csignal>
#include <cstdio>

#include <unistd.h>

namespace CommandLine {

namespace {

using Verb = CliArguments::Verb;

std::atomic<bool> g_interrupted{false};

void onInterrupt(int)
{
    g_interrupted = true;
}

// The panels a verb would have shown, answered from its arguments.
class ArgumentPanels final : public Panels
{
public:
    explicit ArgumentPanels(const CliArguments &args) : m_args(args) {}
    QList<QUrl> openMedia(const QString &, const QString &) override { return {}; }
    std::optional<QString> chooseFolder(const QString &, const QString &,
                                        const std::optional<QString> &) override
    {
        return m_args.to;
    }
    std::optional<QString> chooseSaveFile(const QString &, const QString &, const QString &,
                                          const std::optional<QString> &) override
    {
        return m_args.saveProject;
    }
    std::optional<QString> chooseOpenFile(const QString &, const QString &) override
    {
        return m_args.project;
    }

private:
    const CliArguments &m_args;
};

// A script on a server has no file manager to show folders in.
class QuietDesktop final : public Desktop
{
public:
    void reveal(const QString &) override {}
    void openWithApplication(const QStringList &, const QString &) override {}
    void openUrl(const QUrl &) override {}
};

bool isTerminal(FILE *stream)
{
    return ::isatty(::fileno(stream)) == 1;
}

int usageError(const QString &message, const QString &verb)
{
    QTextStream err(stderr);
    err << "cuebox: " << message << "\n";
    err << "Run 'cuebox " << (verb.isEmpty() ? QString() : verb + u' ') << "--help' for usage.\n";
    return 2;
}

// One line per change of the status on stderr: rewritten in place on a terminal, one line
// per step when piped.
class ProgressPrinter
{
public:
    ProgressPrinter(PackViewModel &session, const L10n &strings)
        : m_session(session), m_strings(strings), m_terminal(isTerminal(stderr))
    {
        m_timer.setInterval(m_terminal ? 100 : 500);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { print(); });
        m_timer.start();
    }
    ~ProgressPrinter()
    {
        if (m_terminal && !m_last.isEmpty())
            std::fputs("\r\x1b[2K", stderr);
    }

private:
    void print()
    {
        const PackStatus &status = m_session.status();
        double fraction = -1;
        if (status.kind() == PackStatus::Kind::converting)
            fraction = m_session.convertProgress();
        else if (status.kind() == PackStatus::Kind::exporting)
            fraction = m_session.exportProgress();
        else if (status.kind() == PackStatus::Kind::verifying)
            fraction = m_session.verifyProgress();
        QString line = status.text(m_strings);
        if (fraction >= 0) {
            const int filled = int(fraction * 24 + 0.5);
            line = QStringLiteral("[%1%2] %3% %4")
                       .arg(QString(filled, u'#'), QString(24 - filled, u'-'))
                       .arg(int(fraction * 100 + 0.5), 3)
                       .arg(line);
            if (m_started.isValid() && fraction > 0.01) {
                const qint64 left = qint64(m_started.elapsed() * (1 - fraction) / fraction / 1000);
                line += QStringLiteral("  ~%1:%2 left")
                            .arg(left / 60)
                            .arg(left % 60, 2, 10, QChar(u'0'));
            }
            if (!m_started.isValid())
                m_started.start();
        }
        if (line == m_last || line.isEmpty())
            return;
        if (m_terminal) {
            std::fputs(("\r\x1b[2K" + line.left(160)).toLocal8Bit().constData(), stderr);
        } else if (status.kind() != m_lastKind || status.index() != m_lastIndex) {
            std::fputs((status.text(m_strings) + u'\n').toLocal8Bit().constData(), stderr);
        }
        m_lastKind = status.kind();
        m_lastIndex = status.index();
        m_last = line;
    }

    PackViewModel &m_session;
    const L10n &m_strings;
    bool m_terminal;
    QTimer m_timer;
    QElapsedTimer m_started;
    QString m_last;
    PackStatus::Kind m_lastKind = PackStatus::Kind::idle;
    qint64 m_lastIndex = -1;
};

// The private preferences live in memory where the system has a memory file system: every change
// of a preference is synced to disk, and on a laptop's disk the syncs of one start-up cost more
// than checking a hundred clips.
QString privateStoreTemplate()
{
    const QFileInfo shm(QStringLiteral("/dev/shm"));
    const QString base = shm.isDir() && shm.isWritable() ? shm.filePath() : QDir::tempPath();
    return base + QStringLiteral("/cuebox-cli-XXXXXX");
}

// A verb that ends on one of these statuses did not do its work: "No media files found",
// "Add clips first" or an error's own text.
bool endsInFailure(const PackStatus &status)
{
    const PackStatus::Kind kind = status.kind();
    return status.isFailure() || kind == PackStatus::Kind::empty ||
           kind == PackStatus::Kind::addFirst;
}

int failIfError(const PackViewModel &session, const L10n &strings)
{
    if (!endsInFailure(session.status()))
        return 0;
    QTextStream(stderr) << "cuebox: " << session.status().text(strings) << "\n";
    return 1;
}

// From here on Ctrl-C cancels the running operation cleanly instead of ending the process.
std::unique_ptr<QTimer> watchInterrupts(PackViewModel &session)
{
    std::signal(SIGINT, onInterrupt);
    std::signal(SIGTERM, onInterrupt);
    auto timer = std::make_unique<QTimer>();
    QObject::connect(timer.get(), &QTimer::timeout, [&session] {
        if (g_interrupted) {
            session.cancelConversion();
            session.cancelExport();
            session.cancelVerify();
        }
    });
    timer->start(50);
    return timer;
}

// One line per problem on stdout, then the summary; the exit status says whether it passed.
int runVerify(PackViewModel &session, const QString &folder, const L10n &strings)
{
    {
        ProgressPrinter progress(session, strings);
        QCoro::waitFor(session.verifyPackAt(QFileInfo(folder).absoluteFilePath()));
    }
    if (g_interrupted)
        return 130;
    if (session.status().kind() == PackStatus::Kind::noChecksums) {
        QTextStream(stderr) << "cuebox: " << session.status().text(strings) << "\n";
        return 2;
    }
    const std::optional<PackVerifier::Report> &report = session.lastVerifyReport();
    if (!report)
        return failIfError(session, strings);
    QTextStream out(stdout);
    for (const PackVerifier::Finding &finding : report->findings)
        out << strings.format(PackVerifier::problemKey(finding.problem), {finding.path}) << "\n";
    out << strings.format(u"cli.verify.summary", {report->checked, qint64(report->findings.size())})
        << "\n";
    return report->passed() ? 0 : 1;
}

// The command line's options, applied over the session's defaults and again over a project's
// settings: what is given here wins.
void applyOptions(const CliArguments &args, PackViewModel &session)
{
    if (args.audioWarning)
        session.setWarnOnEmbeddedAudio(*args.audioWarning);
    if (args.hevcWarning)
        session.setWarnOnHEVC(*args.hevcWarning);
    if (args.profile)
        session.setScreenProfile(*args.profile);
    if (args.zeroPad)
        session.setZeroPad(*args.zeroPad);
    if (args.prefix)
        session.setShowPrefix(*args.prefix);
    if (args.format) {
        if (const auto format = arenaConvertFormatFromRaw(*args.format))
            session.setConvertFormat(*format);
    }
    if (args.keepAudio)
        session.setStripAudioOnConvert(!*args.keepAudio);
    if (args.even)
        session.setForceEvenDimensions(*args.even);
}

// Options given with --project win over the project's values: applied again once it is
// loaded, the clips judged again under given risk options and renamed under a given prefix.
void applyProjectOverrides(const CliArguments &args, PackViewModel &session)
{
    applyOptions(args, session);
    if (args.profile) { // setScreenProfile has started a re-inspection; wait for its end
        QEventLoop loop;
        QObject::connect(&session, &PackViewModel::isScanningChanged, &loop, [&] {
            if (!session.isScanning())
                loop.quit();
        });
        if (session.isScanning())
            loop.exec();
    } else if (args.audioWarning || args.hevcWarning) {
        QCoro::waitFor(session.reinspectAll());
    }
    if (args.prefix || args.zeroPad)
        session.renameAll();
}

int runAction(const CliArguments &args, PackViewModel &session, const L10n &strings);

int runVerb(const CliArguments &args)
{
    // The command line keeps its own preferences: a --lang or --no-backup here never changes
    // what the window shows the next time.
    QTemporaryDir privateStore(privateStoreTemplate());
    QSettings settings(privateStore.filePath(QStringLiteral("cli.conf")), QSettings::IniFormat);
    LocalizationManager localization(settings);
    localization.setLanguage(args.language);
    AppPreferences preferences(settings);
    preferences.setAutoBackupBeforeConvert(args.backup);
    preferences.setVerifyCopies(args.verifyCopies);
    const L10n strings = localization.strings();

    ArgumentPanels panels(args);
    QuietDesktop desktop;
    PackViewModel::Services services;
    services.probe = MediaModule::deferredProbe();
    services.conversion = MediaModule::deferredConversion();
    services.panels = &panels;
    services.desktop = &desktop;
    services.localization = &localization;
    services.preferences = &preferences;
    PackViewModel session(services);
    applyOptions(args, session);

    for (const QString &path : args.paths) {
        if (!QFileInfo::exists(path))
            return usageError(QStringLiteral("no such file or folder '%1'").arg(path), {});
    }
    if (args.verb == Verb::verify) { // nothing to ingest: the folder is checked as it lies
        const auto watch = watchInterrupts(session);
        return runVerify(session, args.paths.front(), strings);
    }
    if (args.verb == Verb::watch) {
        std::signal(SIGINT, onInterrupt);
        std::signal(SIGTERM, onInterrupt);
        return WatchVerb::run(session, QFileInfo(args.paths.front()).absoluteFilePath(), args.json,
                              strings, g_interrupted);
    }
    {
        ProgressPrinter progress(session, strings);
        if (args.project) {
            QCoro::waitFor(session.loadProject(*args.project));
            if (!endsInFailure(session.status()))
                applyProjectOverrides(args, session);
        } else {
            QList<QUrl> urls;
            for (const QString &path : args.paths)
                urls.append(QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()));
            QCoro::waitFor(session.ingest(urls));
        }
    }
    if (const int failed = failIfError(session, strings))
        return failed;
    const int code = runAction(args, session, strings);
    // Saved after the verb, so that a converted or stripped pack reopens with its new files;
    // a verb that failed or was interrupted saves nothing.
    if (args.saveProject && code != 130 && !endsInFailure(session.status())) {
        session.saveProject();
        if (const int failed = failIfError(session, strings))
            return failed;
    }
    return code;
}

int runAction(const CliArguments &args, PackViewModel &session, const L10n &strings)
{
    QTextStream out(stdout);
    const auto watch = watchInterrupts(session);
    switch (args.verb) {
    case Verb::check: {
        if (args.json) {
            out << *encodeJson(CliReport::json(session.clips(), session.checklist(),
                                               session.status(), strings))
                << "\n";
        } else {
            out << CliReport::text(session.clips(), session.checklist(), strings,
                                   isTerminal(stdout));
        }
        const bool anyRed =
            std::any_of(session.clips().cbegin(), session.clips().cend(),
                        [](const MediaClip &c) { return c.health() == ClipHealth::fail; });
        return anyRed ? 1 : 0;
    }
    case Verb::exportPack: {
        {
            ProgressPrinter progress(session, strings);
            QCoro::waitFor(session.exportPack(args.to));
        }
        if (g_interrupted)
            return 130;
        if (const int failed = failIfError(session, strings))
            return failed;
        if (session.lastExportURL())
            out << session.lastExportURL()->toLocalFile() << "\n";
        return 0;
    }
    case Verb::convert: {
        QDir().mkpath(*args.to);
        // Said before the run, which goes ahead all the same.
        if (const qint64 losing = clipsLosingTransparency(session.clips(), session.convertFormat(),
                                                          args.onlyProblems))
            QTextStream(stderr) << strings.format(u"convert.alphaLoss", {losing}) << "\n";
        {
            ProgressPrinter progress(session, strings);
            QCoro::waitFor(session.convertPack(args.onlyProblems));
        }
        if (g_interrupted)
            return 130;
        if (const int failed = failIfError(session, strings))
            return failed;
        QTextStream(stderr) << session.status().text(strings) << "\n";
        if (session.lastExportURL())
            out << session.lastExportURL()->toLocalFile() << "\n";
        return 0;
    }
    case Verb::stripAudio: {
        {
            ProgressPrinter progress(session, strings);
            QCoro::waitFor(session.stripAudioFromAll());
        }
        if (g_interrupted)
            return 130;
        if (const int failed = failIfError(session, strings))
            return failed;
        QTextStream(stderr) << session.status().text(strings) << "\n";
        if (args.to) {
            {
                ProgressPrinter progress(session, strings);
                QCoro::waitFor(session.exportPack(args.to));
            }
            if (const int failed = failIfError(session, strings))
                return failed;
            if (session.lastExportURL())
                out << session.lastExportURL()->toLocalFile() << "\n";
        }
        return 0;
    }
    case Verb::help:
    case Verb::version:
    case Verb::verify:
    case Verb::watch:
        break;
    }
    return 0;
}

} // namespace

bool wants(const QStringList &args)
{
    if (args.isEmpty())
        return false;
    // The window takes folders and files to add; anything else is for the command line, which
    // names a mistyped verb or a missing path instead of opening an empty window.
    for (const QString &arg : args) {
        if (arg.startsWith(u'-') || !QFileInfo::exists(arg))
            return true;
    }
    const QString &first = args.front();
    return first == u"check" || first == u"export" || first == u"convert" ||
           first == u"strip-audio" || first == u"verify" || first == u"watch";
}

int run(const QStringList &args)
{
    const CliParse parse = parseCli(args);
    if (!parse.arguments)
        return usageError(parse.usageError, args.isEmpty() ? QString() : args.front());
    const CliArguments &parsed = *parse.arguments;
    if (parsed.verb == Verb::version) {
        QTextStream(stdout) << "cuebox " << CUEBOX_VERSION << "\n";
        return 0;
    }
    if (parsed.verb == Verb::help) {
        QTextStream(stdout) << cliUsage(parsed.helpFor);
        return 0;
    }
    return runVerb(parsed);
}

} // namespace CommandLine
