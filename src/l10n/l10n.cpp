#include "l10n.h"

#include <QFile>

#include <array>
#include <mutex>

namespace {

struct Table {
    QStringList order;
    QHash<QString, QString> texts;
};

QString unescape(QStringView text)
{
    QString out;
    out.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        const QChar next = text[++i];
        if (next == u'n')
            out += u'\n';
        else if (next == u't')
            out += u'\t';
        else
            out += next; // "\\" and any other escaped character stand for themselves
    }
    return out;
}

Table loadTable(AppLanguage language)
{
    Table table;
    QFile file(QStringLiteral(":/l10n/strings/%1.tsv").arg(rawValue(language)));
    if (!file.open(QIODevice::ReadOnly))
        return table;
    const QString content = QString::fromUtf8(file.readAll());
    for (QStringView line : QStringView(content).split(u'\n')) {
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        const qsizetype tab = line.indexOf(u'\t');
        if (tab <= 0)
            continue;
        const QString key = line.left(tab).toString();
        if (!table.texts.contains(key))
            table.order.append(key);
        table.texts.insert(key, unescape(line.mid(tab + 1)));
    }
    return table;
}

// Each table is read on its first use: a command-line run needs English and at most one other,
// and reading all six was a measurable part of its start. call_once keeps concurrent first
// lookups safe.
const Table &tableOf(AppLanguage language)
{
    static std::array<Table, kAllLanguages.size()> tables;
    static std::array<std::once_flag, kAllLanguages.size()> loaded;
    const auto index = static_cast<size_t>(language);
    std::call_once(loaded[index], [&] { tables[index] = loadTable(language); });
    return tables[index];
}

} // namespace

QString L10n::operator[](QStringView key) const
{
    const QString k = key.toString();
    auto it = tableOf(m_language).texts.constFind(k);
    if (it != tableOf(m_language).texts.constEnd())
        return *it;
    it = tableOf(AppLanguage::english).texts.constFind(k);
    if (it != tableOf(AppLanguage::english).texts.constEnd())
        return *it;
    return k;
}

QString L10n::format(QStringView key, std::initializer_list<FormatArg> args) const
{
    return fillTemplate((*this)[key], args);
}

QStringList L10n::keys(AppLanguage language)
{
    return tableOf(language).order;
}

bool L10n::contains(AppLanguage language, QStringView key)
{
    return tableOf(language).texts.contains(key.toString());
}
