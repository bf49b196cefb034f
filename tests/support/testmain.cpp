// Every test program runs with a QCoreApplication (event loop, resources) and never touches the
// user's preferences or cache (stripped clips go to the cache).
#include <QCoreApplication>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir settingsDir;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settingsDir.path());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settingsDir.path());
    QTemporaryDir cacheDir;
    qputenv("XDG_CACHE_HOME", QFile::encodeName(cacheDir.path()));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
