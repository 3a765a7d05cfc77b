// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// The power fails during and after copies. The program mounts a file system and shuts it down
/// without writing what is in memory.

#include "faults/Faults.h"

#include <fcntl.h>
#include <map>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mount.h>

namespace {

using namespace Vyn::Test;

bool run(const QString &command)
{
    return std::system(command.toLocal8Bit().constData()) == 0;
}

/// An ext4 file system in a file.
class Disk {
public:
    ~Disk() { stop(); }

    bool isMade() const
    {
        // In a private mount namespace, the mount ends with this process.
        return unshare(CLONE_NEWNS) == 0 &&
               mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
               run(u"mkfs.ext4 -q "_s + mImage + u" 32M"_s) && FileUtils::makeFolder(mFolder) &&
               start();
    }

    /// Loses what is not on the disk yet.
    void cutPower() const
    {
        constexpr unsigned long kShutDown = _IOR('X', 125, __u32);
        __u32 withoutFlushingTheJournal = 2;
        call([&](int folder) { return ioctl(folder, kShutDown, &withoutFlushingTheJournal); });
        require(stop() && start(), "mounts again");
    }

    /// Writes to the disk what is in memory.
    void sync() const { call(syncfs); }

    QString path(const char *name) const { return mFolder + u'/' + QString::fromUtf8(name); }

private:
    bool start() const { return run(u"mount -o loop "_s + mImage + u' ' + mFolder); }
    bool stop() const { return umount(mFolder.toLocal8Bit().constData()) == 0; }

    template<class Call>
    void call(const Call &onFolder) const
    {
        const int folder = open(mFolder.toLocal8Bit().constData(), O_RDONLY | O_CLOEXEC);
        require(onFolder(folder) == 0, "the disk obeys");
        close(folder);
    }

    QTemporaryDir mHome;
    QString mImage = mHome.filePath(u"image"_s);
    QString mFolder = mHome.filePath(u"disk"_s);
};

/// Cuts the power at once after copies that returned \a isCopied. Requires that \a files have their
/// content.
void cutAfter(const Disk &disk, bool isCopied, const std::map<const char *, QByteArray> &files)
{
    require(isCopied, "copies");
    disk.cutPower();
    for (const auto &[name, content] : files) {
        require(read(disk.path(name)) == content, name);
    }
}

/// Cuts the power at once after each kind of copy.
void cutAfterCopies(const Disk &disk)
{
    const QByteArray old(9'000, 'o');
    const QByteArray fresh(20'000, 'n');
    const QString source = disk.path("source");
    write(source, fresh);
    write(disk.path("file"), old); // nobody has synced it
    cutAfter(disk, FileUtils::copyWithBackup(source, disk.path("file")),
        {{"file", fresh}, {"file.bak", old}});

    write(disk.path("folder/inside"), old);
    cutAfter(disk, FileUtils::copyWithBackup(disk.path("file"), disk.path("folder")),
        {{"folder", fresh}, {"folder.bak/inside", old}});

    write(disk.path("tree/sub/deep/file"), fresh);
    require(FileUtils::makeFolder(disk.path("tree/empty")), "makes a folder");
    cutAfter(disk, FileUtils::copyRecursively(disk.path("tree"), disk.path("new/tree")),
        {{"new/tree/sub/deep/file", fresh}});
    require(FileUtils::isFolder(disk.path("new/tree/empty")), "its folders survive the cut");
}

} // namespace

int main()
{
    const Disk disk;
    if (!disk.isMade()) {
        notTested("only root may mount a file of its own as a disk");
    }
    cutAfterCopies(disk);
    for (const bool isThere : {false, true}) {
        const int stops = killCopiesAtEachStop(
            disk.path(""), isThere, [&] { disk.sync(); }, [&] { disk.cutPower(); });
        std::printf("the power failed at %d stops\n", stops);
    }
    return 0;
}
