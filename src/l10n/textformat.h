#pragma once

#include <QString>
#include <QStringList>

#include <initializer_list>
#include <variant>

// One printf-style filler for every formatted text of the app. Templates use only
// %d (integer), %@ (text), %.Nf (number with N decimals) and %% (a percent sign).
using FormatArg = std::variant<qint64, double, QString>;

QString fillTemplate(const QString &templ, std::initializer_list<FormatArg> args);
QString fillTemplate(const QString &templ, const QList<FormatArg> &args);

// The placeholders of a template in order ("%d", "%@", "%.2f"…), for checking translations.
QStringList placeholdersOf(const QString &templ);
