// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// Copies of files with a set-uid bit and of folders that others may not enter, looked at before
/// and after each system call of the copy.

#include "faults/Faults.h"

#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>

namespace {

using namespace Vyn::Test;
namespace fs = std::filesystem;

mode_t modeOf(const fs::path &path)
{
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 ? status.st_mode & ~mode_t{S_IFMT} : 0;
}

/// Requires that no entry below \a copy has a permission that the same entry below \a source lacks,
/// except those of the owner.
void requireNotMoreOpen(const fs::path &source, const fs::path &copy)
{
    std::error_code missing; // the copy may not exist yet
    for (const auto &entry : fs::recursive_directory_iterator(copy, missing)) {
        // The owner of a folder must be able to fill it.
        const mode_t allowed = modeOf(source / fs::relative(entry, copy)) | S_IRWXU;
        require((modeOf(entry) & 0777 & ~allowed) == 0, "a copy adds no permission");
    }
}

/// Requires that programs which \a process may start do not inherit what it has open in \a folder.
void requireClosedOnExec(pid_t process, const fs::path &folder)
{
    const fs::path self = "/proc/" + std::to_string(process);
    for (const auto &entry : fs::directory_iterator(self / "fd")) {
        std::error_code gone;
        if (fs::read_symlink(entry, gone).string().rfind(folder.string(), 0) == 0) {
            const fs::path info = self / "fdinfo" / entry.path().filename();
            const auto flags = valueIn(QString::fromStdString(info), "flags:").toUInt(nullptr, 8);
            require((flags & O_CLOEXEC) != 0, "a handle is close-on-exec");
        }
    }
}

} // namespace

int main()
{
    umask(0);
    const QTemporaryDir folder;
    const fs::path home = folder.path().toStdString();
    const struct {
        const char *name;
        mode_t mode, copied;
    } entries[] = {{"file", 06755, 0755}, {"private/file", 0640, 0640}, {"private", 0700, 0700},
        {"shared/file", 0777, 0777}, {"shared", 01777, 0755}, {"group/file", 02755, 0755},
        {"group", 02750, 0750}, {"fixed/file", 0444, 0444}, {"fixed", 0555, 0555}};
    for (const auto &entry : entries) {
        const fs::path path = home / "source" / entry.name;
        if (!fs::is_directory(path)) {
            write(QString::fromStdString(path), entry.name);
        }
        fs::permissions(path, fs::perms(entry.mode));
    }
    fs::create_directory(home / "new");
    fs::permissions(home / "new", fs::perms(02755)); // new folders inherit the set-gid bit

    const QString source = folder.filePath(u"source"_s);
    const QString single = folder.filePath(u"single"_s);
    const auto call = [&] {
        const QString copy = folder.filePath(u"new/copy"_s);
        require(FileUtils::copyRecursively(source, copy), "copies the tree");
        require(FileUtils::copyWithBackup(source + u"/file"_s, single), "copies a file");
    };
    runInStops(call, [&](pid_t process) {
        requireNotMoreOpen(home / "source", home / "new/copy");
        requireClosedOnExec(process, home);
        return false;
    });
    for (const auto &entry : entries) {
        require(modeOf(home / "new/copy" / entry.name) == entry.copied, entry.name);
    }
    require(modeOf(single.toStdString()) == 0755, "a single copy has no set-uid bit");
    umask(077);
    require(FileUtils::copyWithBackup(source + u"/shared/file"_s, single), "copies a file");
    require(modeOf(single.toStdString()) == 0777, "the umask does not change a copy");
    return 0;
}
