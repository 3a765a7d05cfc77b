// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// Compares the content hash of a block of memory with the same algorithm as published ("plain")
/// and, if CMake finds xxHash, with XXH3, another algorithm. Compares the hash of a file with a
/// loop that reads and hashes pieces of it. Compare medians of one run:
///     HashBenchmark --benchmark_enable_random_interleaving=true --benchmark_repetitions=9

#include <ovrabase/files/FileUtils.h>
#include <ovrabase/files/MurmurHash3.h>

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <cstring>
#include <vector>

#ifdef OVRABASE_BENCHMARK_XXHASH
#include <xxhash.h>
#endif

namespace {

using Vyn::OvraBase::FileUtils;

std::uint64_t rotate(std::uint64_t x, int r)
{
    return (x << r) | (x >> (64 - r));
}

std::uint64_t wordAt(const unsigned char *data, std::size_t index)
{
    std::uint64_t word = 0;
    std::memcpy(&word, data + 8 * index, sizeof(word));
    return word;
}

std::uint64_t mix(std::uint64_t h)
{
    h ^= h >> 33;
    h *= 0xff51afd7ed558ccdU;
    h ^= h >> 33;
    h *= 0xc4ceb9fe1a85ec53U;
    h ^= h >> 33;
    return h;
}

/// MurmurHash3_x64_128 as published: a loop over the blocks, the remaining bytes, the final mix.
void plainHash(const void *key, int length, std::uint32_t seed, void *out)
{
    const auto *data = static_cast<const unsigned char *>(key);
    const std::uint64_t c1 = 0x87c37b91114253d5U;
    const std::uint64_t c2 = 0x4cf5ad432745937fU;
    const auto size = static_cast<std::size_t>(length);
    const std::size_t blocks = size / 16;
    std::uint64_t h1 = seed;
    std::uint64_t h2 = seed;

    for (std::size_t i = 0; i < blocks; ++i) {
        std::uint64_t k1 = wordAt(data, 2 * i);
        std::uint64_t k2 = wordAt(data, 2 * i + 1);
        k1 *= c1;
        k1 = rotate(k1, 31);
        k1 *= c2;
        h1 ^= k1;
        h1 = rotate(h1, 27);
        h1 += h2;
        h1 = h1 * 5 + 0x52dce729U;
        k2 *= c2;
        k2 = rotate(k2, 33);
        k2 *= c1;
        h2 ^= k2;
        h2 = rotate(h2, 31);
        h2 += h1;
        h2 = h2 * 5 + 0x38495ab5U;
    }

    const unsigned char *const tail = data + 16 * blocks;
    std::uint64_t k1 = 0;
    std::uint64_t k2 = 0;
    for (std::size_t i = size % 16; i > 8; --i) {
        k2 ^= static_cast<std::uint64_t>(tail[i - 1]) << (8 * (i - 9));
    }
    for (std::size_t i = std::min<std::size_t>(size % 16, 8); i > 0; --i) {
        k1 ^= static_cast<std::uint64_t>(tail[i - 1]) << (8 * (i - 1));
    }
    h2 ^= rotate(k2 * c2, 33) * c1;
    h1 ^= rotate(k1 * c1, 31) * c2;

    h1 ^= size;
    h2 ^= size;
    h1 += h2;
    h2 += h1;
    h1 = mix(h1);
    h2 = mix(h2);
    h1 += h2;
    h2 += h1;
    std::memcpy(out, &h1, sizeof(h1));
    std::memcpy(static_cast<char *>(out) + sizeof(h1), &h2, sizeof(h2));
}

template<class Hash>
void hashMemory(benchmark::State &state, Hash hash)
{
    const std::vector<char> data(static_cast<std::size_t>(state.range(0)), 'x');
    std::array<char, 16> out{};
    for (auto _ : state) {
        hash(data.data(), static_cast<int>(data.size()), out.data());
        benchmark::DoNotOptimize(out);
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void library(benchmark::State &state)
{
    hashMemory(state, [](const void *data, int size, void *out) {
        Vyn::MurmurHash3_x64_128(data, size, 0, out);
    });
}

void dataToHash(benchmark::State &state)
{
    const QByteArray data(state.range(0), 'x');
    for (auto _ : state) {
        benchmark::DoNotOptimize(FileUtils::dataToHash(data));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void plain(benchmark::State &state)
{
    hashMemory(state, [](const void *data, int size, void *out) { plainHash(data, size, 0, out); });
}

void sizes(benchmark::internal::Benchmark *contender)
{
    for (const int size : {16, 1 << 10, 1 << 16, 1 << 20, 1 << 22}) {
        contender->Arg(size);
    }
}

BENCHMARK(library)->Apply(sizes);
BENCHMARK(dataToHash)->Apply(sizes);
BENCHMARK(plain)->Apply(sizes);

#ifdef OVRABASE_BENCHMARK_XXHASH
void xxh3(benchmark::State &state)
{
    hashMemory(state, [](const void *data, int size, void *out) {
        const XXH128_hash_t hash = XXH3_128bits(data, static_cast<std::size_t>(size));
        std::memcpy(out, &hash, sizeof(hash));
    });
}
BENCHMARK(xxh3)->Apply(sizes);
#endif

/// A file of 1 GiB, read once so that the system has it in memory.
QString bigFile()
{
    static const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("big"));
    if (!FileUtils::exists(path)) {
        QFile file(path);
        const QByteArray piece(1 << 20, 'x');
        bool written = file.open(QIODevice::WriteOnly);
        for (int i = 0; i < 1024 && written; ++i) {
            written = file.write(piece) == piece.size();
        }
        if (!written) {
            return {};
        }
        FileUtils::fileDataToHash(path);
    }
    return path;
}

void libraryFile(benchmark::State &state)
{
    const QString path = bigFile();
    for (auto _ : state) {
        benchmark::DoNotOptimize(FileUtils::fileDataToHash(path));
    }
    state.SetBytesProcessed(state.iterations() * QFile(path).size());
}

/// The minimum that a program has to do: read pieces of 64 KiB and hash each.
void plainFile(benchmark::State &state)
{
    const QString path = bigFile();
    std::array<char, 16> out{};
    std::vector<char> piece(64 * 1024);
    for (auto _ : state) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
            state.SkipWithError("the file does not open");
            break;
        }
        for (qint64 size = 0; (size = file.read(piece.data(), 64 * 1024)) > 0;) {
            plainHash(piece.data(), static_cast<int>(size), 0, out.data());
            benchmark::DoNotOptimize(out);
        }
    }
    state.SetBytesProcessed(state.iterations() * QFile(path).size());
}

BENCHMARK(libraryFile)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(plainFile)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
