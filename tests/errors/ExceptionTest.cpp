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

template<class Category>
struct Expected {
    template<class E>
    static void thrown(unsigned int subCode)
    {
        SCOPED_TRACE(typeid(E).name());
        static_assert(
            std::is_nothrow_move_constructible_v<E> && std::is_nothrow_move_assignable_v<E>);
        try {
            if constexpr (std::is_same_v<Category, IOException>) {
                throw E("told", QStringLiteral("/a/subject"));
            } else {
                throw E("told");
            }
        } catch (const Category &category) {
            const BaseException &caught = category;
            EXPECT_EQ(caught.errorSubCode(), subCode);
            EXPECT_THAT(caught.what(), StrEq("told"));
            E copy(dynamic_cast<const E &>(caught)); // -Wdeprecated-copy-dtor looks on
            copy = E(copy);
            EXPECT_THAT(copy.what(), StrEq("told"));
            if (const auto *io = dynamic_cast<const IOException *>(&caught)) {
                EXPECT_EQ(io->subject(), QStringLiteral("/a/subject"));
            }
        }
    }

    /// The classes in the order of their sub-codes.
    template<class... Es>
    static void numberedFromZero()
    {
        unsigned int subCode = 0;
        (thrown<Es>(subCode++), ...);
    }
};

TEST(Exception, ClassesAnswerTheirPlaceInTheirCategory)
{
    Expected<InternalException>::numberedFromZero<LogicErrorException, RuntimeErrorException,
        DomainErrorException>();
    Expected<IOException>::numberedFromZero<FileOpenException, FileReadingException,
        FileWritingException, FileCopyException, FileFormatException, FileDeletionException,
        FolderCreationException, FolderNotFoundException, FolderDeletionException,
        DriveMountException, DriveUnmountException, NetworkConnectionException>();
    Expected<ParameterException>::numberedFromZero<NullParameterException,
        InvalidArgumentException>();
    // A category itself is number zero.
    Expected<IOException>::numberedFromZero<IOException>();
    Expected<InternalException>::numberedFromZero<InternalException>();
    Expected<ParameterException>::numberedFromZero<ParameterException>();
}

TEST(Exception, EveryMessageTypeGivesTheSameUtf8)
{
    const char *const text = "Größe 尺 😀";
    EXPECT_THAT(BaseException(text).what(), StrEq(text));
    EXPECT_THAT(BaseException(std::string(text)).what(), StrEq(text));
    EXPECT_THAT(BaseException(QString::fromUtf8(text)).what(), StrEq(text));
    EXPECT_THAT(FileOpenException(QString::fromUtf8(text), QString()).what(), StrEq(text));
    EXPECT_THAT(BaseException(static_cast<const char *>(nullptr)).what(), StrEq(""));
}

TEST(Exception, ATraceOverwritesTheMessageFromItsBeginning)
{
    const struct {
        const char *message, *trace, *afterOne, *afterTwo;
    } rows[] = {{"abcdef", "X", " <Xdef", " <X <X"},
        {"abc", "longer", " <longer", " <longer <longer"}, {"", "t", " <t", " <t <t"},
        {"abcdefgh", "", " <cdefgh", " < <efgh"}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.message);
        BaseException exception(row.message);
        exception.addTrace(row.trace);
        EXPECT_THAT(exception.what(), StrEq(row.afterOne));
        exception.addTrace(row.trace);
        EXPECT_THAT(exception.what(), StrEq(row.afterTwo));
    }
}

TEST(Exception, ACopyIsTracedFromItsBeginningAgainAndAMoveGoesOn)
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
