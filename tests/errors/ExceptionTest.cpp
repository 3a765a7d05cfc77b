// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/errors/Exception.h>

#include <gtest/gtest.h>

#include <typeinfo>
#include <utility>

namespace {

using namespace Vyn::Exception;

/// Expects that each of the classes Es is caught as Category, and that its sub-code is its position
/// in Es, counted from 0. The sub-code of Category itself must be 0.
template<class Category, class... Es, class... Arguments>
void expectNumberedFromZero(const Arguments &...arguments)
{
    const auto expectCaught = []<class E>(const E &thrown, unsigned int subCode) {
        SCOPED_TRACE(typeid(E).name());
        EXPECT_THROW(throw thrown, Category); // its copy must not cause -Wdeprecated-copy-dtor
        EXPECT_EQ(static_cast<const BaseException &>(thrown).errorSubCode(), subCode);
    };
    unsigned int subCode = 0;
    (expectCaught(Es(arguments...), subCode++), ...);
    expectCaught(Category(arguments...), 0);
}

TEST(Exception, EachClassHasItsCategoryAndSubCode)
{
    expectNumberedFromZero<InternalException, LogicErrorException, RuntimeErrorException,
        DomainErrorException>("told");
    expectNumberedFromZero<IOException, FileOpenException, FileReadingException,
        FileWritingException, FileCopyException, FileFormatException, FileDeletionException,
        FolderCreationException, FolderNotFoundException, FolderDeletionException,
        DriveMountException, DriveUnmountException, NetworkConnectionException>("told", QString());
    expectNumberedFromZero<ParameterException, NullParameterException, InvalidArgumentException>(
        "told");
}

TEST(Exception, EveryMessageTypeGivesTheSameUtf8AndKeepsTheSubject)
{
    const char *const text = "Größe 尺 😀";
    const QString path = QStringLiteral("/a/subject");
    for (const FileOpenException &failure : {FileOpenException(std::string(text), path),
             FileOpenException(QString::fromUtf8(text), path), FileOpenException(text, path)}) {
        EXPECT_STREQ(failure.what(), text);
        EXPECT_EQ(failure.subject(), path);
    }
    EXPECT_STREQ(BaseException(static_cast<const char *>(nullptr)).what(), "");
}

TEST(Exception, TracesOverwriteTheTextAndStartAgainInACopyButNotInAMovedException)
{
    BaseException original("abcdef");
    for (const char *const what : {" <Xdef", " <X <X", " <X <X <X"}) {
        original.addTrace("X");
        EXPECT_STREQ(original.what(), what);
    }
    BaseException copy("");
    copy = original;
    copy.addTrace("Y");
    EXPECT_STREQ(copy.what(), " <Y <X <X");
    BaseException moved(std::move(original));
    moved.addTrace("Z");
    EXPECT_STREQ(moved.what(), " <X <X <X <Z");
}

} // namespace
