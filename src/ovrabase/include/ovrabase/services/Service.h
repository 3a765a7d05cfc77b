// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Vyn::OvraBase {

/// The base class of the services that the ServiceLocator owns.
class OVRABASE_EXPORT Service {
public:
    Service() = default;
    Service(const Service &) = default;
    Service &operator=(const Service &) = default;
    virtual ~Service();
};

/// Returns the type id of the class \a qualifiedName: the 64-bit FNV-1a hash (Fowler, Noll and Vo,
/// 1991) of its fully qualified name. The id is the same in every run, program and library, and on
/// every system.
constexpr std::size_t serviceTypeId(std::string_view qualifiedName)
{
    static_assert(sizeof(std::size_t) == sizeof(std::uint64_t), "type ids have 64 bits");
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char c : qualifiedName) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
    }
    return hash;
}

} // namespace Vyn::OvraBase

/// Defines the static member function typeId() of a service class. Use the macro in the public part
/// of the class, with the fully qualified name of the class:
///
/// ```cpp
/// namespace Paint {
/// class Palettes : public Vyn::OvraBase::Service {
/// public:
///     OVRABASE_SERVICE_TYPE_ID(Paint::Palettes)
/// };
/// }
/// ```
///
/// The name of another class is a compile error. An alias of the class compiles, but gives another
/// id.
#define OVRABASE_SERVICE_TYPE_ID(QualifiedName)                                                    \
    static std::size_t typeId()                                                                    \
    {                                                                                              \
        static_assert(&::QualifiedName::typeId == &typeId, "this is the name of another class");   \
        static constexpr std::size_t id = ::Vyn::OvraBase::serviceTypeId(#QualifiedName);          \
        return id;                                                                                 \
    }
