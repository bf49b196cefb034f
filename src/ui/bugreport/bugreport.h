#pragma once

#include <QString>
#include <QUrl>

class AppPreferences;
class Desktop;
class LocalizationManager;
class PackViewModel;

// The bug-report e-mail handed to the user's mail program: subject and prompt in the interface
// language, then a block of facts whose labels stay English so that we can read every report.
// The menu, the toolbar and anything else that offers a bug report go through open().
namespace BugReport {

struct Facts {
    QString version;
    QString build;
    QString system; // the whole system line, "Linux: …"
    QString languageCode;
    bool compact = false;
    qint64 clips = 0;
    QString status; // already rendered in the interface language; empty when there is none
};

// The configured version and build number, or "0.1" and "1" when the build left them empty.
QString versionOrDefault(const QString &configured);
QString buildOrDefault(const QString &configured);
QString version();
QString build();

// PRETTY_NAME of an os-release file, unquoted and unescaped; empty when absent or unreadable.
QString prettyName(const QString &osReleasePath);
// "Linux: " + the distribution's pretty name + " " + the kernel release.
QString systemLine(const QString &prettyName, const QString &kernelRelease);
QString systemLine();

QString body(const QString &prompt, const Facts &facts);
// mailto:<address>?subject=…&body=…, both values percent-encoded in full.
QUrl mailUrl(const QString &address, const QString &subject, const QString &body);

Facts collect(const PackViewModel &viewModel, const LocalizationManager &localization,
              const AppPreferences &preferences);
// The whole message for the session as it is now, to the configured address.
QUrl mailUrl(const PackViewModel &viewModel, const LocalizationManager &localization,
             const AppPreferences &preferences);
// Hands the message to the mail program. Reports nothing: when no URL can be formed, nothing
// happens, and the session is never touched.
void open(const PackViewModel &viewModel, const LocalizationManager &localization,
          const AppPreferences &preferences, Desktop &desktop);

} // namespace BugReport
