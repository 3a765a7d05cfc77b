// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/text/StringUtils.h>

#include <gmock/gmock.h>

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t requestedBytes = 0;

} // namespace

// Both forms: what operator delete below frees must come from here.
void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    requestedBytes += size;
    return std::malloc(size == 0 ? 1 : size);
}

void *operator new(std::size_t size)
{
    if (void *memory = operator new(size, std::nothrow)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace Vyn::OvraBase::StringUtils {
namespace {

template<class Work>
std::size_t bytesRequestedBy(Work work)
{
    const std::size_t before = requestedBytes;
    work();
    return requestedBytes - before;
}

/// A text whose units are all different, beginning with \a first.
QString distinct(qsizetype size, char16_t first)
{
    QString result(size, Qt::Uninitialized);
    for (QChar &unit : result) {
        unit = QChar(first++);
    }
    return result;
}

TEST(EditDistanceMemory, TextsOfUpTo64UnitsNeedNone)
{
    const QString a = distinct(64, u'0');
    const QString b = distinct(64, 0x0400);
    const DamerauLevenshteinMatcher matcher(a);

    EXPECT_EQ(bytesRequestedBy([&] { damerauLevenshteinDistance(a, b); }), 0U);
    EXPECT_EQ(bytesRequestedBy([&] { damerauLevenshteinSubstringDistance(b, a); }), 0U);
    EXPECT_EQ(bytesRequestedBy([&] { matcher.distance(b); }), 0U);
    EXPECT_EQ(bytesRequestedBy([&] { matcher.substringDistance(b); }), 0U);
}

TEST(EditDistanceMemory, LongTextsNeedLittle)
{
    const QString a = distinct(20'000, 0);
    const QString b = distinct(20'000, 10'000);
    const QString c = distinct(2'000, 15'000);

    const auto isLittle = testing::AllOf(testing::Gt(0U), testing::Lt(1U << 20));
    EXPECT_THAT(bytesRequestedBy([&] { damerauLevenshteinDistance(a, b); }), isLittle);
    EXPECT_THAT(bytesRequestedBy([&] { damerauLevenshteinSubstringDistance(a, c); }), isLittle);
    EXPECT_THAT(bytesRequestedBy([&] { const DamerauLevenshteinMatcher made(a); }), isLittle);
}

} // namespace
} // namespace Vyn::OvraBase::StringUtils
