// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"

#include <ovrabase/platform/WindowsUtils.h>

#include <QDir>
#include <QFile>
#include <QSettings>

#include <gmock/gmock.h>

#include <cerrno>
#include <sys/resource.h>

namespace {

using namespace Vyn::OvraBase;

QStringList idsOf(const auto &devices)
{
    QStringList ids;
    for (const auto &device : devices) {
        ids.append(device.instanceId);
    }
    ids.sort();
    return ids;
}

TEST(Devices, DisksAreThoseOfTheKernel)
{
    QStringList ids;
    for (const QFileInfo &link :
        QDir(QStringLiteral("/sys/class/block")).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile uevent(link.filePath() + QStringLiteral("/uevent"));
        if (uevent.open(QFile::ReadOnly) && uevent.readAll().contains("DEVTYPE=disk\n")) {
            ids.append(link.canonicalFilePath().mid(qsizetype(std::string_view("/sys").size())));
        }
    }
    ids.sort();

    const auto disks = getDisksInfo();

    EXPECT_EQ(idsOf(disks), ids);
    for (const DeviceInfo &disk : disks) {
        EXPECT_EQ(disk.deviceClass, QStringLiteral("block"));
        EXPECT_EQ(disk.pdo, QStringLiteral("/dev/") + QFileInfo(disk.instanceId).fileName());
    }
}

TEST(Devices, ASetThatCannotBeOpenedIsLogged)
{
    Vyn::Test::RecordedLog log;
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit none = before;
    none.rlim_cur = 0;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    const auto disks = getDisksInfo();
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);

    EXPECT_TRUE(disks.empty());
    EXPECT_THAT(log.take(), testing::ElementsAre(Vyn::Test::Record{2,
                                "Debug: WindowsUtils.cpp:64 Vyn::OvraBase::enumerateDevices()",
                                "Cannot get devices: " + errorMessage(EMFILE)}));
}

} // namespace
