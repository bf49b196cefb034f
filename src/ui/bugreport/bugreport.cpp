#include "bugreport.h"

#include "l10n/apppreferences.h"
#include "l10n/localizationmanager.h"
#include "model/mediaclip.h"
#include "session/packviewmodel.h"
#include "session/platform.h"

#include <QFile>
#include <QSysInfo>

#ifndef CUEBOX_BUILD_NUMBER
#define CUEBOX_BUILD_NUMBER ""
#endif

namespace BugReport {

namespace {

// os-release values are shell-style: optionally quoted, with backslash escapes.
QString unquote(QString value)
{
    value = value.trimmed();
    if (value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
        value.back() == value.front())
        value = value.mid(1, value.size() - 2);
    QString out;
    out.reserve(value.size());
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] == u'\\' && i + 1 < value.size())
            ++i;
        out += value[i];
    }
    return out;
}

} // namespace

QString versionOrDefault(const QString &configured)
{
    return configured.trimmed().isEmpty() ? QStringLiteral("0.1") : configured.trimmed();
}

QString buildOrDefault(const QString &configured)
{
    return configured.trimmed().isEmpty() ? QStringLiteral("1") : configured.trimmed();
}

QString version()
{
    return versionOrDefault(QStringLiteral(CUEBOX_VERSION));
}

QString build()
{
    return buildOrDefault(QStringLiteral(CUEBOX_BUILD_NUMBER));
}

QString prettyName(const QString &osReleasePath)
{
    QFile file(osReleasePath);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(QLatin1String("PRETTY_NAME=")))
            return unquote(line.mid(12));
    }
    return {};
}

QString systemLine(const QString &prettyName, const QString &kernelRelease)
{
    return QStringLiteral("Linux: ") + prettyName + u' ' + kernelRelease;
}

QString systemLine()
{
    // The distribution's file first, then the packaged default it may only link to.
    QString name = prettyName(QStringLiteral("/etc/os-release"));
    if (name.isEmpty())
        name = prettyName(QStringLiteral("/usr/lib/os-release"));
    if (name.isEmpty())
        name = QSysInfo::prettyProductName();
    // On Linux Qt's kernel version is uname's release string.
    return systemLine(name, QSysInfo::kernelVersion());
}

QString body(const QString &prompt, const Facts &facts)
{
    const QString status = facts.status.isEmpty() ? kDashLabel : facts.status;
    return prompt + QStringLiteral("\n\n---\nCuebox ") + facts.version + QStringLiteral(" (") +
           facts.build + QStringLiteral(")\n") + facts.system + QStringLiteral("\nLanguage: ") +
           facts.languageCode + QStringLiteral("\nCompact: ") +
           (facts.compact ? QStringLiteral("yes") : QStringLiteral("no")) +
           QStringLiteral("\nClips: ") + QString::number(facts.clips) +
           QStringLiteral("\nStatus: ") + status;
}

QUrl mailUrl(const QString &address, const QString &subject, const QString &body)
{
    if (address.trimmed().isEmpty())
        return {};
    QUrl url;
    url.setScheme(QStringLiteral("mailto"));
    url.setPath(address);
    // Encoded by hand: a query builder leaves "&", "=" and "+" of free text as they are, which
    // mail programs would read as separators or spaces.
    const QByteArray query =
        "subject=" + QUrl::toPercentEncoding(subject) + "&body=" + QUrl::toPercentEncoding(body);
    url.setQuery(QString::fromLatin1(query), QUrl::StrictMode);
    return url;
}

Facts collect(const PackViewModel &viewModel, const LocalizationManager &localization,
              const AppPreferences &preferences)
{
    Facts facts;
    facts.version = version();
    facts.build = build();
    facts.system = systemLine();
    facts.languageCode = rawValue(localization.language());
    facts.compact = preferences.compactMode();
    facts.clips = viewModel.clips().size();
    facts.status = viewModel.status().text(localization.strings());
    return facts;
}

QUrl mailUrl(const PackViewModel &viewModel, const LocalizationManager &localization,
             const AppPreferences &preferences)
{
    const L10n strings = localization.strings();
    return mailUrl(
        QStringLiteral(CUEBOX_BUG_EMAIL), strings[u"bug.subject"],
        body(strings[u"bug.body.prompt"], collect(viewModel, localization, preferences)));
}

void open(const PackViewModel &viewModel, const LocalizationManager &localization,
          const AppPreferences &preferences, Desktop &desktop)
{
    const QUrl url = mailUrl(viewModel, localization, preferences);
    if (url.isValid() && !url.isEmpty())
        desktop.openUrl(url);
}

} // namespace BugReport
