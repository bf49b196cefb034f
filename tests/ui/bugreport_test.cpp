// The bug-report mail: its exact text, its exact URL, and the same mail from the menu and the
// toolbar.
#include "uifixture.h"

#include "support/files.h"
#include "ui/bugreport/bugreport.h"

using Command = AppCommands::Command;

namespace {

// Every byte outside the unreserved set as %XX, written out here rather than borrowed from
// the code under test.
QByteArray encoded(const QString &text)
{
    QByteArray out;
    for (const char c : text.toUtf8()) {
        const auto byte = static_cast<unsigned char>(c);
        const bool unreserved = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') ||
                                (byte >= '0' && byte <= '9') || byte == '-' || byte == '.' ||
                                byte == '_' || byte == '~';
        if (unreserved)
            out += c;
        else
            out += '%' + QByteArray::number(byte, 16).rightJustified(2, '0').toUpper();
    }
    return out;
}

const QByteArray kEnglishPrompt =
    "What%20is%20broken%3F%20Write%20steps%20to%20reproduce%3A%0A%0A1.%0A2.%0A3.%0A";

} // namespace

TEST(BugReport, UrlEncodesSubjectAndBodyInFull)
{
    const QUrl url =
        BugReport::mailUrl(QStringLiteral("bugs@example.invalid"), QStringLiteral("a&b=c+d?"),
                           QStringLiteral("x y\n#1 — 100%"));
    EXPECT_EQ(url.toEncoded(), QByteArray("mailto:bugs@example.invalid?subject=a%26b%3Dc%2Bd%3F"
                                          "&body=x%20y%0A%231%20%E2%80%94%20100%25"));
    EXPECT_TRUE(BugReport::mailUrl({}, QStringLiteral("s"), QStringLiteral("b")).isEmpty());
}

TEST(BugReport, PrettyNameIsReadFromOsRelease)
{
    QTemporaryDir dir;
    const struct {
        const char *name;
        QByteArray content;
        QString expected;
    } rows[] = {
        {"quoted", "NAME=\"Fedora\"\nPRETTY_NAME=\"Fedora Linux 40 (Workstation)\"\n",
         u"Fedora Linux 40 (Workstation)"_qs},
        {"single", "PRETTY_NAME='Arch Linux'\n", u"Arch Linux"_qs},
        {"bare", "ID=alpine\nPRETTY_NAME=Alpine\n", u"Alpine"_qs},
        {"escaped", "PRETTY_NAME=\"Say \\\"hi\\\" \\\\ there\"\n", u"Say \"hi\" \\ there"_qs},
        {"missing", "NAME=Nothing\n", QString()},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(BugReport::prettyName(writeFile(dir.filePath(row.name), row.content)),
                  row.expected);
    }
    EXPECT_EQ(BugReport::prettyName(dir.filePath(QStringLiteral("absent"))), QString());
    EXPECT_EQ(BugReport::systemLine(QStringLiteral("Alpine"), QStringLiteral("6.6.8-0-lts")),
              u"Linux: Alpine 6.6.8-0-lts");
}

static QByteArray expectedUrl(const QByteArray &subject, const QByteArray &prompt,
                              const QByteArray &language, const QByteArray &compact, int clips,
                              const QByteArray &status)
{
    return "mailto:" + QByteArray(CUEBOX_BUG_EMAIL) + "?subject=" + subject + "&body=" + prompt +
           "%0A%0A---%0ACuebox%20" + encoded(QStringLiteral(CUEBOX_VERSION)) + "%20%28" +
           encoded(QStringLiteral(CUEBOX_EXPECTED_BUILD_NUMBER)) + "%29%0A" +
           encoded(BugReport::systemLine()) + "%0ALanguage%3A%20" + language + "%0ACompact%3A%20" +
           compact + "%0AClips%3A%20" + QByteArray::number(clips) + "%0AStatus%3A%20" + status;
}

TEST_F(WindowTest, MenuAndToolbarOpenTheSameExactMailInTheChosenLanguage)
{
    window();
    ASSERT_EQ(vm().status(), PackStatus::idle()); // an empty status reads as a dash
    m_preferences.setCompactMode(true);
    command(Command::reportBug)->trigger();
    m_preferences.setCompactMode(false);
    addClips({"a.mov"});
    command(Command::toolbarBug)->trigger();
    command(Command::reportBug)->trigger();
    ASSERT_EQ(m_desktop.urls.size(), 3);
    const QByteArray subject = "Cuebox%20bug%20report";
    EXPECT_EQ(m_desktop.urls[0].toEncoded(),
              expectedUrl(subject, kEnglishPrompt, "en", "yes", 0, "%E2%80%94"));
    for (int i : {1, 2})
        EXPECT_EQ(m_desktop.urls[i].toEncoded(),
                  expectedUrl(subject, kEnglishPrompt, "en", "no", 1, "Ready%3A%201%20clips"));

    // Subject and prompt follow the language; the labels stay English.
    m_localization.setLanguage(AppLanguage::japanese);
    addClips({"b.mov"});
    vm().renameAll();
    command(Command::toolbarBug)->trigger();
    ASSERT_EQ(m_desktop.urls.size(), 4);
    const QByteArray jaPrompt =
        "%E4%BD%95%E3%81%8C%E5%95%8F%E9%A1%8C%E3%81%A7%E3%81%99%E3%81%8B%EF%BC%9F%E5%86%8D%E7%8F"
        "%BE%E6%89%8B%E9%A0%86%E3%82%92%E6%9B%B8%E3%81%84%E3%81%A6%E3%81%8F%E3%81%A0%E3%81%95%E3"
        "%81%84%EF%BC%9A%0A%0A1.%0A2.%0A3.%0A";
    EXPECT_EQ(m_desktop.urls[3].toEncoded(),
              expectedUrl("Cuebox%20%E3%83%90%E3%82%B0%E5%A0%B1%E5%91%8A", jaPrompt, "ja", "no", 2,
                          encoded(L10n(AppLanguage::japanese)[u"scan.renamed"])));
}
