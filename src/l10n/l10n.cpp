#include "l10n.h"

#include <QFile>

#include <array>

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

// Built on first use; a function-local static makes concurrent first lookups safe.
const std::array<Table, kAllLanguages.size()> &tables()
{
    static const auto all = [] {
        std::array<Table, kAllLanguages.size()> result;
        for (AppLanguage language : kAllLanguages)
            result[static_cast<size_t>(language)] = loadTable(language);
        return result;
    }();
    return all;
}

const Table &tableOf(AppLanguage language)
{
    return tables()[static_cast<size_t>(language)];
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
