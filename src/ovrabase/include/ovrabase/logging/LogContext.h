// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <string>
#include <string_view>

/// \file
/// The place of a log call as text. Include Logger.h; LOG_CONTEXT is all that callers need.
namespace Vyn::Detail {

/// Returns the qualified name out of \a signature, the compiler's pretty text of a function:
/// without return type, parameters, qualifiers and constraints of that function. Those of functions
/// that it stands in are kept. \a function is its name alone; an empty one leaves the signature as
/// it is. Takes any text, in time proportional to its length.
OVRABASE_EXPORT std::string_view qualifiedNameOf(
    std::string_view signature, std::string_view function);

/// Where a log call stands. Made once for each call site, and never destroyed: static destructors
/// log too.
class OVRABASE_EXPORT LogContext {
public:
    /// \a place is "path:line "; the texts are literals of the compiler.
    LogContext(std::string_view place, std::string_view signature, std::string_view function);

    /// Returns "file:line qualified::function()".
    std::string text() const;

private:
    std::string *mText; // is left to the end of the process
};

} // namespace Vyn::Detail

#define OVRABASE_DETAIL_TEXT_OF(x) #x
#define OVRABASE_DETAIL_TEXT(x) OVRABASE_DETAIL_TEXT_OF(x)
#if defined(_MSC_VER) && !defined(__clang__)
// Qualified, and without types.
#define OVRABASE_DETAIL_FUNCTION __FUNCTION__, ""
#else
#define OVRABASE_DETAIL_FUNCTION __PRETTY_FUNCTION__, __FUNCTION__
#endif

/// The place of the call as a std::string: "file.cpp:12 ns::Widget::draw()", with the file's name
/// without its folders and the function's qualified name as the compiler spells operators,
/// templates and lambdas, but without return type, parameters and ABI tags.
#define LOG_CONTEXT                                                                                \
    ([](std::string_view ovrabasePlace, std::string_view ovrabaseSignature,                        \
         std::string_view ovrabaseFunction) {                                                      \
        static const ::Vyn::Detail::LogContext ovrabaseContext(                                    \
            ovrabasePlace, ovrabaseSignature, ovrabaseFunction);                                   \
        return ovrabaseContext.text();                                                             \
    }(__FILE__ ":" OVRABASE_DETAIL_TEXT(__LINE__) " ", OVRABASE_DETAIL_FUNCTION))
