// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <string>
#include <string_view>

/// \file
/// The macro LOG_CONTEXT, which names the place of a log call. Everything else in this file is for
/// the macro only. Logger.h includes this file.
namespace Vyn::Detail {

/// Returns the qualified name of a function. \a signature is its __PRETTY_FUNCTION__, and
/// \a function its __FUNCTION__. With MSVC, they are its __FUNCTION__ and an empty text.
/// The name has neither the return type nor the parameters, qualifiers and constraints of the
/// function. For a lambda, the parameters, qualifiers and constraints of the enclosing function are
/// kept. If \a function is empty or equal to \a signature, returns all of \a signature. Accepts any
/// text. Takes time in proportion to the length of \a signature if \a function is short.
OVRABASE_EXPORT std::string_view qualifiedNameOf(
    std::string_view signature, std::string_view function);

/// The text of a LOG_CONTEXT. It is composed once for each place, or instance of a template.
class OVRABASE_EXPORT LogContext {
public:
    /// \a place is "path:line ", where path is the text of __FILE__. \a signature and \a function
    /// are the arguments of qualifiedNameOf().
    LogContext(std::string_view place, std::string_view signature, std::string_view function);

    /// Returns "file:line qualified::function()".
    std::string text() const;

private:
    std::string *mText; ///< never deleted, because static destructors log, too
};

} // namespace Vyn::Detail

#define OVRABASE_DETAIL_TEXT_OF(x) #x
#define OVRABASE_DETAIL_TEXT(x) OVRABASE_DETAIL_TEXT_OF(x)
#if defined(_MSC_VER) && !defined(__clang__)
// MSVC's __FUNCTION__ is already the qualified name, without return type and parameters.
#define OVRABASE_DETAIL_FUNCTION __FUNCTION__, ""
#else
#define OVRABASE_DETAIL_FUNCTION __PRETTY_FUNCTION__, __FUNCTION__
#endif

/// The place in the source as a std::string, for example "file.cpp:12 ns::Widget::draw()".
///
/// The text has the name of the file without its folders, the line, and the qualified name of the
/// function without return type, parameters and ABI tags. Operators, templates and lambdas are
/// spelled as the compiler spells them.
#define LOG_CONTEXT                                                                                \
    ([](std::string_view ovrabasePlace, std::string_view ovrabaseSignature,                        \
         std::string_view ovrabaseFunction) {                                                      \
        static const ::Vyn::Detail::LogContext ovrabaseContext(                                    \
            ovrabasePlace, ovrabaseSignature, ovrabaseFunction);                                   \
        return ovrabaseContext.text();                                                             \
    }(__FILE__ ":" OVRABASE_DETAIL_TEXT(__LINE__) " ", OVRABASE_DETAIL_FUNCTION))
