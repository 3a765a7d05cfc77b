// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/errors/Exception.h>

#include <gmock/gmock.h>

#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace Vyn::Exception {
namespace {

using testing::StrEq;

/// Expects that \a thrown is caught as a Category and answers \a subCode.
template<class Category, class E>
void expectCaught(const E &thrown, unsigned int subCode)
{
    SCOPED_TRACE(typeid(E).name());
    static_assert(std::is_nothrow_move_constructible_v<E> && std::is_nothrow_move_assignable_v<E>);
    E copy = thrown; // -Wdeprecated-copy-dtor looks on
    copy = thrown;
    try {
        throw copy;
    } catch (const Category &caught) {
        EXPECT_EQ(static_cast<const BaseException &>(caught).errorSubCode(), subCode);
        EXPECT_THAT(caught.what(), StrEq("told"));
        if constexpr (std::is_same_v<Category, IOException>) {
            EXPECT_EQ(caught.subject(), QStringLiteral("/a/subject"));
        }
    }
}

/// Expects that the classes are numbered in this order, and that the category is number zero.
template<class Category, class... Es, class... Arguments>
void expectNumberedFromZero(const Arguments &...arguments)
{
    unsigned int subCode = 0;
    (expectCaught<Category>(Es(arguments...), subCode++), ...);
    expectCaught<Category>(Category(arguments...), 0);
}

TEST(Exception, ClassesAnswerTheirPlaceInTheirCategory)
{
    expectNumberedFromZero<InternalException, LogicErrorException, RuntimeErrorException,
        DomainErrorException>("told");
    expectNumberedFromZero<IOException, FileOpenException, FileReadingException,
        FileWritingException, FileCopyException, FileFormatException, FileDeletionException,
        FolderCreationException, FolderNotFoundException, FolderDeletionException,
        DriveMountException, DriveUnmountException, NetworkConnectionException>(
        "told", QStringLiteral("/a/subject"));
    expectNumberedFromZero<ParameterException, NullParameterException, InvalidArgumentException>(
        "told");
}

TEST(Exception, EveryMessageTypeGivesTheSameUtf8)
{
    const char *const text = "Größe 尺 😀";
    EXPECT_THAT(BaseException(text).what(), StrEq(text));
    EXPECT_THAT(BaseException(std::string(text)).what(), StrEq(text));
    EXPECT_THAT(FileOpenException(std::string(text), QString()).what(), StrEq(text));
    EXPECT_THAT(FileOpenException(QString::fromUtf8(text), QString()).what(), StrEq(text));
    EXPECT_THAT(BaseException(static_cast<const char *>(nullptr)).what(), StrEq(""));
}

TEST(Exception, ATraceOverwritesTheMessageFromItsBeginning)
{
    const struct {
        const char *message, *trace, *afterOne, *afterTwo;
    } rows[] = {{"abcdef", "X", " <Xdef", " <X <X"}, {"", "t", " <t", " <t <t"}};
    for (const auto &row : rows) {
        BaseException exception(row.message);
        exception.addTrace(row.trace);
        EXPECT_THAT(exception.what(), StrEq(row.afterOne));
        exception.addTrace(row.trace);
        EXPECT_THAT(exception.what(), StrEq(row.afterTwo));
    }
}

TEST(Exception, ACopyIsTracedFromItsBeginningAndAMoveGoesOn)
{
    BaseException original("abcdef");
    original.addTrace("X");
    BaseException copied(original);
    BaseException assigned("");
    assigned = original;
    for (BaseException *copy : {&copied, &assigned}) {
        EXPECT_THAT(copy->what(), StrEq(" <Xdef"));
        copy->addTrace("Y");
        EXPECT_THAT(copy->what(), StrEq(" <Ydef"));
    }
    BaseException moved(std::move(original));
    moved.addTrace("Z");
    EXPECT_THAT(moved.what(), StrEq(" <X <Z"));
}

} // namespace
} // namespace Vyn::Exception
