#include "cliarguments.h"

#include "media/convert/convertformat.h"

namespace {

using Verb = CliArguments::Verb;

std::optional<Verb> verbOf(const QString &word)
{
    if (word == u"check")
        return Verb::check;
    if (word == u"export")
        return Verb::exportPack;
    if (word == u"convert")
        return Verb::convert;
    if (word == u"strip-audio")
        return Verb::stripAudio;
    if (word == u"verify")
        return Verb::verify;
    if (word == u"watch")
        return Verb::watch;
    return std::nullopt;
}

const char *const kVerifyOption =
    "  --no-verify            Do not read the copies back from the drive to compare them.\n";

// UTF-8, like every source file: the ellipses below are not Latin-1.
const char *const kCheckOptions =
    "  --profile landscape169|ledWall|vertical   Stage screen the risk rules judge for.\n"
    "  --no-audio-warning     Do not flag embedded audio.\n"
    "  --no-hevc-warning      Do not flag HEVC/H.265, VP9 and AV1 as heavy.\n"
    "  --prefix TEXT          Show prefix for Arena names (01_TEXT_intro).\n"
    "  --no-zero-pad          Number cues 1, 2… instead of 01, 02….\n"
    "  --lang en|ru|zh-Hans|ja|de|es   Language of messages and headings.\n"
    "  --project FILE         Load a saved project instead of paths; options given here win\n"
    "                         over its settings.\n"
    "  --save-project FILE    Save the pack as a project file once the verb is done.\n";

} // namespace

QString cliUsage(const QString &verb)
{
    QString text;
    if (verb == u"check") {
        text = QStringLiteral(
                   "Usage: cuebox check [options] PATH...\n\n"
                   "Checks every video and still below PATH and prints one row per "
                   "clip,\nthe pre-show checklist and the pack report.\n"
                   "Exit status: 0 no red clip, 1 at least one red clip or no "
                   "media, 2 usage error.\n\nOptions:\n  --json                 Print one JSON "
                   "document instead.\n") +
               QString::fromUtf8(kCheckOptions);
    } else if (verb == u"export") {
        text = QStringLiteral("Usage: cuebox export [options] PATH... --to DIR\n\n"
                              "Writes the pack folder (media/, cues.csv, manifest.json, "
                              "README.txt) into DIR\nand prints its path.\n\nOptions:\n"
                              "  --to DIR               Folder the pack folder is made in.\n") +
               QString::fromUtf8(kVerifyOption) + QString::fromUtf8(kCheckOptions);
    } else if (verb == u"convert") {
        text = QStringLiteral(
                   "Usage: cuebox convert [options] PATH... --to DIR\n\n"
                   "Converts the pack into an ArenaReady_ folder in DIR, backing up the "
                   "originals\ninto an ArenaBackup_ folder beside it. Ctrl-C cancels cleanly.\n\n"
                   "Options:\n"
                   "  --to DIR               Folder the ArenaReady_ folder is made in.\n"
                   "  --format FORMAT        Target format: proRes422 (the default),\n"
                   "                         proRes422LT, h264, or the GPU codecs hap,\n"
                   "                         hapAlpha, hapQ (sizes cropped to multiples of "
                   "4).\n"
                   "                         Clips with transparency keep it, except in "
                   "h264.\n"
                   "  --only-problems        Convert only yellow and red clips.\n"
                   "  --keep-audio           Keep the first audio track.\n"
                   "  --no-even              Keep odd pixel sizes of stills.\n"
                   "  --no-backup            Do not back up the originals first.\n") +
               QString::fromUtf8(kVerifyOption) + QString::fromUtf8(kCheckOptions);
    } else if (verb == u"strip-audio") {
        text = QStringLiteral("Usage: cuebox strip-audio [options] PATH... [--to DIR]\n\n"
                              "Re-encodes every video with audio without it. With --to, the "
                              "pack is then\nexported into DIR.\n\nOptions:\n") +
               QString::fromUtf8(kVerifyOption) + QString::fromUtf8(kCheckOptions);
    } else if (verb == u"verify") {
        text = QStringLiteral(
            "Usage: cuebox verify [--lang LANG] FOLDER\n\n"
            "Reads every file listed in FOLDER/checksums.sha256 (a pack or a backup) back\n"
            "from the drive, several at once, and prints one line per file that is missing,\n"
            "differs or cannot be read, and per file in media/ that the list does not name;\n"
            "then a summary.\n"
            "Exit status: 0 everything matches, 1 a problem was found, 2 no checksum file\n"
            "or a usage error.\n");
    } else if (verb == u"watch") {
        text = QStringLiteral("Usage: cuebox watch [options] FOLDER\n\n"
                              "Adds the media in FOLDER and its sub-folders, then follows it: "
                              "a file joins\nonce it is completely written, a replaced file is "
                              "checked again, a deleted one\nturns red. Prints one line per clip "
                              "as it is added, changed or gone, until\nCtrl-C (exit status "
                              "130).\n\nOptions:\n  --json                 One JSON object "
                              "per line, with an \"event\" field.\n") +
               QString::fromUtf8(kCheckOptions);
    } else {
        text = QStringLiteral(
            "Usage: cuebox [FOLDER...]\n"
            "       cuebox check|export|convert|strip-audio|verify|watch [options] PATH...\n"
            "       cuebox --help | --version | VERB --help\n\n"
            "Cuebox checks show media for Resolume Arena: it finds every video and still in a "
            "show\nfolder, judges how safe each clip is to play live, names clips in cue order "
            "and\nexports a pack with a cue sheet and a manifest.\n\n"
            "Without a verb, Cuebox opens its window (with FOLDERs added to the pack).\n\n"
            "Verbs:\n"
            "  check        Print the verdict of every clip, the checklist and the report.\n"
            "  export       Export the pack folder.\n"
            "  convert      Convert clips to Arena-friendly files, with a backup.\n"
            "  strip-audio  Re-encode videos without their audio.\n"
            "  verify       Check a pack folder against its checksums.sha256.\n"
            "  watch        Follow a drop folder and report clips as they arrive.\n\n"
            "Options:\n"
            "  -h, --help     Show this help (or a verb's help) and exit.\n"
            "  -v, --version  Show the version and exit.\n");
    }
    return text;
}

CliParse parseCli(const QStringList &args)
{
    CliArguments parsed;
    if (args.isEmpty())
        return {parsed, {}};
    const QString first = args.front();
    if (first == u"--version" || first == u"-v") {
        parsed.verb = Verb::version;
        return {parsed, {}};
    }
    if (first == u"--help" || first == u"-h") {
        return {parsed, {}};
    }
    const std::optional<Verb> verb = verbOf(first);
    if (!verb)
        return {std::nullopt, QStringLiteral("unknown verb or option '%1'").arg(first)};
    parsed.verb = *verb;

    for (qsizetype i = 1; i < args.size(); ++i) {
        const QString &arg = args[i];
        const auto value = [&](QString &out) {
            if (i + 1 >= args.size())
                return false;
            out = args[++i];
            return true;
        };
        QString v;
        if (arg == u"--help" || arg == u"-h") {
            parsed.helpFor = first;
            parsed.verb = Verb::help;
            return {parsed, {}};
        } else if (arg == u"--profile") {
            if (!value(v) || !screenProfileFromRaw(v))
                return {std::nullopt, QStringLiteral("--profile needs landscape169, ledWall or "
                                                     "vertical, not '%1'")
                                          .arg(v)};
            parsed.profile = *screenProfileFromRaw(v);
        } else if (arg == u"--no-audio-warning") {
            parsed.audioWarning = false;
        } else if (arg == u"--no-hevc-warning") {
            parsed.hevcWarning = false;
        } else if (arg == u"--prefix") {
            if (!value(v))
                return {std::nullopt, QStringLiteral("--prefix needs a text")};
            parsed.prefix = v;
        } else if (arg == u"--no-zero-pad") {
            parsed.zeroPad = false;
        } else if (arg == u"--lang") {
            if (!value(v) || !appLanguageFromRaw(v))
                return {
                    std::nullopt,
                    QStringLiteral("--lang needs en, ru, zh-Hans, ja, de or es, not '%1'").arg(v)};
            parsed.language = *appLanguageFromRaw(v);
        } else if (arg == u"--project") {
            if (!value(v))
                return {std::nullopt, QStringLiteral("--project needs a file")};
            parsed.project = v;
        } else if (arg == u"--save-project") {
            if (!value(v))
                return {std::nullopt, QStringLiteral("--save-project needs a file")};
            parsed.saveProject = v;
        } else if (arg == u"--json" && (parsed.verb == Verb::check || parsed.verb == Verb::watch)) {
            parsed.json = true;
        } else if (arg == u"--to" && parsed.verb != Verb::check && parsed.verb != Verb::watch) {
            if (!value(v))
                return {std::nullopt, QStringLiteral("--to needs a folder")};
            parsed.to = v;
        } else if (arg == u"--format" && parsed.verb == Verb::convert) {
            if (!value(v) || !arenaConvertFormatFromRaw(v))
                return {std::nullopt, QStringLiteral("--format needs proRes422, proRes422LT, "
                                                     "h264, hap, hapAlpha or hapQ, not '%1'")
                                          .arg(v)};
            parsed.format = v;
        } else if (arg == u"--only-problems" && parsed.verb == Verb::convert) {
            parsed.onlyProblems = true;
        } else if (arg == u"--keep-audio" && parsed.verb == Verb::convert) {
            parsed.keepAudio = true;
        } else if (arg == u"--no-even" && parsed.verb == Verb::convert) {
            parsed.even = false;
        } else if (arg == u"--no-backup" && parsed.verb == Verb::convert) {
            parsed.backup = false;
        } else if (arg == u"--no-verify" && parsed.verb != Verb::check &&
                   parsed.verb != Verb::verify) {
            parsed.verifyCopies = false;
        } else if (arg.startsWith(u'-') && arg != u"-") {
            return {std::nullopt, QStringLiteral("unknown option '%1' for %2").arg(arg, first)};
        } else {
            parsed.paths.append(arg);
        }
    }
    if (parsed.verb == Verb::verify && (parsed.paths.size() != 1 || parsed.project))
        return {std::nullopt, QStringLiteral("verify needs exactly one FOLDER")};
    if (parsed.paths.isEmpty() && !parsed.project)
        return {std::nullopt,
                QStringLiteral("%1 needs at least one PATH (or --project FILE)").arg(first)};
    if (parsed.verb == Verb::watch && (parsed.paths.size() != 1 || parsed.project))
        return {std::nullopt, QStringLiteral("watch needs exactly one FOLDER")};
    if ((parsed.verb == Verb::exportPack || parsed.verb == Verb::convert) && !parsed.to)
        return {std::nullopt, QStringLiteral("%1 needs --to DIR").arg(first)};
    return {parsed, {}};
}
