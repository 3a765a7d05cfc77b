// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <ovrabase/files/MurmurHash3.h>

#include <QtEndian>

#include <array>
#include <fstream>
#include <numeric>

namespace Vyn::OvraBase {
namespace {

struct Variant {
    const char *name;
    void (*function)(const void *, int, std::uint32_t, void *);
    std::size_t size;
    std::uint32_t verification;  // published
    std::uint32_t withHighSeeds; // computed apart from this library

    std::vector<unsigned char> hash(const void *data, int length, std::uint32_t seed = 0) const
    {
        std::vector<unsigned char> out(size, 0xFF);
        function(data, length, seed, out.data());
        return out;
    }

    /// The public procedure: hash the hashes of the keys {}, {0}, {0, 1}, ... with falling seeds.
    std::uint32_t verify(std::uint32_t firstSeed) const
    {
        std::vector<unsigned char> hashes;
        for (int length = 0; length < 256; ++length) {
            // At every alignment, and no longer than needed: the sanitizer sees any read outside.
            const int shift = length % 15;
            std::vector<unsigned char> key(static_cast<std::size_t>(shift + length));
            std::iota(key.begin() + shift, key.end(), static_cast<unsigned char>(0));
            const auto one =
                hash(key.data() + shift, length, firstSeed - static_cast<std::uint32_t>(length));
            hashes.insert(hashes.end(), one.begin(), one.end());
        }
        const auto all = hash(hashes.data(), static_cast<int>(hashes.size()));
        return qFromLittleEndian<std::uint32_t>(all.data());
    }
};

TEST(MurmurHash3, HasTheVerificationValuesOfItsAuthor)
{
    for (const Variant &variant :
        {Variant{"x86_32", MurmurHash3_x86_32, 4, 0xB0F57EE3U, 0x5DF83F04U},
            Variant{"x86_128", MurmurHash3_x86_128, 16, 0xB3ECE62AU, 0xD4D3550BU},
            Variant{"x64_128", MurmurHash3_x64_128, 16, 0x6384BA69U, 0xB551EFA2U}}) {
        SCOPED_TRACE(variant.name);
        EXPECT_EQ(variant.verify(256), variant.verification);
        EXPECT_EQ(variant.verify(0xFFFFFFFFU), variant.withHighSeeds);
        const std::vector<unsigned char> none(variant.size, 0);
        EXPECT_EQ(variant.hash("abc", -1), none);
        EXPECT_EQ(variant.hash(nullptr, 0), none);
    }
}

using ContentHash = Test::FolderTest;

TEST_F(ContentHash, OfAFileIsThatOfItsBytes)
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

TEST_F(ContentHash, ReadsAsTwoNumbers)
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

/// 5 GiB, most of them holes. The expected hash was computed apart from this library.
TEST_F(ContentHash, CoversAllOfAFileBeyondFourGiBInLittleMemory)
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
