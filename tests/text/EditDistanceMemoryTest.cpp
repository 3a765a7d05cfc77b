// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/text/StringUtils.h>

#include <gmock/gmock.h>

#include <algorithm>

static thread_local std::size_t requestedBytes = 0;

// Replaces the function that the standard library and Qt allocate with.
extern "C" void *__libc_malloc(std::size_t size);
extern "C" void *malloc(std::size_t size) noexcept
{
    requestedBytes += size;
    return __libc_malloc(size);
}

namespace {

using namespace Vyn::OvraBase::StringUtils;

template<class Work>
std::size_t bytesRequestedBy(Work work)
{
    requestedBytes = 0;
    work();
    return requestedBytes;
}

/// Returns a text whose units are all different, beginning with \a first.
QString distinct(qsizetype size, char16_t first)
{
    QString result(size, Qt::Uninitialized);
    std::generate(result.begin(), result.end(), [&first] { return QChar(first++); });
    return result;
}

TEST(EditDistanceMemory, IsNoneForTextsOfUpTo128UnitsAndAtMostAByteForEachUnitOfTheLonger)
{
    const QString a = distinct(128, u'0');
    const QString b = distinct(128, 0x0400);
    const DamerauLevenshteinMatcher matcher(a);
    EXPECT_EQ(bytesRequestedBy([&] { damerauLevenshteinDistance(a, b); }), 0U);
    EXPECT_EQ(bytesRequestedBy([&] { damerauLevenshteinSubstringDistance(b, a); }), 0U);
    EXPECT_EQ(bytesRequestedBy([&] { matcher.distance(b); }), 0U);
    EXPECT_EQ(bytesRequestedBy([&] { matcher.distance(b, 200); }), 0U);
    EXPECT_EQ(bytesRequestedBy([&] { matcher.substringDistance(b); }), 0U);

    constexpr std::size_t kUnits = 20'000;
    const QString c = distinct(kUnits, 0);
    const QString d = distinct(kUnits, 10'000);
    EXPECT_EQ(bytesRequestedBy([&] { damerauLevenshteinDistance(c, d); }), kUnits);
    EXPECT_EQ(bytesRequestedBy([&] { damerauLevenshteinSubstringDistance(c, b); }), 128U);
    // A matcher needs about 1.5 KiB for every 64 units.
    EXPECT_THAT(bytesRequestedBy([&] { const DamerauLevenshteinMatcher made(c); }),
        testing::AllOf(testing::Gt(kUnits * 16), testing::Lt(kUnits * 25)));
}

} // namespace
