// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

namespace Vyn {

/// MurmurHash3_x64_128 over data that comes piece by piece and may be longer than an int counts.
class Murmur3Stream {
public:
    explicit Murmur3Stream(std::uint32_t seed)
        : mH1(seed)
        , mH2(seed)
    {
    }

    /// Adds \a size bytes. \a data may be null when \a size is 0.
    void add(const void *data, std::size_t size);

    /// Writes the 16 bytes of the hash to \a out. The stream is used up.
    void finish(void *out);

private:
    static constexpr std::size_t kBlockSize = 16;

    void addBlocks(const unsigned char *data, std::size_t size);

    std::uint64_t mH1;
    std::uint64_t mH2;
    std::uint64_t mLength = 0;
    std::size_t mRestSize = 0;
    unsigned char mRest[kBlockSize] = {}; ///< the last bytes, fewer than a block
};

} // namespace Vyn
