// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"

#include <ovrabase/platform/WindowsUtils.h>

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

#include <cerrno>
#include <sys/resource.h>

namespace {

using namespace Vyn::OvraBase;

TEST(Devices, DisksAreThoseOfTheKernel)
{
    QStringList expected;
    for (const QFileInfo &link :
        QDir(QStringLiteral("/sys/class/block")).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile uevent(link.filePath() + QStringLiteral("/uevent"));
        if (uevent.open(QFile::ReadOnly) && uevent.readAll().contains("DEVTYPE=disk\n")) {
            expected.append(QStringLiteral("block /dev/%1 /sys%2")
                                .arg(link.fileName(), link.canonicalFilePath().mid(4)));
        }
    }
    QStringList disks;
    for (const DeviceInfo &disk : getDisksInfo()) {
        disks.append(
            QStringLiteral("%1 %2 /sys%3").arg(disk.deviceClass, disk.pdo, disk.instanceId));
    }
    EXPECT_THAT(disks, testing::UnorderedElementsAreArray(expected));
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
