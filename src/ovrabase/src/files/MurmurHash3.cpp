// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/MurmurHash3_p.h"

#include <ovrabase/files/MurmurHash3.h>

#include <QtEndian>

#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>

namespace Vyn {
namespace {

constexpr std::size_t kBlockSize = 16;

template<class Word>
Word loadWord(const unsigned char *data)
{
    return qFromLittleEndian<Word>(data);
}

template<class Word>
void storeWord(Word word, unsigned char *out)
{
    qToLittleEndian(word, out);
}

std::uint32_t finalMix(std::uint32_t h)
{
    h = (h ^ (h >> 16)) * 0x85ebca6bU;
    h = (h ^ (h >> 13)) * 0xc2b2ae35U;
    return h ^ (h >> 16);
}

std::uint64_t finalMix(std::uint64_t h)
{
    h = (h ^ (h >> 33)) * 0xff51afd7ed558ccdU;
    h = (h ^ (h >> 33)) * 0xc4ceb9fe1a85ec53U;
    return h ^ (h >> 33);
}

std::size_t sizeOf(int length)
{
    return static_cast<std::size_t>(std::max(length, 0));
}

// For MurmurHash3_x64_128(), which has two lanes of 64 bits.

std::uint64_t mixFirst(std::uint64_t k)
{
    return std::rotl(k * 0x87c37b91114253d5U, 31) * 0x4cf5ad432745937fU;
}

std::uint64_t mixSecond(std::uint64_t k)
{
    return std::rotl(k * 0x4cf5ad432745937fU, 33) * 0x87c37b91114253d5U;
}

// For MurmurHash3_x86_128(), which has four lanes of 32 bits. Lane i multiplies by the constants i
// and i + 1.

constexpr std::uint32_t kLaneConstants[] = {
    0x239b961bU, 0xab0e9789U, 0x38b34ae5U, 0xa1e38b93U, 0x239b961bU};

template<int Lane>
std::uint32_t mixLane(std::uint32_t k)
{
    return std::rotl(k * kLaneConstants[Lane], 15 + Lane) * kLaneConstants[Lane + 1];
}

// For MurmurHash3_x86_32().

std::uint32_t mixWord(std::uint32_t k)
{
    return std::rotl(k * 0xcc9e2d51U, 15) * 0x1b873593U;
}

} // namespace

void murmurHash3(const void *data, std::size_t size, std::uint32_t seed, void *out)
{
    Murmur3Stream(seed).finish(data, size, out);
}

Murmur3Stream::Lanes Murmur3Stream::mixBlocks(
    Lanes lanes, const unsigned char *data, std::size_t size)
{
    auto [h1, h2] = lanes;
    for (std::size_t at = 0; at < size; at += kBlockSize) {
        const std::uint64_t k1 = mixFirst(loadWord<std::uint64_t>(data + at));
        const std::uint64_t k2 = mixSecond(loadWord<std::uint64_t>(data + at + 8));
        h1 = (std::rotl(h1 ^ k1, 27) + h2) * 5 + 0x52dce729U;
        h2 = (std::rotl(h2 ^ k2, 31) + h1) * 5 + 0x38495ab5U;
    }
    return {h1, h2};
}

void Murmur3Stream::addBlocks(const void *data, std::size_t size)
{
    mLanes = mixBlocks(mLanes, static_cast<const unsigned char *>(data), size);
    mLength += size;
}

void Murmur3Stream::finish(const void *data, std::size_t size, void *out) const
{
    const auto *const end = static_cast<const unsigned char *>(data) + size;
    const std::size_t restSize = size % kBlockSize;
    auto [h1, h2] = mixBlocks(mLanes, end - size, size - restSize);
    if (restSize > 0) {
        unsigned char block[kBlockSize] = {};
        std::memcpy(block, end - restSize, restSize);
        h2 ^= mixSecond(loadWord<std::uint64_t>(block + 8));
        h1 ^= mixFirst(loadWord<std::uint64_t>(block));
    }
    const std::uint64_t length = mLength + size;
    h1 ^= length;
    h2 ^= length;
    h1 += h2;
    h2 += h1;
    h1 = finalMix(h1);
    h2 = finalMix(h2);
    h1 += h2;
    h2 += h1;

    auto *bytes = static_cast<unsigned char *>(out);
    storeWord(h1, bytes);
    storeWord(h2, bytes + 8);
}

void MurmurHash3_x64_128(const void *key, int length, std::uint32_t seed, void *out)
{
    murmurHash3(key, sizeOf(length), seed, out);
}

void MurmurHash3_x86_128(const void *key, int length, std::uint32_t seed, void *out)
{
    const auto *data = static_cast<const unsigned char *>(key);
    const std::size_t size = sizeOf(length);
    std::uint32_t h[] = {seed, seed, seed, seed};

    const std::size_t restSize = size % kBlockSize;
    for (std::size_t at = 0; at < size - restSize; at += kBlockSize) {
        const unsigned char *const block = data + at;
        h[0] ^= mixLane<0>(loadWord<std::uint32_t>(block));
        h[0] = (std::rotl(h[0], 19) + h[1]) * 5 + 0x561ccd1bU;
        h[1] ^= mixLane<1>(loadWord<std::uint32_t>(block + 4));
        h[1] = (std::rotl(h[1], 17) + h[2]) * 5 + 0x0bcaa747U;
        h[2] ^= mixLane<2>(loadWord<std::uint32_t>(block + 8));
        h[2] = (std::rotl(h[2], 15) + h[3]) * 5 + 0x96cd1c35U;
        h[3] ^= mixLane<3>(loadWord<std::uint32_t>(block + 12));
        h[3] = (std::rotl(h[3], 13) + h[0]) * 5 + 0x32ac3b17U;
    }

    // The last block is filled up with zeros. A word of zeros is mixed to 0, and changes nothing.
    unsigned char rest[kBlockSize] = {};
    if (restSize > 0) {
        std::memcpy(rest, data + size - restSize, restSize);
    }
    h[0] ^= mixLane<0>(loadWord<std::uint32_t>(rest));
    h[1] ^= mixLane<1>(loadWord<std::uint32_t>(rest + 4));
    h[2] ^= mixLane<2>(loadWord<std::uint32_t>(rest + 8));
    h[3] ^= mixLane<3>(loadWord<std::uint32_t>(rest + 12));

    const auto spread = [&h] {
        h[0] += h[1] + h[2] + h[3];
        h[1] += h[0];
        h[2] += h[0];
        h[3] += h[0];
    };
    for (std::uint32_t &lane : h) {
        lane ^= static_cast<std::uint32_t>(size);
    }
    spread();
    for (std::uint32_t &lane : h) {
        lane = finalMix(lane);
    }
    spread();
    qToLittleEndian<std::uint32_t>(h, std::size(h), out);
}

void MurmurHash3_x86_32(const void *key, int length, std::uint32_t seed, void *out)
{
    const auto *data = static_cast<const unsigned char *>(key);
    const std::size_t size = sizeOf(length);
    std::uint32_t h = seed;

    const std::size_t restSize = size % sizeof(h);
    for (std::size_t at = 0; at < size - restSize; at += sizeof(h)) {
        h ^= mixWord(loadWord<std::uint32_t>(data + at));
        h = std::rotl(h, 13) * 5 + 0xe6546b64U;
    }
    if (restSize > 0) {
        unsigned char rest[sizeof(h)] = {};
        std::memcpy(rest, data + size - restSize, restSize);
        h ^= mixWord(loadWord<std::uint32_t>(rest));
    }
    storeWord(finalMix(h ^ static_cast<std::uint32_t>(size)), static_cast<unsigned char *>(out));
}

} // namespace Vyn
