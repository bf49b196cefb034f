#include "sessionfixture.h"

#include "session/alley.h"

TEST(Alley, FirstExistingCandidateWinsElseTheDownloadPage)
{
    QTemporaryDir home;
    RecordingDesktop desktop;
    EXPECT_FALSE(Alley::isResolumeAlleyInstalled(home.path()));
    Alley::open({"/a.mov"}, desktop, home.path());
    EXPECT_EQ(desktop.urls, QList<QUrl>{Alley::downloadPage()});
    EXPECT_TRUE(desktop.opened.isEmpty());

    const QString arenaWine = home.path() + "/.wine/drive_c/Program Files/Resolume Arena/Alley.exe";
    const QString alleyWine = home.path() + "/.wine/drive_c/Program Files/Resolume Alley/Alley.exe";
    QDir().mkpath(QFileInfo(arenaWine).path());
    QFile(arenaWine).open(QIODevice::WriteOnly);
    EXPECT_EQ(Alley::alleyURL(home.path()), arenaWine);
    QDir().mkpath(QFileInfo(alleyWine).path());
    QFile(alleyWine).open(QIODevice::WriteOnly);
    EXPECT_EQ(Alley::alleyURL(home.path()), alleyWine); // earlier in the list

    Alley::open({"/a.mov", "/b.mov", "/c.png"}, desktop, home.path());
    ASSERT_EQ(desktop.opened.size(), 1); // one request with every file, in order
    EXPECT_EQ(desktop.opened[0].first, (QStringList{"/a.mov", "/b.mov", "/c.png"}));
    EXPECT_EQ(desktop.opened[0].second, alleyWine);
}

using AlleyHandOff = SessionTest;

TEST_F(AlleyHandOff, EmptyPackAsksForClipsFirst)
{
    vm().openSelectedInAlley();
    EXPECT_EQ(vm().status(), PackStatus::addFirst());
    ingestNew("s", {"a.mov"});
    vm().openSelectedInAlley();
    EXPECT_EQ(m_desktop.opened.size() + m_desktop.urls.size(), 1);
}
