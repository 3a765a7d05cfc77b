// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/Guards.h"

#include <ovrabase/logging/Logger.h>

#include <QtGui>

#include <gmock/gmock.h>

#include <climits>
#include <iomanip>
#include <thread>

// A module's own operators. A StreamLogger uses the one for QVariant, not for QString.
static std::ostream &operator<<(std::ostream &stream, const QString &)
{
    return stream << "module's text";
}
static std::ostream &operator<<(std::ostream &stream, const QVariant &)
{
    return stream << "module's variant";
}

namespace other {

enum Level { High };
enum class Kind { Plain };

struct Shown {
    friend QString logStr(const Shown &) { return QStringLiteral("shown"); }
};
struct Printed {
    friend std::ostream &operator<<(std::ostream &out, const Printed &) { return out << "printed"; }
};
struct PrintedAndShown : Printed, Shown {};
struct Number {
    operator int() const { return 42; }
};

} // namespace other

namespace Vyn {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

// Found by the code of this namespace only.
template<class C, class Traits, class T>
std::basic_ostream<C, Traits> &operator<<(std::basic_ostream<C, Traits> &stream, const QList<T> &)
{
    return stream << "scoped list";
}
std::ostream &operator<<(std::ostream &stream, other::Kind)
{
    return stream << "scoped kind";
}

struct LoggerTest : testing::Test {
    LoggerTest()
    {
        mLogger.setDelegate(
            [this](int severity, const std::string &context, const std::string &text) {
                mTexts.push_back((severity ? std::to_string(severity) : "") + context + text);
            });
    }

    Logger mLogger;
    /// For each message, its severity (nothing for Info), context and text.
    std::vector<std::string> mTexts;
};

// The QString at the end of a statement shows that the stream still accepts types of Qt there.
TEST_F(LoggerTest, TakesQtValuesAndTypesWithALogStrAnywhereInTheStatement)
{
    const QString name = u"尺 \"%1\""_s;
    mLogger.info("") << std::hex << 255 << QPoint(1, 2) << ' ' << name << std::dec << 10 << name;
    mLogger.info("") << std::endl << name << 1.5 << std::flush << std::setw(10) << name << name;
    mLogger.info("") << QStringView(name).first(1) << QLatin1String("\xE9") << name % u'x' << name;
    mLogger.info("") << QByteArray("a b") << QColor(1, 2, 3) << QChar(u'c') << std::optional(name);
    mLogger.info("") << std::vector<bool>{true} << other::Shown() << std::vector<other::Shown>(2);
    mLogger.info("") << u"wide" << U'w' << std::wstring(L"w") << name;
    EXPECT_THAT(
        mTexts, ElementsAre("ff(1,2) 尺 \"%1\"10尺 \"%1\"", "\n尺 \"%1\"1.5  尺 \"%1\"尺 \"%1\"",
                    "尺é尺 \"%1\"x尺 \"%1\"", R"(a%20b#010203'c'["尺 \"%1\""])",
                    "[true]shown[shown, shown]", R"("wide"'w'"w"尺 "%1")"));
}

TEST_F(LoggerTest, KeepsEveryOtherStreamOperator)
{
    const QString name = u"x"_s;
    char buffer[] = "buffer";
    std::stringbuf content("content");
    mLogger.info("") << buffer << std::string("s") << true << 'c' << nullptr << &content << name;
    mLogger.info("") << other::Printed() << other::PrintedAndShown() << other::Number() << name;
    mLogger.info("") << other::High << QVariant(1) << std::quoted("q") << name;
    mLogger.info("") << 1 << QList<int>() << 2;
    mLogger.info("") << 1 << other::Kind::Plain << name;
    EXPECT_THAT(
        mTexts, ElementsAre("buffers1cnullptrcontentx", "printedprinted42x",
                    "0module's variant\"q\"x", "1scoped list2", "1scoped kindmodule's text"));
}

// A message writes simple texts and numbers by its own code; a std::ostream is the reference.
TEST_F(LoggerTest, WritesTextsAndNumbersAsAStreamDoesAlsoUnderAnotherGlobalLocale)
{
    const auto write = [](auto &stream) {
        char cut[] = "cut\0off";
        stream << cut << std::string("a\0b", 3) << std::string_view() << short(-1) << 0U << -7L;
        stream << LLONG_MIN << ULLONG_MAX << true << std::setw(6) << 12 << std::left;
        stream << std::setw(4) << "l" << std::hex << short(-1) << std::oct << 8 << std::dec;
        stream << std::showpos << 1 << std::noshowpos << std::string(500, 'x') << 12345 << 0.5;
        stream.imbue(std::locale(std::locale::classic(), new Vyn::Test::Grouping));
        stream << 1234567;
        stream.setstate(std::ios::failbit);
        stream << "lost" << 1;
        stream.clear();
        std::stringbuf other;
        std::streambuf *const own = stream.rdbuf(&other);
        stream << "elsewhere" << 1;
        stream.rdbuf(own);
        stream << other.str() << static_cast<const char *>(nullptr) << "lost";
    };
    std::ostringstream expected;
    write(expected.std::ostream::flush());
    const auto grouping = Vyn::Test::withGrouping();
    // A new thread, because a thread makes the stream that it copies for each message only once:
    // here under the locale with groups.
    std::thread([&] {
        for ([[maybe_unused]] const int message : {1, 2}) {
            StreamLogger stream = mLogger.info("");
            write(stream);
            EXPECT_TRUE(stream.bad());
        }
    }).join();
    EXPECT_THAT(mTexts, ElementsAre(expected.str(), expected.str()));
}

TEST_F(LoggerTest, DeliversUpToTheFurthestPositionWrittenUnlessEmpty)
{
    mLogger.info("nothing written");
    mLogger.info("empty strings") << "" << std::string();
    {
        StreamLogger stream = mLogger.warning("w: ");
        stream << "12 words ";
        int number = 0;
        stream >> number;
        EXPECT_EQ(number, 12);
        stream.seekp(1) << "X";
        StreamLogger moved(std::move(stream));
        moved << " one";
        StreamLogger assigned = mLogger.log(static_cast<Logger::LogSeverity>(7), "earlier: ");
        assigned << "goes first";
        assigned = std::move(moved);
        assigned << '!';
    }
    EXPECT_THAT(mTexts, ElementsAre("7earlier: goes first", "1w: 1X one!s "));
}

TEST_F(LoggerTest, KeepsACopyOfTheDelegateInEachMessageAndDropsWhatItThrows)
{
    std::string calls;
    mLogger.setDelegate([&calls, n = '0'](int, const std::string &, const std::string &) mutable {
        calls += ++n;
        throw std::exception();
    });
    StreamLogger begun = mLogger.info("");
    begun << "a";
    mLogger.error("") << "b";
    mLogger.setDelegate({});
    begun = mLogger.info(""); // delivers "a"
    mLogger.info("") << "dropped";
    EXPECT_EQ(calls, "11");
}

} // namespace
} // namespace Vyn
