// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// The power fails during and after copies. The program mounts a file system and shuts it down
/// without writing what is in memory.

#include "faults/Faults.h"

#include <QProcess>

#include <fcntl.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mount.h>

namespace {

using namespace Vyn::Test;

/// An ext4 file system in a file.
class Disk {
public:
    ~Disk() { stop(); }

    bool isMade() const
    {
        // In a private mount namespace, the mount ends with this process.
        return unshare(CLONE_NEWNS) == 0 &&
               mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
               QProcess::execute(u"mkfs.ext4"_s, {u"-q"_s, mImage, u"32M"_s}) == 0 &&
               FileUtils::makeFolder(mFolder) && start();
    }

    /// Loses what is not on the disk yet.
    void cutPower() const
    {
        constexpr unsigned long kShutDown = _IOR('X', 125, __u32);
        __u32 withoutFlushingTheJournal = 2;
        call([&](int folder) { return ioctl(folder, kShutDown, &withoutFlushingTheJournal); });
        require(stop() && start(), "mounts the disk again");
    }

    /// Writes to the disk what is in memory.
    void sync() const { call(syncfs); }

    QString path(const char *name) const { return mFolder + u'/' + QString::fromUtf8(name); }

private:
    bool start() const
    {
        return QProcess::execute(u"mount"_s, {u"-o"_s, u"loop"_s, mImage, mFolder}) == 0;
    }
    bool stop() const { return umount(mFolder.toLocal8Bit().constData()) == 0; }

    void call(const std::function<int(int)> &onFolder) const
    {
        const int folder = open(mFolder.toLocal8Bit().constData(), O_RDONLY | O_CLOEXEC);
        require(onFolder(folder) == 0, "the call for the disk succeeds");
        close(folder);
    }

    QTemporaryDir mHome;
    QString mImage = mHome.filePath(u"image"_s);
    QString mFolder = mHome.filePath(u"disk"_s);
};

} // namespace

int main()
{
    const Disk disk;
    if (!disk.isMade()) {
        notTested("that needs root, mkfs.ext4 and a loop device");
    }
    write(disk.path("unsynced"), "lost");
    disk.cutPower();
    require(read(disk.path("unsynced")).isEmpty(), "a power cut loses what is not synced");
    const QByteArray old(9'000, 'o');
    const QByteArray fresh(20'000, 'n');
    write(disk.path("source"), fresh);
    write(disk.path("file"), old); // not synced
    require(FileUtils::copyWithBackup(disk.path("source"), disk.path("file")), "copies a file");
    disk.cutPower();
    require(read(disk.path("file")) == fresh && read(disk.path("file.bak")) == old, "syncs both");

    write(disk.path("folder/inside"), old);
    require(FileUtils::copyWithBackup(disk.path("file"), disk.path("folder")), "copies over it");
    disk.cutPower();
    require(read(disk.path("folder")) == fresh && read(disk.path("folder.bak/inside")) == old,
        "has synced the old folder too");

    write(disk.path("tree/sub/deep/file"), fresh);
    require(FileUtils::makeFolder(disk.path("tree/empty")) &&
                FileUtils::copyRecursively(disk.path("tree"), disk.path("new/tree")),
        "copies a folder");
    disk.cutPower();
    require(read(disk.path("new/tree/sub/deep/file")) == fresh &&
                FileUtils::isFolder(disk.path("new/tree/empty")),
        "has synced files and folders");

    for (const bool isThere : {false, true}) {
        killCopiesAtEachStop(
            disk.path(""), isThere, [&] { disk.sync(); }, [&] { disk.cutPower(); });
    }
    return 0;
}
