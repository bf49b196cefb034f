#pragma once

#include <QString>
#include <QUrl>

class AppPreferences;
class Desktop;
class LocalizationManager;
class PackViewModel;

// The bug-report e-mail: subject and prompt in the interface language, then a block of facts
// whose labels stay English so that we can read every report.
namespace BugMail {

struct Facts {
    QString version;
    QString build;
    QString system; // the whole system line, "Linux: …"
    QString languageCode;
    bool compact = false;
    qint64 clips = 0;
    QString status; // already rendered; empty when there is none
};

// "Linux: " + the distribution's PRETTY_NAME + " " + the kernel release.
QString systemLine();
// PRETTY_NAME of an os-release file, unquoted and unescaped; empty when absent.
QString prettyName(const QString &osReleasePath);

QString body(const QString &prompt, const Facts &facts);
// mailto:<address>?subject=…&body=…, both values percent-encoded in full.
QUrl mailUrl(const QString &address, const QString &subject, const QString &body);

Facts collect(const PackViewModel &viewModel, const LocalizationManager &localization,
              const AppPreferences &preferences);
QUrl mailUrl(const PackViewModel &viewModel, const LocalizationManager &localization,
             const AppPreferences &preferences);
// Hands the message to the mail program; nothing happens when no URL can be formed.
void open(const PackViewModel &viewModel, const LocalizationManager &localization,
          const AppPreferences &preferences, Desktop &desktop);

} // namespace BugMail
