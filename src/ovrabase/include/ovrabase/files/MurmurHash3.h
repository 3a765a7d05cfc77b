// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <cstdint>

/// \file
/// MurmurHash3 (Austin Appleby, 2011), bit for bit: fast, well mixed, not for secrets.
///
/// Each function hashes the \a length bytes at \a key, which need no alignment, and writes the hash
/// to \a out in little-endian words. \a key may be null when \a length is 0; a negative length
/// counts as 0. Thread-safe.
namespace Vyn {

/// Writes 16 bytes: two 64-bit words. The fastest on 64-bit machines.
OVRABASE_EXPORT void MurmurHash3_x64_128(
    const void *key, int length, std::uint32_t seed, void *out);

/// Writes 16 bytes: four 32-bit words, other ones than MurmurHash3_x64_128().
OVRABASE_EXPORT void MurmurHash3_x86_128(
    const void *key, int length, std::uint32_t seed, void *out);

/// Writes 4 bytes: one 32-bit word.
OVRABASE_EXPORT void MurmurHash3_x86_32(const void *key, int length, std::uint32_t seed, void *out);

} // namespace Vyn
