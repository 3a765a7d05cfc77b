// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/logging/Logger.h>

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

// Every function below answers its own context without the file and line in front of it.
#define NAME_OF_THIS (LOG_CONTEXT.substr(LOG_CONTEXT.find(' ') + 1))

namespace ctx {

using Text = std::string;
Text gSeen;

// clang-format off
Text freeFunction(int, std::function<int(char)>) { return NAME_OF_THIS; }
void (*returnsFunction(int))(char) { return gSeen = NAME_OF_THIS, nullptr; }
template<class T> Text functionTemplate(T) { return NAME_OF_THIS; }
[[gnu::abi_tag("tagged")]] Text taggedFunction() { return NAME_OF_THIS; }
// clang-format on

struct Widget {
    Widget() { gSeen = NAME_OF_THIS; }
    virtual ~Widget() { gSeen = NAME_OF_THIS; }
    Text draw() const { return NAME_OF_THIS; }
    Text onRvalue() &&noexcept { return NAME_OF_THIS; }
    static Text make(const Widget &) { return NAME_OF_THIS; }
    Text operator()(int) const { return NAME_OF_THIS; }
    Text operator<<(int) { return NAME_OF_THIS; }
    operator unsigned int() const { return gSeen = NAME_OF_THIS, 1; }
    int (Widget::*returnsMember(char))(long) { return gSeen = NAME_OF_THIS, nullptr; }
};

template<class T, class U = std::vector<T>>
struct Box {
    Text put(const U &) const { return NAME_OF_THIS; }
};

// clang-format off
namespace { Text inUnnamed(int) { return NAME_OF_THIS; } }
Text inLambda(int) { return [](char) { return NAME_OF_THIS; }('x'); }
// clang-format on

} // namespace ctx

namespace {

using namespace ctx;
using namespace testing;

TEST(LogContext, NamesFileLineAndFunctionsWithoutTheirTypes)
{
    const std::string here = "LogContextTest.cpp:" + std::to_string(__LINE__ + 1) + " ";
    EXPECT_THAT(LOG_CONTEXT, StartsWith(here));
    EXPECT_EQ(freeFunction(1, {}), "ctx::freeFunction()");
    returnsFunction(1);
    EXPECT_EQ(gSeen, "ctx::returnsFunction()");
    EXPECT_EQ(functionTemplate(std::vector<int>()), "ctx::functionTemplate()");
    EXPECT_EQ(taggedFunction(), "ctx::taggedFunction()");
}

TEST(LogContext, NamesMembers)
{
    {
        Widget widget;
        EXPECT_EQ(gSeen, "ctx::Widget::Widget()");
        EXPECT_EQ(widget.draw(), "ctx::Widget::draw()");
        EXPECT_EQ(std::move(widget).onRvalue(), "ctx::Widget::onRvalue()");
        EXPECT_EQ(Widget::make(widget), "ctx::Widget::make()");
        EXPECT_EQ(widget(1), "ctx::Widget::operator()()");
        EXPECT_EQ(widget << 1, "ctx::Widget::operator<<()");
        EXPECT_EQ(static_cast<unsigned int>(widget), 1U);
        EXPECT_EQ(gSeen, "ctx::Widget::operator unsigned int()");
        widget.returnsMember('x');
        EXPECT_EQ(gSeen, "ctx::Widget::returnsMember()");
    }
    EXPECT_EQ(gSeen, "ctx::Widget::~Widget()");
}

TEST(LogContext, SpellsTemplatesAndScopesAsTheCompilerDoes)
{
    EXPECT_THAT(Box<int>().put({}), AnyOf("ctx::Box<T, U>::put()", "ctx::Box<int>::put()"));
    EXPECT_THAT(inUnnamed(1),
        AnyOf("ctx::{anonymous}::inUnnamed()", "ctx::(anonymous namespace)::inUnnamed()"));
    EXPECT_THAT(inLambda(1),
        AllOf(StartsWith("ctx::inLambda(int)::"),
            AnyOf(HasSubstr("<lambda(char)>"), HasSubstr("operator()")), EndsWith("()")));
}

// Texts of compilers that this build may not use; they come in as they are.
TEST(LogContext, CutsTheNameOutOfAnyCompilersText)
{
    const std::pair<const char *, const char *> rows[] = {{"", ""}, {"top level", "top level"},
        {"main", "main"}, {"int main(int, char**)", "main"},
        {"void (* ns::f(int))(char) [with T = int (&)[3]]", "ns::f"},
        {"std::function<void (int)> ns::g(int (*)[3])", "ns::g"},
        {"T *ns::Box<int>::operator int *() const [T = int]", "ns::Box<int>::operator int *"},
        {"std::string ns::W::f() const::L::g(int) &&", "ns::W::f() const::L::g"},
        {"auto ns::W::operator()(int) const::(anonymous class)::operator()() const",
            "ns::W::operator()(int) const::(anonymous class)::operator()"},
        {"static void* ns::W::operator new(size_t)", "ns::W::operator new"},
        {"bool ns::operator<(const ns::W&, const ns::W&)", "ns::operator<"},
        {"void ns::cooperator(int)", "ns::cooperator"},
        {"void ns::{anonymous}::f()::<lambda(int)> mutable", "ns::{anonymous}::f()::<lambda(int)>"},
        {"int* ns::operator<<(int)::Z::q()", "ns::operator<<(int)::Z::q"},
        {"auto ns::W::operator->()::(anonymous class)::operator()() const",
            "ns::W::operator->()::(anonymous class)::operator()"},
        {"void f() [with char C = '(']", "f"}, {"void f() [C = ']']", "f"},
        {"void (*(*ns::W::f(int))(int))(long)", "ns::W::f"}, {")", ")"},
        {"void ns::f(T) requires  integral<T> [with T = int]", "ns::f"},
        {"ns::Box<T>::Box() requires true [with T = int]", "ns::Box<T>::Box"},
        {"ns::W::operator void (*)(int)() const", "ns::W::operator void (*)(int)"},
        {"int (& ns::f(int))[3]", "ns::f"}, {"const std::vector<T>& ns::f()", "ns::f"},
        {"bool ns::W::operator->*(int) const", "ns::W::operator->*"},
        {"bool ns::W::operator[](int)", "ns::W::operator[]"},
        {"ns::W& ns::W::operator=(int)", "ns::W::operator="}, {"((", "(("}};
    for (const auto &[signature, name] : rows) {
        EXPECT_EQ(Vyn::Detail::qualifiedNameOf(signature), name) << signature;
    }
}

} // namespace
