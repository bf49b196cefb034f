#pragma once

#include "l10n/applanguage.h"
#include "model/screenprofile.h"

#include <QString>
#include <QStringList>

#include <optional>

// What a command-line verb was asked to do. Parsing never exits; a usage error carries the
// message that names the bad argument.
struct CliArguments {
    enum class Verb { help, version, check, exportPack, convert, stripAudio, verify, watch };
    Verb verb = Verb::help;
    QString helpFor; // the verb whose help was asked for
    QStringList paths;
    // Settings a project file also carries are empty unless given, so that a given option wins
    // over the project's value and an absent one leaves it.
    std::optional<ScreenProfile> profile;
    std::optional<bool> audioWarning;
    std::optional<bool> hevcWarning;
    std::optional<QString> prefix;
    std::optional<bool> zeroPad;
    AppLanguage language = AppLanguage::english;
    std::optional<QString> project;
    std::optional<QString> saveProject;
    bool json = false;
    std::optional<QString> to;
    std::optional<QString> format;
    bool onlyProblems = false;
    std::optional<bool> keepAudio;
    std::optional<bool> even;
    bool backup = true;
    bool verifyCopies = true; // --no-verify: copies are not read back
};

struct CliParse {
    std::optional<CliArguments> arguments;
    QString usageError; // set when arguments is empty
};

CliParse parseCli(const QStringList &args);
QString cliUsage(const QString &verb); // the help text of the program or of one verb
