#include "l10n/l10n.h"
#include "model/clipissue.h"
#include "model/prefixtemplate.h"
#include "model/screenprofile.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

TEST(StringTables, SixTablesWithTheSameKeysInTheSameOrder)
{
    const QStringList english = L10n::keys(AppLanguage::english);
    ASSERT_GE(english.size(), 190);
    EXPECT_EQ(QSet<QString>(english.begin(), english.end()).size(), english.size());
    for (AppLanguage language : kAllLanguages) {
        SCOPED_TRACE(rawValue(language).toStdString());
        EXPECT_EQ(L10n::keys(language), english);
    }
}

TEST(StringTables, PlaceholdersMatchEnglishForEveryKey)
{
    const L10n en(AppLanguage::english);
    for (const QString &key : L10n::keys(AppLanguage::english)) {
        const QStringList expected = placeholdersOf(en[key]);
        for (AppLanguage language : kAllLanguages) {
            const QString text = L10n(language)[key];
            EXPECT_EQ(placeholdersOf(text), expected)
                << qPrintable(key) << " in " << qPrintable(rawValue(language)) << ": "
                << qPrintable(text);
            EXPECT_FALSE(text.isEmpty()) << qPrintable(key);
        }
    }
}

TEST(StringTables, ProductNameAndFixedTexts)
{
    const QStringList named{"drop.subtitle",        "panel.open.message", "sidebar.kicker",
                            "project.open.message", "bug.subject",        "convert.dxv.help"};
    for (AppLanguage language : kAllLanguages) {
        const L10n strings(language);
        for (const QString &key : named)
            EXPECT_TRUE(strings[key].contains("Cuebox", Qt::CaseInsensitive))
                << qPrintable(key) << " " << qPrintable(rawValue(language));
        EXPECT_EQ(strings[u"sidebar.kicker"], "CUEBOX");
        EXPECT_EQ(strings[u"health.unknown.short"], "\u2014");
        for (const char *p : {"concert", "club", "festival", "corporate", "wedding"})
            EXPECT_EQ(strings[QStringLiteral("prefix.") + QLatin1String(p)], QLatin1String(p));
    }
    const L10n en;
    EXPECT_EQ(en[u"scan.checking"], "Checking %d/%d: %@");
    EXPECT_EQ(en[u"drop.subtitle"],
              "Cuebox checks codec, size and fps,\nthen names files for Arena columns.");
    EXPECT_EQ(en[u"bug.body.prompt"], "What is broken? Write steps to reproduce:\n\n1.\n2.\n3.\n");
}

TEST(StringTables, LookupFallsBackToEnglishThenToTheKey)
{
    const L10n de(AppLanguage::german);
    EXPECT_NE(de[u"scan.ready"], L10n()[u"scan.ready"]);
    EXPECT_EQ(de[u"no.such.key"], "no.such.key");
    EXPECT_EQ(de.format(u"no.such.key", {qint64(3)}), "no.such.key");
}

// Every key the code names, literally or through an enumeration, has an English text.
TEST(StringTables, EveryKeyUsedInTheCodeExists)
{
    static const QRegularExpression literal(
        QStringLiteral(R"re("((?:audio|batch|bug|checklist|convert|credit|drop|header|health|)re"
                       R"re(hint|issue|menu|naming|panel|prefix|profile|project|rename|scan|)re"
                       R"re(selected|settings|sidebar|table|toolbar|watch)\.[A-Za-z0-9.]+)")re"));
    static const QRegularExpression hintId(QStringLiteral(R"(^hint\.(health|naming|selected)$)"));
    QStringList used;
    QDirIterator it(QStringLiteral(CUEBOX_SOURCE_DIR), {"*.cpp", "*.h"}, QDir::Files,
                    QDirIterator::Subdirectories);
    int files = 0;
    while (it.hasNext()) {
        QFile file(it.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        ++files;
        const QString text = QString::fromUtf8(file.readAll());
        for (const QRegularExpressionMatch &m : literal.globalMatch(text)) {
            const QString key = m.captured(1);
            // Object names (for tests and styling) may look like keys; they are never shown.
            const qsizetype lineStart = text.lastIndexOf(u'\n', m.capturedStart()) + 1;
            const QStringView before =
                QStringView(text).mid(lineStart, m.capturedStart() - lineStart);
            if (before.contains(u"ObjectName(") || before.contains(u"findChild"))
                continue;
            if (!key.endsWith(u'.') && !hintId.match(key).hasMatch())
                used.append(key);
        }
    }
    ASSERT_GT(files, 10);
    for (int i = 0; i < kIssueKindCount; ++i)
        used.append(ClipIssue::messageKey(static_cast<IssueKind>(i)));
    for (ScreenProfile profile : kAllScreenProfiles)
        used << labelKey(profile) << helpKey(profile);
    for (PrefixTemplate t : kAllPrefixTemplates)
        used.append(labelKey(t));
    for (const char *id : {"health", "audio", "dxv", "backup", "duplicates"})
        used << QStringLiteral("checklist.%1").arg(QLatin1String(id));
    for (const char *id : {"health", "audio", "backup", "duplicates"})
        used << QStringLiteral("checklist.%1.ok").arg(QLatin1String(id))
             << QStringLiteral("checklist.%1.bad").arg(QLatin1String(id));
    EXPECT_GT(used.size(), 40);
    for (const QString &key : used)
        EXPECT_TRUE(L10n::contains(AppLanguage::english, key)) << qPrintable(key);
}

// What a review found each language doing another language's way: counts that read wrong for
// 1 ("1 Warnungen"; languages with plurals write "Warnungen: %d"), the bitrate unit left in
// English, a spaced Western dash inside Japanese or Chinese sentences, and a table without its
// glossary of terms.
TEST(StringTables, EachLanguageWritesCountsUnitsAndPunctuationItsOwnWay)
{
    // A number followed by a word, except "%d / %d ready", "N из M" and units.
    static const QRegularExpression countThenWord(
        QStringLiteral(R"((?<!%d / )%d\s*(?!px|пикс\.|из )\p{L})"));
    struct Rule {
        AppLanguage language;
        const char *bitrateUnit;
        bool hasPlural;
        bool westernDash;
    };
    const Rule rules[] = {{AppLanguage::russian, "Мбит/с", true, true},
                          {AppLanguage::german, "Mbit/s", true, true},
                          {AppLanguage::spanish, "Mbps", true, true},
                          {AppLanguage::japanese, "Mbps", false, false},
                          {AppLanguage::chinese, "Mbps", false, false}};
    for (const Rule &rule : rules) {
        SCOPED_TRACE(rawValue(rule.language).toStdString());
        const L10n strings(rule.language);
        EXPECT_TRUE(strings[u"issue.bitrate"].contains(QString::fromUtf8(rule.bitrateUnit)))
            << qPrintable(strings[u"issue.bitrate"]);
        for (const QString &key : L10n::keys(rule.language)) {
            const QString text = strings[key];
            if (rule.hasPlural) {
                EXPECT_FALSE(countThenWord.match(text).hasMatch()) << qPrintable(text);
            }
            if (!rule.westernDash) {
                EXPECT_FALSE(text.contains(u" \u2014 ")) << qPrintable(text);
            }
        }
    }
    for (AppLanguage language : kAllLanguages) {
        QFile table(QStringLiteral(":/l10n/strings/%1.tsv").arg(rawValue(language)));
        ASSERT_TRUE(table.open(QIODevice::ReadOnly));
        const QString head = QString::fromUtf8(table.read(4000));
        EXPECT_TRUE(head.contains(QStringLiteral("\n# Glossary")))
            << qPrintable(rawValue(language));
    }
}
