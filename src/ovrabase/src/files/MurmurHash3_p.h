// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

namespace Vyn {

/// MurmurHash3_x64_128 of data that may be longer than an int counts.
void murmurHash3(const void *data, std::size_t size, std::uint32_t seed, void *out);

/// The same over data that comes piece by piece.
class Murmur3Stream {
public:
    explicit Murmur3Stream(std::uint32_t seed)
        : mLanes{seed, seed}
    {
    }

    /// Adds \a size bytes. \a data may be null when \a size is 0.
    void add(const void *data, std::size_t size);

    /// Writes the 16 bytes of the hash of all that was added to \a out.
    void finish(void *out) const;

    static constexpr std::size_t kBlockSize = 16;

    struct Lanes {
        std::uint64_t h1;
        std::uint64_t h2;
    };

private:
    Lanes mLanes;
    std::uint64_t mLength = 0;
    std::size_t mRestSize = 0;
    unsigned char mRest[kBlockSize] = {}; ///< the last bytes, fewer than a block
};

} // namespace Vyn
