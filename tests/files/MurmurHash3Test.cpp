// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/files/MurmurHash3.h>

#include <QByteArray>
#include <QtEndian>

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace Vyn::OvraBase {
namespace {

struct Variant {
    const char *name;
    void (*function)(const void *, int, std::uint32_t, void *);
    qsizetype size;
    std::uint32_t verification;  // published
    std::uint32_t withHighSeeds; // computed apart from this library

    QByteArray hash(const void *data, qsizetype length, std::uint32_t seed = 0) const
    {
        QByteArray out(size, '\xFF');
        function(data, static_cast<int>(length), seed, out.data());
        return out;
    }

    /// The published test: the hash of the hashes of the keys {}, {0}, {0, 1}, ... with falling
    /// seeds.
    std::uint32_t verify(std::uint32_t firstSeed) const
    {
        QByteArray all;
        for (std::uint32_t length = 0; length < 256; ++length) {
            // The keys have different alignments. A buffer ends with its key, so that the address
            // sanitizer reports a read after the key.
            std::vector<unsigned char> key(length % 15 + length);
            std::iota(key.begin() + length % 15, key.end(), static_cast<unsigned char>(0));
            all += hash(key.data() + length % 15, length, firstSeed - length);
        }
        return qFromLittleEndian<std::uint32_t>(hash(all.constData(), all.size()).constData());
    }
};

TEST(MurmurHash3, HasTheVerificationValuesOfItsAuthor)
{
    const Variant variants[] = {{"x86_32", MurmurHash3_x86_32, 4, 0xB0F57EE3U, 0x5DF83F04U},
        {"x86_128", MurmurHash3_x86_128, 16, 0xB3ECE62AU, 0xD4D3550BU},
        {"x64_128", MurmurHash3_x64_128, 16, 0x6384BA69U, 0xB551EFA2U}};
    for (const Variant &variant : variants) {
        SCOPED_TRACE(variant.name);
        EXPECT_EQ(variant.verify(256), variant.verification);
        EXPECT_EQ(variant.verify(0xFFFFFFFFU), variant.withHighSeeds);
        EXPECT_EQ(variant.hash("abc", -1), QByteArray(variant.size, '\0'));
        EXPECT_EQ(variant.hash(nullptr, 0), QByteArray(variant.size, '\0'));
    }
}

} // namespace
} // namespace Vyn::OvraBase
