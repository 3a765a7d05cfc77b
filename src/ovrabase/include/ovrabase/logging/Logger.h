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

/// Decides how a value is written to a message. Not for callers.
///
/// Each concept Writable compiles `stream << value` in a namespace with a deleted operator.
/// Overload resolution considers only this operator, those of std::ostream, and those that
/// argument-dependent lookup finds. The concept is false if the deleted operator is the best match,
/// or if the call is ambiguous.
namespace Detail {

struct Anything {
    template<class T>
    Anything(const T &);
};

namespace Exactly {
template<class C, class Traits, class T>
void operator<<(std::basic_ostream<C, Traits> &, const T &) = delete;

/// True if an operator takes a T as an exact match.
template<class T>
concept Writable = requires(std::ostream &stream, const T &value)
{
    stream << value;
};
} // namespace Exactly

namespace WithoutConversion {
void operator<<(std::ostream &, Anything) = delete;

/// True if an operator takes a T without a user-defined conversion: for example an operator for a
/// base class of T, or an operator for integers if T is an unscoped enumeration.
template<class T>
concept Writable = requires(std::ostream &stream, const T &value)
{
    stream << value;
};
} // namespace WithoutConversion

namespace Anyhow {
void operator<<(Anything, Anything) = delete;

/// True if an operator takes a T, even if only by a user-defined conversion.
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

/// An integer type of more than one byte. One-byte types are excluded because they are bool and
/// characters. (The larger character types are Shown, and so are not tested for this concept.)
template<class T>
concept WholeNumber = std::integral<T> &&(sizeof(T) > 1);

/// T has a logStr(), and no stream operator that takes it without a user-defined conversion. The
/// message then contains the text of logStr().
template<class T>
concept Shown = !WithoutConversion::Writable<T> && Detail::HasForm<T>;

/// The message writes a T itself, even if the caller has another operator for it in scope. The
/// scalar types are here because the standard library has deleted operators for wide characters and
/// for pointers to them, which would otherwise be chosen.
template<class T>
concept Preferred = Text<T> || Exactly::Writable<T> ||
    (std::is_scalar_v<std::decay_t<T>> &&Shown<T>);

/// The message writes a T itself, unless the caller has an operator for it in scope.
template<class T>
concept Other = !Preferred<T> && (Shown<T> || Anyhow::Writable<T>);

} // namespace Detail

/// Begins messages, and passes each finished message to its delegate, which is a function. A copy
/// of the logger has a copy of the delegate.
///
/// ```cpp
/// logger(UI).warning(LOG_CONTEXT) << "disk full: " << 97 << "%";
/// ```
///
/// Without a delegate, all messages are dropped. Const calls are thread-safe; setDelegate() must
/// not run while another thread uses the same object.
class OVRABASE_EXPORT Logger {
public:
    /// A logger that bindLogger() has bound treats any other value as Error.
    enum LogSeverity : int { Info = 0, Warning = 1, Error = 2 };

    /// Receives one message: severity, context, text. An exception is ignored.
    using Delegate = std::function<void(LogSeverity, std::string, std::string)>;

    /// Begins a message of the severity Info. \a context names the place in the source, and is
    /// normally LOG_CONTEXT.
    StreamLogger info(std::string context) const;
    /// Begins a message of the severity Warning. \a context is as for info().
    StreamLogger warning(std::string context) const;
    /// Begins a message of the severity Error. \a context is as for info().
    StreamLogger error(std::string context) const;
    /// Begins a message of the severity \a severity. \a context is as for info().
    StreamLogger log(LogSeverity severity, std::string context) const;

    /// Replaces the delegate. A message that was begun before still goes to the previous delegate.
    void setDelegate(Delegate delegate);

private:
    Delegate mDelegate;
};

/// One message. The destructor, which normally runs at the end of the statement, delivers it: it
/// calls the logger's delegate with the text of the message. An empty message is not delivered.
/// The delivery throws nothing. The class holds no lock, neither while values are written nor while
/// the delegate runs. Use the object only on the thread that made it.
///
/// The operator << returns the message, and takes these values:
/// - QString, QStringView, QLatin1String and string builders of a QString. It writes their text in
///   UTF-8 and without quotes, even if the caller has another operator for them in scope.
/// - All values and manipulators that std::ostream takes without a user-defined conversion, by an
///   operator of the standard library or of the namespace of the value.
/// - All other values with a logStr(), as its text, or with a conversion that std::ostream takes.
///
/// An operator of any other namespace is found only by callers in its scope. For these callers, an
/// operator for exactly the type is preferred to operators that need a conversion and to the
/// logStr() of a class, except for the first value after info() and the like. Normally it returns a
/// std::ostream and not the message, so that no Qt value can follow in the statement.
class OVRABASE_EXPORT StreamLogger : public std::iostream {
public:
    /// Takes over the message of \a other, which then delivers nothing.
    StreamLogger(StreamLogger &&other) noexcept;
    ~StreamLogger() override;

    StreamLogger(const StreamLogger &) = delete;
    StreamLogger &operator=(const StreamLogger &) = delete;
    /// Delivers the message of this object, then takes over that of \a other.
    StreamLogger &operator=(StreamLogger &&other) noexcept;

    /// Writes \a value. This overload is a better match than an operator of the caller that takes a
    /// std::ostream.
    template<Detail::Preferred T>
    friend StreamLogger &operator<<(StreamLogger &message, const T &value)
    {
        return message.write(value);
    }

    /// Writes a value for which the caller has no operator. \a message is always a StreamLogger. It
    /// is declared as a template of the base class, so that every other operator for the type of
    /// \a value is a better match.
    template<class C, class Traits, Detail::Other T>
    friend StreamLogger &operator<<(std::basic_ostream<C, Traits> &message, const T &value)
    {
        return static_cast<StreamLogger &>(message).write(value);
    }

    /// Writes the first value of a statement, when the message is an rvalue. Returns an lvalue,
    /// because the operators for the next values take one.
    template<class T>
    requires(Detail::Preferred<T> || Detail::Other<T>) friend StreamLogger &operator<<(
        StreamLogger &&message, const T &value)
    {
        return message.write(value);
    }

    /// \name Manipulators that are function templates, such as std::endl
    /// \{

    /// Applies a manipulator for output streams.
    friend StreamLogger &operator<<(
        StreamLogger &message, std::ostream &(*manipulator)(std::ostream &))
    {
        manipulator(message);
        return message;
    }
    /// Applies a manipulator for output streams at the start of a statement.
    friend StreamLogger &operator<<(
        StreamLogger &&message, std::ostream &(*manipulator)(std::ostream &))
    {
        return message << manipulator;
    }
    /// \}

private:
    friend class Logger;
    StreamLogger(
        const Logger::Delegate &delegate, Logger::LogSeverity severity, std::string &&context);
    void deliver() noexcept;

    /// A buffer to which bytes can be appended without the overhead of a stream.
    struct Buffer : std::stringbuf {
        using std::stringbuf::stringbuf;
        /// Appends \a bytes. Returns false, and appends nothing, if the allocated memory is too
        /// small for all of them.
        bool append(std::string_view bytes) noexcept;
    };

    StreamLogger &writeText(QStringView text);

    /// \name Fast functions that write what std::ostream would write
    /// They return false, and write nothing, if the stream has a format that may change the text,
    /// another buffer, a tied stream or an error, if they do not support the type of the value, or
    /// if the allocated memory of the buffer is too small. std::ostream then writes the value.
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
