#pragma once

#include <QString>
#include <QUrl>

class AppPreferences;
class Desktop;
class LocalizationManager;
class PackViewModel;

// A pre-filled bug-report e-mail handed to the user's mail program: subject and prompt in the
// interface language, then a block of facts with English labels so that we can read any report.
namespace BugReport {

QString body(const PackViewModel &viewModel, const LocalizationManager &localization,
             const AppPreferences &preferences);
QUrl mailUrl(const PackViewModel &viewModel, const LocalizationManager &localization,
             const AppPreferences &preferences);
// Opens the message; nothing happens when no mail handler takes it.
void open(const PackViewModel &viewModel, const LocalizationManager &localization,
          const AppPreferences &preferences, Desktop &desktop);

} // namespace BugReport
