// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <numeric>

namespace Vyn::Test {
namespace {

using ContentHashes = FolderTest;

/// Returns the most memory that the process has had, in KiB. Returns 0 on Windows, where the test
/// below therefore does not check the memory.
long peakMemory()
{
    QFile status(u"/proc/self/status"_s);
    const QString text = status.open(QFile::ReadOnly) ? status.readAll() : QByteArray();
    return text.section(u"VmHWM:"_s, 1).simplified().section(u' ', 0, 0).toLong();
}

// The expected hashes were computed apart from this library.

TEST_F(ContentHashes, OfAFileIsThatOfItsBytes)
{
    // The hash has blocks of 16 bytes, and files are read in pieces of 64 KiB.
    for (const int size : {0, 1, 15, 16, 17, 65535, 65536, 65537, 1 << 20}) {
        QByteArray content(size, '\0');
        std::iota(content.begin(), content.end(), static_cast<char>(size));
        write(u"file"_s, content);
        EXPECT_EQ(fileDataToHash(path("file")), dataToHash(content)) << size;
    }
}

TEST_F(ContentHashes, AreShownAsTwoNumbers)
{
    const std::pair<QByteArray, QString> rows[] = {
        {{"\x39\x30\0\0\0\0\0\0\xA6\x02\0\0\0\0\0\0", 16}, u"12345-678"_s},
        {QByteArray(16, '\xFF'), u"18446744073709551615-18446744073709551615"_s}, {"", u"0-0"_s},
        {QByteArray(15, 'x'), u"2088934356530938522-4041189709252109316"_s},
        {QByteArray(17, 'x'), u"16327912387190054547-11263429666212951403"_s}};
    for (const auto &[hash, number] : rows) {
        EXPECT_EQ(hashToNumber(hash), number);
    }
    EXPECT_EQ(fileNameToHash(u"h\u00E9"_s), u"15439488519876512065-15602116411042323838"_s);
}

TEST_F(ContentHashes, CoverAllOfAFileBeyondFourGiBInLittleMemory)
{
    constexpr qint64 gib = qint64{1} << 30;
    // The file is sparse. /dev/shm is a file system in memory, where holes are read ten times as
    // fast as on a disk.
    const QString memory = u"/dev/shm"_s;
    const QTemporaryDir folder(
        (isReadableAndWritable(memory) ? memory : QDir::tempPath()) + u"/XXXXXX"_s);
    QFile file(folder.filePath(u"file"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.seek(4 * gib) && file.write("beyond four GiB.") == 16);
    ASSERT_TRUE(file.seek(5 * gib) && file.write("tail!") == 5);
    file.close();
    const long before = peakMemory();
    EXPECT_EQ(fileDataToHash(file.fileName()).toHex(), "405b4794bb94f8727f327b7d7aef12be");
    EXPECT_LT(peakMemory() - before, 16 * 1024);
}

} // namespace
} // namespace Vyn::Test
