#include "session/contentfingerprint.h"
#include "support/files.h"

#include <QCryptographicHash>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QByteArray pattern(qint64 size, char seed)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (qint64 i = 0; i < size; ++i)
        bytes[i] = static_cast<char>((i * 31 + seed) & 0xFF);
    return bytes;
}

QString sha256Hex(const QByteArray &bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

} // namespace

TEST(ContentFingerprint, SoftKeyAndTenths)
{
    EXPECT_EQ(ContentFingerprint::softKey(123.4, 5000), "5000|1234");
    EXPECT_EQ(ContentFingerprint::softKey(std::nullopt, 2048), "2048|-10");
    EXPECT_EQ(ContentFingerprint::softKey(0.25, 1), "1|3"); // halves away from zero
    EXPECT_EQ(ContentFingerprint::softKey(0.04, 1), "1|0");
    EXPECT_EQ(ContentFingerprint::softKey(std::numeric_limits<double>::infinity(), 7), "7|-10");
    EXPECT_EQ(ContentFingerprint::tenths(1e300), std::nullopt);
}

TEST(ContentFingerprint, HashesHeaderHeadAndTailExactly)
{
    QTemporaryDir dir;
    const qint64 kS = ContentFingerprint::kSampleBytes;

    const QByteArray small = pattern(1000, 1);
    EXPECT_EQ(ContentFingerprint::make(writeFile(dir.filePath("small.mov"), small), 12.5, 1000),
              sha256Hex("1000|125" + small));

    const QByteArray middle = pattern(300 * 1024, 2); // only the head is read
    EXPECT_EQ(ContentFingerprint::make(writeFile(dir.filePath("middle.mov"), middle), std::nullopt,
                                       middle.size()),
              sha256Hex("307200|0" + middle.left(kS)));

    const QByteArray large = pattern(2 * 1024 * 1024 + 17, 3);
    EXPECT_EQ(
        ContentFingerprint::make(writeFile(dir.filePath("large.mov"), large), 60.0, large.size()),
        sha256Hex(QByteArray::number(large.size()) + "|600" + large.left(kS) + large.right(kS)));
}

TEST(ContentFingerprint, UnreadableFilesHashTheirHeaderAlone)
{
    EXPECT_EQ(ContentFingerprint::make("/nonexistent/x.mov", 3.0, 42), sha256Hex("42|30"));
    QTemporaryDir dir;
    // A file that shrank since it was measured: the tail read past the end adds nothing.
    const QByteArray bytes = pattern(100, 4);
    EXPECT_EQ(ContentFingerprint::make(writeFile(dir.filePath("shrunk.mov"), bytes), std::nullopt,
                                       10'000'000),
              sha256Hex("10000000|0" + bytes));
}
