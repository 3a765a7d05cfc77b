// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <cstdint>

/// \file
/// The three hash functions of MurmurHash3 (Austin Appleby, 2011). Their results are those of the
/// original. They are fast, and not cryptographic.
///
/// Each function hashes the \a length bytes at \a key, and writes the hash to \a out as
/// little-endian words. No alignment is needed. A negative \a length counts as 0. \a key may be
/// null if \a length is 0. Thread-safe.
namespace Vyn {

/// Writes a hash of 16 bytes, two 64-bit words. The fastest of the three for long keys.
OVRABASE_EXPORT void MurmurHash3_x64_128(
    const void *key, int length, std::uint32_t seed, void *out);

/// Writes a hash of 16 bytes, four 32-bit words. It is not the hash of MurmurHash3_x64_128().
OVRABASE_EXPORT void MurmurHash3_x86_128(
    const void *key, int length, std::uint32_t seed, void *out);

/// Writes a hash of 4 bytes, one 32-bit word.
OVRABASE_EXPORT void MurmurHash3_x86_32(const void *key, int length, std::uint32_t seed, void *out);

} // namespace Vyn
