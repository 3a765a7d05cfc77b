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

TEST(EditDistanceMemory, IsNoneForTextsOfUpTo128Units)
{
    const QString a = distinct(128, u'0');
    const QString b = distinct(128, 0x0400);
    const DamerauLevenshteinMatcher matcher(a);

    EXPECT_EQ(bytesRequestedBy([&] { damerauLevenshteinDistance(a, b); }), 0U);
    EXPECT_EQ(bytesRequestedBy([&] { damerauLevenshteinSubstringDistance(b, a); }), 0U);
    EXPECT_EQ(bytesRequestedBy([&] { matcher.distance(b); }), 0U);
    EXPECT_EQ(bytesRequestedBy([&] { matcher.distance(b, 200); }), 0U);
    EXPECT_EQ(bytesRequestedBy([&] { matcher.substringDistance(b); }), 0U);
}

TEST(EditDistanceMemory, IsAByteForEachUnitOfALongText)
{
    const QString a = distinct(20'000, 0);
    const QString b = distinct(20'000, 10'000);
    const QString c = distinct(2'000, 15'000);

    EXPECT_EQ(bytesRequestedBy([&] { damerauLevenshteinDistance(a, b); }), 20'000U);
    EXPECT_EQ(bytesRequestedBy([&] { damerauLevenshteinSubstringDistance(a, c); }), 2'000U);
}

TEST(EditDistanceMemory, OfAMatcherIsOneAndAHalfKibibytesFor64Units)
{
    constexpr std::size_t kBands = 20'000 / 64 + 1;
    const QString a = distinct(20'000, 0);
    EXPECT_THAT(bytesRequestedBy([&] { const DamerauLevenshteinMatcher made(a); }),
        testing::AllOf(testing::Gt(kBands * 1024), testing::Lt(kBands * 1600)));
}

} // namespace
} // namespace Vyn::OvraBase::StringUtils
