// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/logging/Logger.h>

#include <QByteArray>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <limits>
#include <locale>
#include <new>
#include <string_view>
#include <utility>

namespace Vyn {
namespace {

// The move constructor of a stream copies the format and the locale of the other stream. The one of
// MSVC's standard library swaps the two locales instead.
#ifdef _MSVC_STL_VERSION
constexpr bool kMoveSwapsLocale = true;
#else
constexpr bool kMoveSwapsLocale = false;
#endif

/// A stream in its initial state. The base class of each message is move-constructed from it, which
/// initialises the stream of the message once. The constructor from a buffer would initialise it
/// twice, for input and for output, and the initialisation is most of the cost of a short message.
/// Has the classic locale, so that the global locale does not change how numbers are written.
class Pristine : public std::iostream {
public:
    /// Returns the Pristine of the calling thread. It is never destroyed, because static
    /// destructors log, too.
    static std::iostream &&ofThread()
    {
        alignas(Pristine) static thread_local unsigned char place[sizeof(Pristine)];
        static thread_local Pristine *const stream = new (place) Pristine;
        return std::move(*stream);
    }

private:
    Pristine()
        : std::iostream(nullptr)
    {
        imbue(std::locale::classic());
    }
};

/// Returns an empty string with capacity for a message of common length, so that writing the
/// message allocates nothing more. Without a delegate, the message is dropped and nobody reads
/// \a context. The function then allocates nothing, and returns the buffer of \a context.
std::string roomForAMessage(bool hasDelegate, std::string &context)
{
    std::string room;
    if (hasDelegate) {
        constexpr std::size_t kCommonLength = 240;
        room.reserve(kCommonLength);
    } else {
        room.swap(context);
        room.clear();
    }
    return room;
}

} // namespace

StreamLogger Logger::info(std::string context) const
{
    return StreamLogger(mDelegate, Info, std::move(context));
}

StreamLogger Logger::warning(std::string context) const
{
    return StreamLogger(mDelegate, Warning, std::move(context));
}

StreamLogger Logger::error(std::string context) const
{
    return StreamLogger(mDelegate, Error, std::move(context));
}

StreamLogger Logger::log(LogSeverity severity, std::string context) const
{
    return StreamLogger(mDelegate, severity, std::move(context));
}

void Logger::setDelegate(Delegate delegate)
{
    mDelegate = std::move(delegate);
}

StreamLogger::StreamLogger(
    const Logger::Delegate &delegate, Logger::LogSeverity severity, std::string &&context)
    : std::iostream(Pristine::ofThread())
    , mText(roomForAMessage(static_cast<bool>(delegate), context), std::ios::in | std::ios::out)
    , mDelegate(delegate)
    , mSeverity(severity)
    , mContext(std::move(context))
{
    rdbuf(&mText);
    if constexpr (kMoveSwapsLocale) {
        imbue(std::locale::classic());
    }
}

StreamLogger::StreamLogger(StreamLogger &&other) noexcept
    : std::iostream(std::move(other))
    , mText(std::move(other.mText))
    , mDelegate(std::exchange(other.mDelegate, nullptr))
    , mSeverity(other.mSeverity)
    , mContext(std::move(other.mContext))
{
    set_rdbuf(&mText);
}

StreamLogger &StreamLogger::operator=(StreamLogger &&other) noexcept
{
    if (this != &other) {
        deliver();
        std::iostream::swap(other);
        mText = std::move(other.mText);
        mDelegate = std::exchange(other.mDelegate, nullptr);
        mSeverity = other.mSeverity;
        mContext = std::move(other.mContext);
    }
    return *this;
}

StreamLogger &StreamLogger::writeText(QStringView text)
{
    const QByteArray utf8 = text.toUtf8();
    return write(std::string_view(utf8.constData(), static_cast<std::size_t>(utf8.size())));
}

bool StreamLogger::Buffer::append(std::string_view bytes) noexcept
{
    constexpr std::ptrdiff_t kLongestStep = std::numeric_limits<int>::max();
    const std::ptrdiff_t room = std::min(epptr() - pptr(), kLongestStep);
    if (room < static_cast<std::ptrdiff_t>(bytes.size())) {
        return false;
    }
    bytes.copy(pptr(), bytes.size());
    pbump(static_cast<int>(bytes.size()));
    return true;
}

bool StreamLogger::append(std::string_view bytes) noexcept
{
    return good() && width() == 0 && !tie() && rdbuf() == &mText && mText.append(bytes);
}

template<class T>
bool StreamLogger::appendDigits(T number) noexcept
{
    if (flags() != (std::ios::skipws | std::ios::dec) || getloc() != std::locale::classic()) {
        return false;
    }
    std::array<char, std::numeric_limits<T>::digits10 + 2> digits; // one more digit, and a sign
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    return append({digits.data(), static_cast<std::size_t>(written.ptr - digits.data())});
}

bool StreamLogger::append(long long number) noexcept
{
    return appendDigits(number);
}

bool StreamLogger::append(unsigned long long number) noexcept
{
    return appendDigits(number);
}

StreamLogger::~StreamLogger()
{
    deliver();
}

void StreamLogger::deliver() noexcept
{
    if (!mDelegate) {
        return;
    }
    try {
        std::string text = std::move(mText).str();
        if (!text.empty()) {
            mDelegate(mSeverity, std::move(mContext), std::move(text));
        }
    } catch (...) {
        // The destructor and the move assignment call this function, and throw nothing. So an
        // exception of the delegate is dropped.
    }
}

} // namespace Vyn
