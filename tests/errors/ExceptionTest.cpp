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

/// Expects that each class is caught as Category and answers its place in this order, and that the
/// category is number zero.
template<class Category, class... Es, class... Arguments>
void expectNumberedFromZero(const Arguments &...arguments)
{
    const auto expectCaught = []<class E>(E thrown, unsigned int subCode) {
        SCOPED_TRACE(typeid(E).name());
        static_assert(
            std::is_nothrow_move_constructible_v<E> && std::is_nothrow_move_assignable_v<E>);
        const E copy = thrown; // -Wdeprecated-copy-dtor looks on
        thrown = copy;
        try {
            throw thrown;
        } catch (const Category &caught) {
            EXPECT_EQ(static_cast<const BaseException &>(caught).errorSubCode(), subCode);
            EXPECT_THAT(caught.what(), StrEq("told"));
            if constexpr (std::is_same_v<Category, IOException>) {
                EXPECT_EQ(caught.subject(), QStringLiteral("/a/subject"));
            }
        }
    };
    unsigned int subCode = 0;
    (expectCaught(Es(arguments...), subCode++), ...);
    expectCaught(Category(arguments...), 0);
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
    EXPECT_THAT(FileOpenException(std::string(text), QString()).what(), StrEq(text));
    EXPECT_THAT(FileOpenException(QString::fromUtf8(text), QString()).what(), StrEq(text));
    EXPECT_THAT(BaseException(static_cast<const char *>(nullptr)).what(), StrEq(""));
}

TEST(Exception, ATraceOverwritesTheMessageFromItsBeginning)
{
    BaseException exception("abcdef");
    for (const char *const what : {" <Xdef", " <X <X", " <X <X <X"}) {
        exception.addTrace("X");
        EXPECT_THAT(exception.what(), StrEq(what));
    }
}

TEST(Exception, ACopyIsTracedFromItsBeginningAndAMoveGoesOn)
{
    BaseException original("abcdef");
    original.addTrace("XX");
    BaseException copied(original);
    BaseException assigned("");
    assigned = original;
    for (BaseException *copy : {&copied, &assigned}) {
        copy->addTrace("Y");
        EXPECT_THAT(copy->what(), StrEq(" <YXef"));
    }
    BaseException moved(std::move(original));
    moved.addTrace("Z");
    EXPECT_THAT(moved.what(), StrEq(" <XX <Z"));
}

} // namespace
} // namespace Vyn::Exception
