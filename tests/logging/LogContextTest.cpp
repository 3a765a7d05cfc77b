// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/logging/Logger.h>

#include <gmock/gmock.h>

// The context of the function that uses this macro, without the file and line in front.
#define NAME_OF_THIS (LOG_CONTEXT.substr(LOG_CONTEXT.find(' ') + 1))

// The context of a function, of a lambda in it and of a member of its local class.
#define SEE_SCOPES                                                                                 \
    struct Local {                                                                                 \
        std::string name(int) const { return NAME_OF_THIS; }                                       \
    };                                                                                             \
    gScopes = {NAME_OF_THIS, [](int) mutable { return NAME_OF_THIS; }(1), Local().name(1)};

namespace ctx {

std::vector<std::string> gScopes;

// clang-format off
template<class T> std::string functionTemplate(T) { return NAME_OF_THIS; }
[[gnu::abi_tag("tagged")]] std::string taggedFunction() { return NAME_OF_THIS; }
namespace { std::string inUnnamed(int, std::function<int(char)>) { return NAME_OF_THIS; } }

struct Scopes {
    Scopes() { SEE_SCOPES }
    void qualified() const volatile &noexcept { SEE_SCOPES }
    template<class T> void constrained(T) requires std::integral<T> && (sizeof(T) > 2 || sizeof(T) < 2) { SEE_SCOPES }
    template<auto F> std::integral_constant<decltype(F), F> hasOperator() { SEE_SCOPES return {}; }
    int (*returnsFunction(int))(char) { SEE_SCOPES return nullptr; }
    int operator*() { SEE_SCOPES return 0; }
    int operator<<(int) { SEE_SCOPES return 0; }
    int operator()(int) { SEE_SCOPES return 0; }
    operator unsigned int() const & { SEE_SCOPES return 0; }
};
// clang-format on

} // namespace ctx

namespace {

using namespace ctx;
using namespace testing;

TEST(LogContext, NamesFileLineAndFunctionsWithoutTheirTypes)
{
    const std::string here = "LogContextTest.cpp:" + std::to_string(__LINE__ + 1) + " ";
    EXPECT_THAT(LOG_CONTEXT, StartsWith(here));
    // In this instance of the template, __PRETTY_FUNCTION__ has more than 45,000 characters.
    EXPECT_EQ(functionTemplate(std::make_index_sequence<8000>()), "ctx::functionTemplate()");
    EXPECT_EQ(taggedFunction(), "ctx::taggedFunction()");
    EXPECT_THAT(inUnnamed(1, {}),
        AnyOf("ctx::{anonymous}::inUnnamed()", "ctx::(anonymous namespace)::inUnnamed()"));
}

TEST(LogContext, NamesTheFunctionAlsoInItsLambdasAndLocalClasses)
{
    constexpr auto kShift = &Scopes::operator<<;
    Scopes s;
    const std::pair<const char *, std::function<void()>> rows[] = {
        {"Scopes", [] { static const Scopes kept; }}, {"qualified", [&] { s.qualified(); }},
        {"constrained", [&] { s.constrained(1); }},
        {"hasOperator", [&] { s.hasOperator<kShift>(); }},
        {"returnsFunction", [&] { s.returnsFunction(1); }}, {"operator*", [&] { *s; }},
        {"operator<<", [&] { s << 1; }}, {"operator()", [&] { s(1); }},
        {"operator unsigned int", [&] { s.operator unsigned(); }}};
    for (const auto &[name, call] : rows) {
        SCOPED_TRACE(name);
        call();
        const std::string function = "ctx::Scopes::" + std::string(name);
        EXPECT_THAT(
            gScopes, ElementsAre(function + "()",
                         AllOf(StartsWith(function), EndsWith("()"),
                             AnyOf(HasSubstr("::<lambda(int)>()"), HasSubstr("::operator()()"))),
                         AllOf(StartsWith(function), EndsWith("::Local::name()"))));
    }
}

// Signatures in the forms of several compilers, whichever one builds this test, and malformed ones.
TEST(LogContext, CutsTheNameOutOfAnyCompilersText)
{
    const std::string rows[][4] = {{"", "top level", "", ""},
        {"", "ns::W::f::<lambda_1>::operator ()", "", ""},
        {"void (*(*", "ns::W::f", "(int))(int))(long)", "f"},
        {"", "ns::W::W", "(std::function<ns::W(int)>)", "W"},
        {"", "ns::Box<std::function<Box(int)> >::Box[abi:x]", "(int)", "Box"},
        {"auto ", "(lambda at f.cpp:1:2)::operator()", "(int) const", "operator()"},
        {"", "ns::W::operator T*", "() const [with T = int]", "operator int*"},
        {"", "ns::W::operator void (*)(int)", "() const", "operator void (*)(int)"},
        {"std::string ", "ns::W::f() const::L::g", "(int) &&", "g"},
        {"auto ", "ns::W::operator()(int) const::(anonymous class)::operator()", "() const",
            "operator()"},
        {"void ", "(anonymous namespace)::f()::(lambda at it's.cpp:1:2)::g", "(int)", "g"},
        {"", R"(W<S{"](){}<>:: \"\\"}>::f()::<lambda(int)>)", " mutable", "operator()"},
        {"std::function<int(char)> ", "ns::f", "()", "f"},
        {"void ", "ns::operatorX", "(int)", "operatorX"},
        {"int ", "ns::operator\"\"_x", "(long long)", "operator\"\"_x"},
        {"void ", "f", "() [with char C = '(']", "f"},
        {"decltype ((a + 1)) ", "ns::f", "(T) [with T = int (&)[3]]", "f"}, {"", ")", "", "f"},
        {"", "((", "", "f"}, {"", "\"", "", "f"}, {"", "a<b c", "(", "f"}, {"a> ", "b", "(", "f"},
        {"auto ", "ns::f", "(int) -> B<gf(1), decltype(g(1))>", "f"}};
    for (const auto &[before, name, after, function] : rows) {
        const std::string signature = before + name + after;
        EXPECT_EQ(Vyn::Detail::qualifiedNameOf(signature, function), name) << signature;
    }
}

} // namespace
