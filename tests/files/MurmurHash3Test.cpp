// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/files/MurmurHash3.h>

#include <QtEndian>

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

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

} // namespace
} // namespace Vyn::OvraBase
