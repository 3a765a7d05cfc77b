// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/text/StringUtils.h>

#include <gmock/gmock.h>

#include <cstddef>

namespace {

thread_local std::size_t requestedBytes = 0;

} // namespace

// In the place of the one that the standard library and Qt allocate with.
extern "C" void *__libc_malloc(std::size_t size);
extern "C" void *malloc(std::size_t size) noexcept
{
    requestedBytes += size;
    return __libc_malloc(size);
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
