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
    ScreenProfile profile = ScreenProfile::landscape169;
    bool audioWarning = true;
    bool hevcWarning = true;
    std::optional<QString> prefix;
    bool zeroPad = true;
    AppLanguage language = AppLanguage::english;
    std::optional<QString> project;
    std::optional<QString> saveProject;
    bool json = false;
    std::optional<QString> to;
    QString format = QStringLiteral("proRes422");
    bool onlyProblems = false;
    bool keepAudio = false;
    bool even = true;
    bool backup = true;
    bool verifyCopies = true; // --no-verify: copies are not read back
};

struct CliParse {
    std::optional<CliArguments> arguments;
    QString usageError; // set when arguments is empty
};

CliParse parseCli(const QStringList &args);
QString cliUsage(const QString &verb); // the help text of the program or of one verb
