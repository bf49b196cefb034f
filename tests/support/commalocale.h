#pragma once

#include <QProcess>
#include <QString>

// A German locale (decimal comma) compiled into `dir` for LOCPATH, since a build machine often
// has no locale but C installed. Empty when localedef cannot make it: callers skip.
inline QString makeCommaLocale(const QString &dir)
{
    const QString name = QStringLiteral("de_DE.UTF-8");
    QProcess localedef;
    localedef.start(QStringLiteral("localedef"), {"-i", "de_DE", "-f", "UTF-8", dir + u'/' + name});
    if (!localedef.waitForFinished(60000) || localedef.exitStatus() != QProcess::NormalExit ||
        localedef.exitCode() != 0)
        return {};
    return name;
}
