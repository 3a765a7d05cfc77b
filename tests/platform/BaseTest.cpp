// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/Guards.h"
#include "support/RecordedLog.h"

#include <ovrabase/platform/base.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QResource>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace {

using namespace Vyn::OvraBase;
using namespace Vyn::Test;
using namespace testing;

/// Copies the file \a source to \a path. The guard removes the copy.
[[nodiscard]] Guard copied(const QString &source, const QString &path)
{
    EXPECT_TRUE(QFileInfo(path).dir().mkpath(u"."_s));
    QFile::remove(path); // what a killed run left
    EXPECT_TRUE(QFile::copy(source, path));
    return Guard([path] { EXPECT_TRUE(QFile::remove(path)) << "Windows keeps what is in use"; });
}

struct Base : testing::Test {
    const QString mFolder = QCoreApplication::applicationDirPath() + u'/';
    const QString mPlugin = mFolder + u"ovrabaseTestPlugin.dll.6.0"_s;
    const QString mResources = QStringLiteral(TEST_RESOURCES);
    RecordedLog mLog;
};

TEST_F(Base, NamesTheProductTheVersionAndTheExtensionOfLibraries)
{
    EXPECT_EQ(applicationName(), u"Tessik"_s);
    EXPECT_EQ(applicationArdelName(), u"Ardel Sulvane 3D Tessik"_s);
    EXPECT_EQ(getApplicationVersionString(), u"6.0.1"_s);
    EXPECT_EQ(getSharedLibraryExtension(), u".dll"_s);
}

TEST_F(Base, TakesTheUserFromTheFirstVariableThatIsNotEmpty)
{
    const struct {
        const char *user, *username, *expected;
    } rows[] = {{"j\xc3\xb6rg", "bob", "j\xc3\xb6rg"}, {"", "bob", "bob"}, {nullptr, nullptr, ""}};
    for (const auto &row : rows) {
        const auto user = withVariable("USER", row.user);
        const auto username = withVariable("USERNAME", row.username);
        EXPECT_EQ(getCurrentUserName(), QString::fromLocal8Bit(row.expected));
    }
}

TEST_F(Base, FindsALibraryByTheFirstTwoPartsOfItsNameAndThenItsSymbols)
{
    // The characters are not in the code page of Windows.
    const auto copy = copied(mPlugin, mFolder + u"\u63D2\u4EF6.dll"_s);
    for (const QString &name : {u"ovrabaseTestPlugin"_s, u"ovrabaseTestPlugin.dll.9.9"_s,
             u"/no/such/folder/ovrabaseTestPlugin.dll"_s, u"\u63D2\u4EF6"_s}) {
        QString error = u"before"_s;
        void *const library = loadSharedLibrary(name, &error);
        ASSERT_NE(library, nullptr) << name.toStdString();
        EXPECT_EQ(error, QString());
        EXPECT_NE(loadSymbol(library, u"plugInServices"_s, &error), nullptr);
        EXPECT_EQ(error, QString());
        for (void *const from : {library, static_cast<void *>(nullptr)}) {
            EXPECT_EQ(loadSymbol(from, u"noSuchSymbol"_s, &error), nullptr);
            EXPECT_NE(std::exchange(error, {}), QString());
        }
        closeSharedLibrary(library);
    }
    closeSharedLibrary(nullptr);
    EXPECT_THAT(mLog.take(), IsEmpty());
}

TEST_F(Base, LogsThatALibraryIsNotBesideTheApplication)
{
    for (const QString &name : {mResources, QString()}) {
        QString error;
        EXPECT_EQ(loadSharedLibrary(name, &error), nullptr);
        EXPECT_EQ(error, u"Failed to retrieve dynamic library: "_s + name);
        EXPECT_THAT(mLog.take(),
            ElementsAre(Record{
                2, "Debug: base.cpp:92 Vyn::OvraBase::loadSharedLibrary()", error.toStdString()}));
    }
}

TEST_F(Base, FailsWithoutARecordWhenTheFirstMatchingFileIsNoLibrary)
{
    const QTemporaryDir folder(mFolder + u"ovrabaseTwice.dll.4.XXXXXX"_s);
    const auto damaged = copied(mResources, mFolder + u"ovrabaseTwice.dll.5"_s);
    const auto sound = copied(mPlugin, mFolder + u"ovrabaseTwice.dll.6"_s);
    QString error;
    EXPECT_EQ(loadSharedLibrary(u"ovrabaseTwice.dll"_s, &error), nullptr);
    EXPECT_TRUE(error.contains(u"ovrabaseTwice.dll.5"_s)) << error.toStdString();
    EXPECT_THAT(mLog.records(), IsEmpty());
}

/// The end of the context of records about resources.
const std::string kRegistering = " Vyn::OvraBase::registerExternalResource()";

TEST_F(Base, PrefersAResourceOfTheDevelopmentTreeEvenWhenItIsDamaged)
{
    const QString folder = QStringLiteral(TEST_DEV_RESOURCE_DIR);
    if (folder.isEmpty()) {
        GTEST_SKIP() << "NOT TESTED, because the library is built without a development folder";
    }
    const QString developed = folder + u"/ovrabaseTest.rcc"_s;
    const auto shadowed = copied(mResources, mFolder + u"Resources/ovrabaseTest.rcc"_s);
    for (const bool isSound : {true, false}) {
        const auto file = copied(isSound ? mResources : mPlugin, developed);
        EXPECT_EQ(registerExternalResource(u"ovrabaseTest.rcc"_s), isSound);
        EXPECT_EQ(QResource::unregisterResource(developed), isSound);
        EXPECT_THAT(mLog.take(),
            ElementsAre(Record{0, "Debug: base.cpp:157" + kRegistering,
                std::string("External resource ovrabaseTest.rcc bound from dev environment: ") +
                    (isSound ? "true" : "false")}));
    }
}

TEST_F(Base, RegistersTheOtherResourcesOfAListWhenOneIsMissing)
{
    const QString name = u"ovrabaseTest.rcc"_s;
    const QString folder = mFolder + u"Resources"_s;
    const auto file = copied(mResources, folder + u'/' + name);
    EXPECT_TRUE(registerExternalResource(std::vector<QString>()));
    EXPECT_FALSE(registerExternalResource({u"none.rcc"_s, name}));
    EXPECT_TRUE(registerExternalResource({name, name}));
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(QResource::unregisterResource(folder + u'/' + name));
    }

    const Record bound{0, "Debug: base.cpp:162" + kRegistering,
        "External resource ovrabaseTest.rcc bound from installed file: true"};
    const Record missing{1, "Debug: base.cpp:166" + kRegistering,
        "Resource file none.rcc not found in directories " TEST_DEV_RESOURCE_DIR " and " +
            folder.toStdString()};
    EXPECT_THAT(mLog.take(), ElementsAre(missing, bound, bound, bound));
}

} // namespace
