#include "model/discovery.h"
#include "support/files.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

class DiscoveryTree : public ::testing::Test
{
protected:
    QString path(const QString &relative) const { return m_dir.path() + u'/' + relative; }

    void touch(const QString &relative) { writeFile(path(relative), "x"); }
    void link(const QString &target, const QString &relative)
    {
        ASSERT_TRUE(QFile::link(target, path(relative)));
    }
    // Paths relative to the (resolved) temporary folder, for readable expectations.
    QStringList relative(const QStringList &paths) const
    {
        const QString root = QFileInfo(m_dir.path()).canonicalFilePath() + u'/';
        QStringList out;
        for (const QString &p : paths)
            out.append(p.startsWith(root) ? p.mid(root.size()) : p);
        return out;
    }

    QTemporaryDir m_dir;
};

} // namespace

// Which extensions count is pathnames_test's table.
TEST_F(DiscoveryTree, PlainFilesCountByExtensionOnly)
{
    touch("CLIP.MOV");
    touch("clip.txt");
    EXPECT_EQ(Discovery::collectMedia(path("CLIP.MOV")), QStringList{path("CLIP.MOV")});
    EXPECT_TRUE(Discovery::collectMedia(path("clip.txt")).isEmpty());
    EXPECT_TRUE(Discovery::collectMedia(path("missing.mov")).isEmpty());
}

TEST_F(DiscoveryTree, FolderWalkSkipsHiddenEntersPackagesAndTakesFoldersWithMediaNames)
{
    for (const char *file : {"show/b.mov", "show/.hidden.mov", "show/.cache/inside.mov",
                             "show/Player.app/Contents/Resources/bundled.mp4", "show/notes.txt",
                             "show/folder.mov/inner.png"})
        touch(file);
    EXPECT_EQ(relative(Discovery::collectMedia(path("show"))),
              (QStringList{"show/b.mov", "show/folder.mov", "show/folder.mov/inner.png",
                           "show/Player.app/Contents/Resources/bundled.mp4"}));
}

TEST_F(DiscoveryTree, SymlinkLoopsEndAndLinkedFoldersAreWalkedOnce)
{
    touch("show/a.mov");
    touch("show/sub/c.mov");
    link(path("show"), "show/sub/loop");  // back to the top: a loop
    link(path("show/sub"), "show/again"); // the same folder twice
    link(path("nowhere.mov"), "show/dangling.mov");
    const QStringList found = relative(Discovery::collectMedia(path("show")));
    EXPECT_EQ(found.count("show/a.mov"), 1);
    EXPECT_TRUE(found.contains("show/dangling.mov"));
    // c.mov is reached once, through whichever path the walk meets first.
    EXPECT_EQ(found.filter("c.mov").size(), 1);
}

TEST_F(DiscoveryTree, UnreadableFoldersAreSkipped)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "root reads every folder";
    touch("show/a.mov");
    touch("show/locked/b.mov");
    QFile::setPermissions(path("show/locked"), QFileDevice::Permissions());
    const QStringList found = relative(Discovery::collectMedia(path("show")));
    QFile::setPermissions(path("show/locked"),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    EXPECT_EQ(found, QStringList{"show/a.mov"});
}

TEST_F(DiscoveryTree, FreshMediaNormalisesDropsRepeatsSortsAndSkipsThePack)
{
    for (const char *file : {"show/10.mov", "show/2.mov", "show/1.mov", "show/clip10.mov",
                             "show/clip2.mov", "show/Clip1.mov"})
        touch(file);
    const QStringList once =
        relative(Discovery::freshMedia({path("show"), path("show"), path("show/./2.mov")}, {}));
    EXPECT_EQ(once, (QStringList{"show/1.mov", "show/2.mov", "show/10.mov", "show/Clip1.mov",
                                 "show/clip2.mov", "show/clip10.mov"}));

    const QStringList all = Discovery::freshMedia({path("show")}, {});
    EXPECT_TRUE(Discovery::freshMedia({path("show")}, all).isEmpty());
    EXPECT_EQ(relative(Discovery::freshMedia({path("show")}, all.mid(1))),
              QStringList{"show/1.mov"});

    // The same name in two folders keeps the order in which they were given.
    touch("two/a/a.mov");
    touch("two/b/a.mov");
    EXPECT_EQ(relative(Discovery::freshMedia({path("two/b"), path("two/a")}, {})),
              (QStringList{"two/b/a.mov", "two/a/a.mov"}));
}

TEST_F(DiscoveryTree, ALinkedFolderAndTheRealOneAreTheSameFiles)
{
    touch("real/x.mov");
    touch("real/y.png");
    link(path("real"), "alias");
    const QStringList direct = Discovery::freshMedia({path("real")}, {});
    EXPECT_EQ(Discovery::freshMedia({path("alias")}, {}), direct);
    EXPECT_TRUE(Discovery::freshMedia({path("alias/x.mov")}, direct).isEmpty());
    EXPECT_EQ(Discovery::freshMedia({path("alias"), path("real/x.mov")}, {}).size(), 2);
}

TEST(Discovery, FileBrowserOrderIgnoresCaseAndComparesNumbers)
{
    EXPECT_TRUE(Discovery::fileBrowserLess("clip2.mov", "clip10.mov"));
    EXPECT_TRUE(Discovery::fileBrowserLess("Clip1.mov", "clip2.mov"));
    EXPECT_FALSE(Discovery::fileBrowserLess("clip10.mov", "clip9.mov"));
    EXPECT_FALSE(Discovery::fileBrowserLess("A.mov", "a.mov"));
    EXPECT_FALSE(Discovery::fileBrowserLess("a.mov", "A.mov"));
}

TEST(Discovery, NormalizedPathResolvesDotsAndKeepsMissingNames)
{
    QTemporaryDir dir;
    const QString root = QFileInfo(dir.path()).canonicalFilePath();
    QDir().mkpath(root + "/x/y");
    EXPECT_EQ(Discovery::normalizedPath(root + "/x/./y/../y"), root + "/x/y");
    EXPECT_EQ(Discovery::normalizedPath(root + "/x/gone.mov"), root + "/x/gone.mov");
}
