// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <ovrabase/files/MurmurHash3.h>

#include <array>
#include <fstream>
#include <numeric>

namespace Vyn::OvraBase {
namespace {

using ContentHashes = Test::FolderTest;

#ifdef Q_OS_LINUX
/// Returns a line of /proc/self/status in KiB and, for VmHWM, lets the peak begin anew.
long statusKiB(const std::string &name)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name)) {
            return std::stol(line.substr(name.size() + 1));
        }
    }
    return -1;
}
#endif

TEST_F(ContentHashes, OfAFileIsThatOfItsBytes)
{
    // Around the block of the hash and the pieces in which files are read.
    for (const int size : {0, 1, 15, 16, 17, 65535, 65536, 65537, 1 << 20}) {
        QByteArray content(size, '\0');
        std::iota(content.begin(), content.end(), static_cast<char>(size));
        std::array<char, 16> expected{};
        MurmurHash3_x64_128(content.constData(), size, 0, expected.data());

        write("file", content);
        const QByteArray hash = FileUtils::fileDataToHash(path("file"));
        EXPECT_EQ(hash, QByteArray(expected.data(), 16)) << size;
        EXPECT_EQ(hash, FileUtils::dataToHash(content)) << size;
    }
    EXPECT_EQ(FileUtils::dataToHash({}), QByteArray(16, '\0'));
}

TEST_F(ContentHashes, ReadsAsTwoNumbers)
{
    const QByteArray hash("\x39\x30\0\0\0\0\0\0\xA6\x02\0\0\0\0\0\0", 16);
    EXPECT_EQ(FileUtils::hashToNumber(hash), QStringLiteral("12345-678"));
    EXPECT_EQ(FileUtils::hashToNumber(QByteArray(16, '\xFF')),
        QStringLiteral("18446744073709551615-18446744073709551615"));
    EXPECT_EQ(FileUtils::fileNameToHash(QStringLiteral("h\u00E9")),
        FileUtils::hashToNumber(FileUtils::dataToHash("h\xC3\xA9")));
    for (const int size : {0, 15, 17}) {
        const QByteArray data(size, 'x');
        EXPECT_EQ(
            FileUtils::hashToNumber(data), FileUtils::hashToNumber(FileUtils::dataToHash(data)));
    }
}

/// 5 GiB, most of them holes. The expected hash was computed apart from this library.
TEST_F(ContentHashes, CoversAllOfAFileBeyondFourGiBInLittleMemory)
{
    constexpr qint64 gib = qint64{1} << 30;
    // Holes in memory are read ten times as fast as holes on a disk.
    const QString memory = QStringLiteral("/dev/shm");
    const QTemporaryDir folder(
        (FileUtils::isFolder(memory) ? memory : QDir::tempPath()) + QStringLiteral("/XXXXXX"));
    QFile file(folder.filePath(QStringLiteral("file")));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.resize(5 * gib) && file.seek(4 * gib));
    ASSERT_EQ(file.write("beyond four GiB."), 16);
    ASSERT_TRUE(file.seek(5 * gib));
    ASSERT_EQ(file.write("tail!"), 5);
    file.close();
#ifdef Q_OS_LINUX
    std::ofstream("/proc/self/clear_refs") << '5'; // the peak begins anew
    const long before = statusKiB("VmRSS");
#endif

    const QByteArray hash = FileUtils::fileDataToHash(file.fileName());

    EXPECT_EQ(hash.toHex(), "405b4794bb94f8727f327b7d7aef12be");
#ifdef Q_OS_LINUX
    EXPECT_LT(statusKiB("VmHWM") - before, 16 * 1024);
#endif
}

} // namespace
} // namespace Vyn::OvraBase
