#include "textformat.h"

#include <charconv>
#include <cmath>

namespace {

qint64 asInteger(const FormatArg &arg)
{
    if (const auto *i = std::get_if<qint64>(&arg))
        return *i;
    if (const auto *d = std::get_if<double>(&arg))
        return std::isfinite(*d) ? static_cast<qint64>(*d) : 0;
    return std::get<QString>(arg).toLongLong();
}

double asDouble(const FormatArg &arg)
{
    if (const auto *d = std::get_if<double>(&arg))
        return *d;
    if (const auto *i = std::get_if<qint64>(&arg))
        return static_cast<double>(*i);
    return std::get<QString>(arg).toDouble();
}

QString asText(const FormatArg &arg)
{
    if (const auto *s = std::get_if<QString>(&arg))
        return *s;
    if (const auto *i = std::get_if<qint64>(&arg))
        return QString::number(*i);
    return QString::number(std::get<double>(arg));
}

QString fixed(double value, int decimals)
{
    // Rounds the binary value exactly as C's printf does ("%.0f" of 2.5 is 2, of 187.6 is 188),
    // but always with a dot: printf takes the separator from LC_NUMERIC, which Qt sets from the
    // environment, so a German desktop would read "Unusual aspect 1,33".
    char buffer[400]; // the longest fixed form of a double with a few decimals fits
    const auto [end, error] =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
    if (error != std::errc())
        return QString::number(value, 'f', decimals);
    return QString::fromLatin1(buffer, end - buffer);
}

// Calls onText for literal runs and onPlaceholder for each placeholder, in order.
template<typename OnText, typename OnPlaceholder>
void scan(const QString &templ, OnText onText, OnPlaceholder onPlaceholder)
{
    qsizetype literalStart = 0;
    qsizetype i = 0;
    const qsizetype n = templ.size();
    while (i < n) {
        if (templ[i] != u'%' || i + 1 >= n) {
            ++i;
            continue;
        }
        const QChar next = templ[i + 1];
        qsizetype end = -1;
        int decimals = -1;
        if (next == u'd' || next == u'@' || next == u'%') {
            end = i + 2;
        } else if (next == u'.') {
            qsizetype j = i + 2;
            while (j < n && templ[j].isDigit())
                ++j;
            if (j > i + 2 && j < n && templ[j] == u'f') {
                decimals = QStringView(templ).mid(i + 2, j - i - 2).toInt();
                end = j + 1;
            }
        }
        if (end < 0) { // not a placeholder we know: keep it as text
            ++i;
            continue;
        }
        onText(QStringView(templ).mid(literalStart, i - literalStart));
        if (next == u'%')
            onText(u"%");
        else
            onPlaceholder(QStringView(templ).mid(i, end - i), next, decimals);
        i = end;
        literalStart = end;
    }
    onText(QStringView(templ).mid(literalStart));
}

template<typename Args>
QString fill(const QString &templ, const Args &args)
{
    QString out;
    out.reserve(templ.size() + 16);
    auto next = std::begin(args);
    const auto last = std::end(args);
    scan(
        templ, [&](QStringView text) { out += text; },
        [&](QStringView placeholder, QChar type, int decimals) {
            if (next == last) { // more placeholders than values: leave it visible
                out += placeholder;
                return;
            }
            const FormatArg &arg = *next++;
            if (type == u'd')
                out += QString::number(asInteger(arg));
            else if (type == u'@')
                out += asText(arg);
            else
                out += fixed(asDouble(arg), decimals);
        });
    return out;
}

} // namespace

QString fillTemplate(const QString &templ, std::initializer_list<FormatArg> args)
{
    return fill(templ, args);
}

QString fillTemplate(const QString &templ, const QList<FormatArg> &args)
{
    return fill(templ, args);
}

QStringList placeholdersOf(const QString &templ)
{
    QStringList found;
    scan(
        templ, [](QStringView) {},
        [&](QStringView placeholder, QChar, int) { found.append(placeholder.toString()); });
    return found;
}
