// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"

#include <ovrabase/platform/base.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QResource>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace Vyn::OvraBase {
namespace {

using Test::Record;
using Test::RecordedLog;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Identity, NamesTheProductAndItsVersion)
{
    EXPECT_EQ(applicationName(), QStringLiteral("Tessik"));
    EXPECT_EQ(applicationArdelName(), QStringLiteral("Ardel Sulvane 3D Tessik"));
    EXPECT_EQ(getApplicationVersionString(), QStringLiteral("6.0.1"));
    EXPECT_EQ(getSharedLibraryExtension(), QStringLiteral(".dll"));
}

/// Sets or unsets an environment variable for as long as it lives.
class Environment {
public:
    Environment(const char *name, const char *value)
        : mName(name)
        , mBefore(qgetenv(name))
        , mWasSet(qEnvironmentVariableIsSet(name))
    {
        value ? qputenv(name, value) : qunsetenv(name);
    }
    ~Environment() { mWasSet ? qputenv(mName, mBefore) : qunsetenv(mName); }
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;

private:
    const char *mName;
    QByteArray mBefore;
    bool mWasSet;
};

TEST(Identity, TakesTheUserFromTheFirstVariableThatIsNotEmpty)
{
    const struct {
        const char *user;
        const char *username;
        const char *expected;
    } rows[] = {{"ada", "bob", "ada"}, {"", "bob", "bob"}, {nullptr, "bob", "bob"},
        {nullptr, nullptr, ""}, {"j\xc3\xb6rg", nullptr, "j\xc3\xb6rg"}};
    for (const auto &row : rows) {
        const Environment user("USER", row.user);
        const Environment username("USERNAME", row.username);
        EXPECT_EQ(getCurrentUserName(), QString::fromLocal8Bit(row.expected));
    }
}

QString besideTheTests(const QString &fileName)
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(fileName);
}

QString pluginFile()
{
    return besideTheTests(QStringLiteral("ovrabaseTestPlugin.dll.6.0"));
}

TEST(SharedLibrary, IsFoundBesideTheApplicationByTheFirstTwoPartsOfItsName)
{
    const RecordedLog log;
    for (const char *name : {"ovrabaseTestPlugin", "ovrabaseTestPlugin.dll",
             "ovrabaseTestPlugin.dll.9.9", "/no/such/folder/ovrabaseTestPlugin.dll"}) {
        void *library = loadSharedLibrary(QString::fromLatin1(name));
        ASSERT_NE(library, nullptr) << name;
        EXPECT_NE(loadSymbol(library, QStringLiteral("plugInServices")), nullptr);
        EXPECT_EQ(loadSymbol(library, QStringLiteral("noSuchSymbol")), nullptr);
        closeSharedLibrary(library);
    }
    EXPECT_THAT(log.records(), IsEmpty());

    EXPECT_EQ(loadSymbol(nullptr, QStringLiteral("plugInServices")), nullptr);
    closeSharedLibrary(nullptr);
}

TEST(SharedLibrary, ThatIsMissingIsLogged)
{
    const QTemporaryDir elsewhere;
    const QString copy = elsewhere.filePath(QStringLiteral("ovrabaseElsewhere.dll"));
    ASSERT_TRUE(QFile::copy(pluginFile(), copy));
    const RecordedLog log;
    EXPECT_EQ(loadSharedLibrary(copy), nullptr) << "only the application's folder counts";
    EXPECT_THAT(log.records(),
        ElementsAre(Record{2, "Debug: base.cpp:92 Vyn::OvraBase::loadSharedLibrary()",
            "Failed to retrieve dynamic library: " + copy.toStdString()}));
}

/// A file of the tests' own that goes when this object does.
class OwnFile {
public:
    OwnFile(const QString &path, const QByteArray &content)
        : mFile(path)
    {
        EXPECT_TRUE(QFileInfo(path).dir().mkpath(QStringLiteral(".")));
        EXPECT_TRUE(mFile.open(QIODevice::WriteOnly) && mFile.write(content) == content.size());
        mFile.close();
    }
    ~OwnFile() { mFile.remove(); }
    OwnFile(const OwnFile &) = delete;
    OwnFile &operator=(const OwnFile &) = delete;

private:
    QFile mFile;
};

TEST(SharedLibrary, IsTheFirstMatchAndARefusedOneIsNotLogged)
{
    const OwnFile damaged(besideTheTests(QStringLiteral("ovrabaseTwice.dll.5")), "no library");
    const QString sound = besideTheTests(QStringLiteral("ovrabaseTwice.dll.6"));
    ASSERT_TRUE(QFile::copy(pluginFile(), sound));
    const RecordedLog log;
    EXPECT_EQ(loadSharedLibrary(QStringLiteral("ovrabaseTwice.dll")), nullptr);
    EXPECT_EQ(loadSharedLibrary(QString()), nullptr) << "the first entry is the folder itself";
    EXPECT_THAT(log.records(), IsEmpty());
    EXPECT_TRUE(QFile::remove(sound));
}

class ExternalResource : public testing::Test {
protected:
    static constexpr char kName[] = "ovrabaseTest.rcc";

    ExternalResource()
    {
        QFile file(QStringLiteral(TEST_RESOURCES));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        good = file.readAll();
        EXPECT_FALSE(good.isEmpty());
    }

    static Record bound(int line, const std::string &outcome)
    {
        return {0,
            "Debug: base.cpp:" + std::to_string(line) +
                " Vyn::OvraBase::registerExternalResource()",
            "External resource " + std::string(kName) + " bound from " + outcome};
    }

    static bool contentIsThere()
    {
        return QFile::exists(QStringLiteral(":/ovrabase-test/resources.qrc"));
    }

    const QString name = QString::fromLatin1(kName);
    const QString developed = QDir(QStringLiteral(TEST_DEV_RESOURCE_DIR)).filePath(name);
    const QString installed = besideTheTests(QStringLiteral("Resources/") + name);
    QByteArray good;
    RecordedLog log;
};

TEST_F(ExternalResource, OfTheInstallationIsBound)
{
    const OwnFile file(installed, good);
    EXPECT_FALSE(contentIsThere());
    EXPECT_TRUE(registerExternalResource(name));
    EXPECT_TRUE(contentIsThere());
    EXPECT_TRUE(QResource::unregisterResource(installed));
    EXPECT_THAT(log.records(), ElementsAre(bound(162, "installed file: true")));
}

TEST_F(ExternalResource, OfTheDevelopmentTreeShadowsTheInstalledOneEvenWhenDamaged)
{
    const OwnFile shadowed(installed, good);
    {
        const OwnFile file(developed, good);
        EXPECT_TRUE(registerExternalResource(name));
        EXPECT_TRUE(QResource::unregisterResource(developed));
    }
    const OwnFile damaged(developed, good.left(10));
    EXPECT_FALSE(registerExternalResource(name));
    EXPECT_FALSE(contentIsThere());
    EXPECT_THAT(log.records(),
        ElementsAre(bound(157, "dev environment: true"), bound(157, "dev environment: false")));
}

TEST_F(ExternalResource, ThatIsMissingDoesNotStopAList)
{
    EXPECT_TRUE(registerExternalResource(std::vector<QString>()));
    const OwnFile file(installed, good);
    EXPECT_FALSE(registerExternalResource({QStringLiteral("none.rcc"), name}));
    EXPECT_TRUE(QResource::unregisterResource(installed));
    EXPECT_TRUE(registerExternalResource(std::vector<QString>{name}));
    EXPECT_TRUE(QResource::unregisterResource(installed));

    const auto folder = QFileInfo(installed).path().toStdString();
    EXPECT_EQ(log.records().at(0),
        (Record{1, "Debug: base.cpp:166 Vyn::OvraBase::registerExternalResource()",
            "Resource file none.rcc not found in directories " TEST_DEV_RESOURCE_DIR " and " +
                folder}));
}

} // namespace
} // namespace Vyn::OvraBase
