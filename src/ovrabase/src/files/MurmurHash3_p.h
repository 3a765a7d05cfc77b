// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

namespace Vyn {

/// Does what MurmurHash3_x64_128() does. \a size may be greater than an int can hold.
void murmurHash3(const void *data, std::size_t size, std::uint32_t seed, void *out);

/// Computes the hash of murmurHash3() for data that is read in pieces.
class Murmur3Stream {
public:
    explicit Murmur3Stream(std::uint32_t seed)
        : mLanes{seed, seed}
    {
    }

    /// Adds \a size bytes, a multiple of 16.
    void addBlocks(const void *data, std::size_t size);

    /// Writes the hash of all bytes to \a out: the added ones, and then \a size more at \a data.
    /// The hash has 16 bytes. \a data may be null when \a size is 0.
    void finish(const void *data, std::size_t size, void *out) const;

private:
    /// The state of the hash: two 64-bit numbers into which each block is mixed.
    struct Lanes {
        std::uint64_t h1;
        std::uint64_t h2;
    };
    static Lanes mixBlocks(Lanes lanes, const unsigned char *data, std::size_t size);

    Lanes mLanes;
    std::uint64_t mLength = 0; ///< the number of added bytes
};

} // namespace Vyn
