// The cuebox executable. Until the window exists it answers --version and --help.
#include <QCoreApplication>
#include <QTextStream>

namespace {

const char *const kUsage =
    "Usage: cuebox [--help] [--version]\n"
    "\n"
    "Cuebox checks show media for Resolume Arena: it finds every video and still in a show\n"
    "folder, judges how safe each clip is to play live, names clips in cue order and\n"
    "exports a pack with a cue sheet and a manifest.\n"
    "\n"
    "Options:\n"
    "  -h, --help     Show this help and exit.\n"
    "  -v, --version  Show the version and exit.\n";

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Cuebox"));
    QCoreApplication::setApplicationName(QStringLiteral("Cuebox"));
    QCoreApplication::setApplicationVersion(QStringLiteral(CUEBOX_VERSION));

    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList args = app.arguments().mid(1);
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
