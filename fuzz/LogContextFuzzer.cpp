// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "Require.h"

#include <ovrabase/logging/LogContext.h>

#include <functional>
#include <fuzzer/FuzzedDataProvider.h>
#include <iostream>

namespace {

/// What __PRETTY_FUNCTION__ and __FUNCTION__ could be for one function, and its qualified name.
struct Signature {
    std::string text;
    std::string function;
    std::string name;
};

std::string typeFrom(FuzzedDataProvider &input)
{
    return input.PickValueInArray(
        {"int", "const char *", "T&&", "unsigned int", "std::function<f(int)>", "ns::Box<(ns::E)1>",
            "ns::Box<'('>", "ns::Box<\"a)](<'\">", "ns::Box<&ns::W::operator<< >",
            "std::map<int, std::vector<T> >::iterator", "decltype ((a + 1))", "decltype(a->b())"});
}

std::string parametersFrom(FuzzedDataProvider &input)
{
    return input.PickValueInArray(
        {"()", "(void)", "(int)", "(const T&, ns::W)", "(void (*)(f), char)", "(int (&)[3])",
            "(ns::Box<(3 > 2)>)", "(std::function<ns::W(int)>)", "(T...)"});
}

std::string qualifiersFrom(FuzzedDataProvider &input)
{
    return input.PickValueInArray({"", " const", " volatile &&", " const &", " const volatile"});
}

std::string scopeFrom(FuzzedDataProvider &input)
{
    switch (input.ConsumeIntegralInRange(0, 2)) {
    case 0:
        return input.PickValueInArray({"ns::", "W::", "f::", "(anonymous namespace)::",
            "{anonymous}::", "(unnamed class)::", "(anonymous class)::", "<lambda(int)>::",
            "Box<T>::", "operators::", "(lambda at it's.cpp:1:2)::"});
    case 1:
        return std::string("Box<").append(typeFrom(input)).append(">::");
    default: // a class inside a function
        return std::string("g")
            .append(parametersFrom(input))
            .append(qualifiersFrom(input))
            .append("::");
    }
}

Signature signatureFrom(FuzzedDataProvider &input)
{
    std::string scope;
    while (input.ConsumeBool()) {
        scope += scopeFrom(input);
    }
    Signature made;
    made.function = input.PickValueInArray({"f", "W", "~W", "operator_", "operator()", "operator*",
        "operator&&", "operator->*", "operator<<", "operator<=>", "operator>", "operator[]",
        "operator,", "operator new", "operator delete []", "operator unsigned int",
        "operator void (*)(int)", "operator\"\"_x"});
    made.name = scope + made.function + input.PickValueInArray({"", "[abi:cxx11]"});
    made.text = made.name + parametersFrom(input) + qualifiersFrom(input);
    switch (input.ConsumeIntegralInRange(0, 4)) {
    case 0: // no return type, as for a constructor
        break;
    case 1:
        made.text = "void (* " + made.text + ")(char)";
        break;
    case 2:
        made.text = "int (ns::W::*" + made.text + ")(long)";
        break;
    default:
        made.text = typeFrom(input) + ' ' + made.text;
    }
    made.text += input.PickValueInArray({"", " requires  integral<T> && (N > 1)"});
    made.text +=
        input.PickValueInArray({"", " [with T = int (&)[3]; f = f(int)]", " [C = ')', D = ']']"});
    return made;
}

} // namespace

/// Half of the inputs are any text, the others choose the parts of a signature.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider input(data, size);
    if (input.ConsumeBool()) {
        const Signature made = signatureFrom(input);
        const std::string_view name = Vyn::Detail::qualifiedNameOf(made.text, made.function);
        if (name != made.name) {
            std::cerr << made.text << "\n  gives " << name << "\n  for   " << made.name << '\n';
            std::abort();
        }
        return 0;
    }
    const std::string function = input.ConsumeRandomLengthString(16);
    const std::string text = input.ConsumeRemainingBytesAsString();
    const std::string_view name = Vyn::Detail::qualifiedNameOf(text, function);
    const std::less_equal<const char *> isNotAfter;
    require(isNotAfter(text.data(), name.data()));
    require(isNotAfter(name.data() + name.size(), text.data() + text.size()));
    return 0;
}
