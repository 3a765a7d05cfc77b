// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>
#include <ovrabase/logging/LogContext.h>
#include <ovrabase/logging/logStr.h>

#include <QStringView>

#include <concepts>
#include <functional>
#include <istream>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>

namespace Vyn {

class StreamLogger;

/// How a value is written to a message; not for callers. Each concept looks up the stream operators
/// that the namespaces of the value bring, beside a deleted one that wins or is ambiguous where the
/// concept does not hold.
namespace Detail {

struct Anything {
    template<class T>
    Anything(const T &);
};

namespace Exactly {
template<class C, class Traits, class T>
void operator<<(std::basic_ostream<C, Traits> &, const T &) = delete;

/// There is an operator for T itself.
template<class T>
concept Writable = requires(std::ostream &stream, const T &value)
{
    stream << value;
};
} // namespace Exactly

namespace WithoutConversion {
void operator<<(std::ostream &, Anything) = delete;

/// There is an operator that takes a T without one of its conversion functions: for its base class,
/// or for the integer that an enumeration is.
template<class T>
concept Writable = requires(std::ostream &stream, const T &value)
{
    stream << value;
};
} // namespace WithoutConversion

namespace Anyhow {
void operator<<(Anything, Anything) = delete;

/// There is an operator that takes a T.
template<class T>
concept Writable = requires(std::ostream &stream, const T &value)
{
    stream << value;
};
} // namespace Anyhow

template<class T>
concept Text = std::same_as<T, QString> || std::same_as<T, QStringView> ||
    std::same_as<T, QLatin1String> ||
    (Detail::isStringBuilder<T> &&std::convertible_to<const T &, QString>);

/// The standard operator writes a T in digits; of one byte are characters and bool.
template<class T>
concept WholeNumber = std::integral<T> &&(sizeof(T) > 1);

/// Only logStr() shows a T.
template<class T>
concept Shown = !WithoutConversion::Writable<T> && Detail::HasForm<T>;

/// What goes to the message whatever operators the caller has in scope. The standard ones for wide
/// characters and strings are deleted and would stand in the way.
template<class T>
concept Preferred = Text<T> || Exactly::Writable<T> ||
    (std::is_scalar_v<std::decay_t<T>> &&Shown<T>);

/// What goes there if the caller has no operator for it in scope.
template<class T>
concept Other = !Preferred<T> && (Shown<T> || Anyhow::Writable<T>);

} // namespace Detail

/// The handle through which code writes log text: a value that holds one delegate.
///
/// ```cpp
/// logger(UI).warning(LOG_CONTEXT) << "disk full: " << 97 << "%";
/// ```
///
/// Without a delegate everything is dropped. Const calls are thread-safe; setDelegate() must not
/// run while another thread uses the same object.
class OVRABASE_EXPORT Logger {
public:
    /// Any value above Error counts as Error.
    enum LogSeverity : int { Info = 0, Warning = 1, Error = 2 };

    /// Receives one message: severity, context, text. What it throws is dropped.
    using Delegate = std::function<void(LogSeverity, std::string, std::string)>;

    /// Begins a message of the severity Info; \a context says where, normally LOG_CONTEXT. The
    /// same holds for the next three.
    StreamLogger info(std::string context) const;
    /// Begins a message of the severity Warning.
    StreamLogger warning(std::string context) const;
    /// Begins a message of the severity Error.
    StreamLogger error(std::string context) const;
    /// Begins a message of that severity.
    StreamLogger log(LogSeverity severity, std::string context) const;

    /// Replaces the delegate. Messages already begun keep the one that they began with.
    void setDelegate(Delegate delegate);

private:
    Delegate mDelegate;
};

/// One message: what is written to it reaches the logger's delegate when the object ends,
/// normally with the statement. An empty message is never delivered, and nothing is thrown on
/// delivery. No lock is held while it is written. Belongs to the thread that made it.
///
/// The operator << takes, and returns the message again:
/// - QString, QStringView, QLatin1String and string builders: their text in UTF-8, without quotes,
///   also where a module has an operator of its own for them;
/// - what std::ostream takes: by the operators and manipulators of the standard library, and those
///   in the namespace of the value;
/// - what else has a logStr(): the text that this returns.
///
/// An operator that stands in another namespace than its type is found only by callers in its
/// scope. It is used, except for the first value of a statement, and returns no message but
/// normally a std::ostream, which takes no Qt values.
class OVRABASE_EXPORT StreamLogger : public std::iostream {
public:
    /// The moved-from object delivers nothing.
    StreamLogger(StreamLogger &&other) noexcept;
    ~StreamLogger() override;

    StreamLogger(const StreamLogger &) = delete;
    StreamLogger &operator=(const StreamLogger &) = delete;
    /// Delivers the message that this object holds, then goes on with that of \a other.
    StreamLogger &operator=(StreamLogger &&other) noexcept;

    /// Writes the text of \a value, before any operator of the caller is looked at.
    template<Detail::Preferred T>
    friend StreamLogger &operator<<(StreamLogger &message, const T &value)
    {
        return message.write(value);
    }

    /// Writes a value for which the caller has no operator. The message comes as what it derives
    /// from, of any character type: every other operator for the type of the value is the better
    /// match.
    template<class C, class Traits, Detail::Other T>
    friend StreamLogger &operator<<(std::basic_ostream<C, Traits> &message, const T &value)
    {
        return static_cast<StreamLogger &>(message).write(value);
    }

    /// Writes the first value of a statement, which goes on with an lvalue: all operators take one.
    template<class T>
    requires(Detail::Preferred<T> || Detail::Other<T>) friend StreamLogger &operator<<(
        StreamLogger &&message, const T &value)
    {
        return message.write(value);
    }

    /// \name Manipulators that are functions, such as std::endl
    /// \{

    /// Applies one for output streams.
    friend StreamLogger &operator<<(
        StreamLogger &message, std::ostream &(*manipulator)(std::ostream &))
    {
        manipulator(message);
        return message;
    }
    /// Applies one for output streams as the first of a statement.
    friend StreamLogger &operator<<(
        StreamLogger &&message, std::ostream &(*manipulator)(std::ostream &))
    {
        return message << manipulator;
    }
    /// Applies one for formats, such as std::hex.
    friend StreamLogger &operator<<(StreamLogger &message, std::ios &(*manipulator)(std::ios &))
    {
        manipulator(message);
        return message;
    }
    /// Applies one for formats as the first of a statement.
    friend StreamLogger &operator<<(StreamLogger &&message, std::ios &(*manipulator)(std::ios &))
    {
        return message << manipulator;
    }
    /// \}

private:
    friend class Logger;
    StreamLogger(
        const Logger::Delegate &delegate, Logger::LogSeverity severity, std::string &&context);
    void deliver() noexcept;

    /// A buffer that lets bytes into the room that it has without what a stream does around it.
    struct Buffer : std::stringbuf {
        using std::stringbuf::stringbuf;
        /// Returns false, and takes nothing, if there is no room for all of \a bytes.
        bool append(std::string_view bytes) noexcept;
    };

    StreamLogger &writeText(QStringView text);

    /// \name What std::ostream would write, at a fraction of the cost
    /// They return false, and write nothing, if the stream is asked for another format or place, or
    /// if the room in the buffer is too small.
    /// \{
    bool append(std::string_view bytes) noexcept;
    bool append(long long number) noexcept;
    bool append(unsigned long long number) noexcept;
    template<class T>
    bool appendDigits(T number) noexcept;

    template<class T>
    bool appendSimple(const T &value) noexcept
    {
        using Decayed = std::decay_t<T>;
        if constexpr (std::same_as<Decayed, char *> || std::same_as<Decayed, const char *>) {
            const char *const text = value;
            return text && append(std::string_view(text));
        } else if constexpr (std::same_as<T, std::string> || std::same_as<T, std::string_view>) {
            return append(std::string_view(value));
        } else if constexpr (Detail::WholeNumber<T>) {
            using Widest = std::conditional_t<std::is_signed_v<T>, long long, unsigned long long>;
            return append(static_cast<Widest>(value));
        } else {
            return false;
        }
    }
    /// \}

    template<class T>
    StreamLogger &write(const T &value)
    {
        if constexpr (Detail::Text<T>) {
            if constexpr (std::convertible_to<const T &, QStringView>) {
                return writeText(value);
            } else {
                return writeText(QString(value));
            }
        } else if constexpr (Detail::Shown<T>) {
            return writeText(Detail::Form<T>::of(value));
        } else {
            if (!appendSimple(value)) {
                static_cast<std::ostream &>(*this) << value;
            }
            return *this;
        }
    }

    Buffer mText;
    Logger::Delegate mDelegate;
    Logger::LogSeverity mSeverity;
    std::string mContext;
};

} // namespace Vyn
