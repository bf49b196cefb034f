#include "bugreport.h"

#include "l10n/apppreferences.h"
#include "l10n/localizationmanager.h"
#include "model/mediaclip.h"
#include "session/packviewmodel.h"
#include "session/platform.h"

#include <QSysInfo>
#include <QUrlQuery>

namespace BugReport {

namespace {
const QString kBuild = QStringLiteral("1");
}

QString body(const PackViewModel &viewModel, const LocalizationManager &localization,
             const AppPreferences &preferences)
{
    const L10n strings = localization.strings();
    QString status = viewModel.statusText();
    if (status.isEmpty())
        status = kDashLabel;
    QString text = strings[u"bug.body.prompt"];
    text += QStringLiteral("\n\n---\nCuebox %1 (%2)\nLinux: %3\nLanguage: %4\nCompact: %5"
                           "\nClips: %6\nStatus: %7")
                .arg(QStringLiteral(CUEBOX_VERSION), kBuild, QSysInfo::prettyProductName(),
                     rawValue(localization.language()),
                     preferences.compactMode() ? QStringLiteral("yes") : QStringLiteral("no"),
                     QString::number(viewModel.clips().size()), status);
    return text;
}

QUrl mailUrl(const PackViewModel &viewModel, const LocalizationManager &localization,
             const AppPreferences &preferences)
{
    QUrl url;
    url.setScheme(QStringLiteral("mailto"));
    url.setPath(QStringLiteral(CUEBOX_BUG_EMAIL));
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("subject"), localization.strings()[u"bug.subject"]);
    query.addQueryItem(QStringLiteral("body"), body(viewModel, localization, preferences));
    url.setQuery(query);
    return url;
}

void open(const PackViewModel &viewModel, const LocalizationManager &localization,
          const AppPreferences &preferences, Desktop &desktop)
{
    const QUrl url = mailUrl(viewModel, localization, preferences);
    if (url.isValid())
        desktop.openUrl(url);
}

} // namespace BugReport
