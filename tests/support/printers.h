#pragma once
// Readable failure messages for Qt values in every test.
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>
#include <ostream>

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList &list, std::ostream *out)
{
    *out << '[';
    for (qsizetype i = 0; i < list.size(); ++i)
        *out << (i ? ", " : "") << '"' << list[i].toStdString() << '"';
    *out << ']';
}

inline void PrintTo(const QUuid &id, std::ostream *out)
{
    *out << id.toString().toStdString();
}
