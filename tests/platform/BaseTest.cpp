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
using testing::HasSubstr;
using testing::IsEmpty;

TEST(Identity, NamesTheProductAndItsVersion)
{
    EXPECT_EQ(applicationName(), QStringLiteral("Tessik"));
    EXPECT_EQ(applicationArdelName(), QStringLiteral("Ardel Sulvane 3D Tessik"));
    EXPECT_EQ(getApplicationVersionString(), QStringLiteral("6.0.1"));
    EXPECT_EQ(getSharedLibraryExtension(), QStringLiteral(".dll"));
}

TEST(Identity, TakesTheUserFromTheFirstVariableThatIsNotEmpty)
{
    const struct {
        const char *user;
        const char *username;
        const char *expected;
    } rows[] = {{"ada", "bob", "ada"}, {"", "bob", "bob"}, {nullptr, "bob", "bob"},
        {nullptr, nullptr, ""}, {"j\xc3\xb6rg", nullptr, "j\xc3\xb6rg"}};
    const auto set = [](const char *name, const char *value) {
        value ? qputenv(name, value) : qunsetenv(name);
    };
    for (const auto &row : rows) {
        set("USER", row.user);
        set("USERNAME", row.username);
        EXPECT_EQ(getCurrentUserName(), QString::fromLocal8Bit(row.expected));
    }
}

QString besideTheTests(const QString &fileName)
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(fileName);
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
        EXPECT_EQ(loadSymbol(library, QStringLiteral("noSuchSymbol"), nullptr), nullptr);
        closeSharedLibrary(library);
    }
    EXPECT_THAT(log.records(), IsEmpty());

    EXPECT_EQ(loadSymbol(nullptr, QStringLiteral("malloc")), nullptr);
    closeSharedLibrary(nullptr);
}

TEST(SharedLibrary, ThatIsMissingIsLogged)
{
    const RecordedLog log;
    EXPECT_EQ(loadSharedLibrary(QStringLiteral(TEST_RESOURCES)), nullptr)
        << "only the application's folder counts";
    EXPECT_THAT(log.records(),
        ElementsAre(Record{2, "Debug: base.cpp:92 Vyn::OvraBase::loadSharedLibrary()",
            "Failed to retrieve dynamic library: " TEST_RESOURCES}));
}

/// A copy of a file that goes when this object does, whole or only its beginning.
class Copy {
public:
    Copy(const QString &source, const QString &path, qint64 size = -1)
        : mFile(path)
    {
        EXPECT_TRUE(QFileInfo(path).dir().mkpath(QStringLiteral(".")));
        mFile.remove(); // what a killed run left
        EXPECT_TRUE(QFile::copy(source, path) && (size < 0 || mFile.resize(size)));
    }
    ~Copy() { mFile.remove(); }
    Copy(const Copy &) = delete;
    Copy &operator=(const Copy &) = delete;

private:
    QFile mFile;
};

TEST(SharedLibrary, IsTheFirstMatchAndARefusedOneIsNotLogged)
{
    const QString plugin = besideTheTests(QStringLiteral("ovrabaseTestPlugin.dll.6.0"));
    const Copy damaged(
        QStringLiteral(TEST_RESOURCES), besideTheTests(QStringLiteral("ovrabaseTwice.dll.5")));
    const Copy sound(plugin, besideTheTests(QStringLiteral("ovrabaseTwice.dll.6")));
    const RecordedLog log;
    EXPECT_EQ(loadSharedLibrary(QStringLiteral("ovrabaseTwice.dll")), nullptr);
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST(SharedLibrary, IsNotHiddenByAFolderOfItsName)
{
    const QTemporaryDir folder(besideTheTests(QStringLiteral("ovrabaseFolder.XXXXXX")));
    const QString name = QFileInfo(folder.path()).fileName();
    EXPECT_EQ(loadSharedLibrary(name), nullptr);
    const Copy plugin(besideTheTests(QStringLiteral("ovrabaseTestPlugin.dll.6.0")),
        folder.path() + QStringLiteral(".dll"));
    void *const library = loadSharedLibrary(name);
    EXPECT_NE(library, nullptr);
    closeSharedLibrary(library);
}

TEST(SharedLibrary, SaysWhyItIsNotLoaded)
{
    const Copy damaged(
        QStringLiteral(TEST_RESOURCES), besideTheTests(QStringLiteral("ovrabaseBad.dll")));
    const auto reasonNotToLoad = [](const char *name) {
        QString error = QStringLiteral("before");
        EXPECT_EQ(loadSharedLibrary(QString::fromLatin1(name), &error), nullptr);
        return error.toStdString();
    };
    EXPECT_THAT(reasonNotToLoad("ovrabaseBad"), HasSubstr("ovrabaseBad.dll"));
    EXPECT_EQ(reasonNotToLoad("ovrabaseNone"), "Failed to retrieve dynamic library: ovrabaseNone");
    EXPECT_EQ(reasonNotToLoad(""), "Failed to retrieve dynamic library: ");

    QString error = QStringLiteral("before");
    void *const library = loadSharedLibrary(QStringLiteral("ovrabaseTestPlugin"), &error);
    EXPECT_EQ(error, QString());
    const QString symbol = QStringLiteral("noSuchSymbol");
    for (void *const from : {library, static_cast<void *>(nullptr)}) {
        EXPECT_EQ(loadSymbol(from, symbol, &error), nullptr);
        EXPECT_NE(error, QString());
    }
    EXPECT_NE(loadSymbol(library, QStringLiteral("plugInServices"), &error), nullptr);
    EXPECT_EQ(error, QString());
    closeSharedLibrary(library);
}

Record resourceRecord(int level, int line, const std::string &message)
{
    return {level,
        "Debug: base.cpp:" + std::to_string(line) + " Vyn::OvraBase::registerExternalResource()",
        message};
}

bool contentIsThere()
{
    return QFile::exists(QStringLiteral(":/ovrabase-test/resources.qrc"));
}

TEST(ExternalResource, OfTheDevelopmentTreeShadowsTheInstalledOneEvenWhenDamaged)
{
    if (std::string(TEST_DEV_RESOURCE_DIR).empty()) {
        GTEST_SKIP() << "the library is built without a development folder";
    }
    const QString source = QStringLiteral(TEST_RESOURCES);
    const QString name = QStringLiteral("ovrabaseTest.rcc");
    const QString developed = QStringLiteral(TEST_DEV_RESOURCE_DIR "/") + name;
    const std::string message = "External resource ovrabaseTest.rcc bound from dev environment: ";
    const RecordedLog log;
    const Copy shadowed(source, besideTheTests(QStringLiteral("Resources/") + name));
    {
        const Copy good(source, developed);
        EXPECT_TRUE(registerExternalResource(name));
        EXPECT_TRUE(QResource::unregisterResource(developed));
    }
    const Copy damaged(source, developed, 10);
    EXPECT_FALSE(registerExternalResource(name));
    EXPECT_FALSE(contentIsThere());
    EXPECT_THAT(log.records(), ElementsAre(resourceRecord(0, 157, message + "true"),
                                   resourceRecord(0, 157, message + "false")));
}

TEST(ExternalResource, ThatIsMissingDoesNotStopAList)
{
    const QString name = QStringLiteral("ovrabaseTest.rcc");
    const QString folder = besideTheTests(QStringLiteral("Resources"));
    const QString installed = folder + QLatin1Char('/') + name;
    const RecordedLog log;
    EXPECT_TRUE(registerExternalResource(std::vector<QString>()));
    const Copy file(QStringLiteral(TEST_RESOURCES), installed);
    for (const bool complete : {false, true}) {
        EXPECT_FALSE(contentIsThere());
        const QString first = complete ? name : QStringLiteral("none.rcc");
        EXPECT_EQ(registerExternalResource({first, name}), complete);
        EXPECT_TRUE(contentIsThere());
        while (QResource::unregisterResource(installed)) {
        }
    }

    const Record bound = resourceRecord(
        0, 162, "External resource ovrabaseTest.rcc bound from installed file: true");
    EXPECT_THAT(log.records(),
        ElementsAre(
            resourceRecord(1, 166,
                "Resource file none.rcc not found in directories " TEST_DEV_RESOURCE_DIR " and " +
                    folder.toStdString()),
            bound, bound, bound));
}

} // namespace
} // namespace Vyn::OvraBase
