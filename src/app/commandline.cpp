#include "commandline.h"

#include <QTextStream>

namespace CommandLine {

namespace {

const char *const kUsage =
    "Usage: cuebox [--help] [--version] [FOLDER...]\n"
    "\n"
    "Cuebox checks show media for Resolume Arena: it finds every video and still in a show\n"
    "folder, judges how safe each clip is to play live, names clips in cue order and\n"
    "exports a pack with a cue sheet and a manifest.\n"
    "\n"
    "Without arguments, or with folders and files, Cuebox opens its window.\n"
    "\n"
    "Options:\n"
    "  -h, --help     Show this help and exit.\n"
    "  -v, --version  Show the version and exit.\n";

} // namespace

bool wants(const QStringList &args)
{
    return !args.isEmpty() && args.front().startsWith(u'-');
}

int run(const QStringList &args)
{
    QTextStream out(stdout);
    QTextStream err(stderr);
    for (const QString &arg : args) {
        if (arg == u"--version" || arg == u"-v") {
            out << "cuebox " << CUEBOX_VERSION << "\n";
            return 0;
        }
        if (arg == u"--help" || arg == u"-h") {
            out << kUsage;
            return 0;
        }
        err << "cuebox: unknown argument '" << arg << "'\n\n" << kUsage;
        return 2;
    }
    out << kUsage;
    return 0;
}

} // namespace CommandLine
