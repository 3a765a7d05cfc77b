// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/RemovalSystem_p.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstddef>
#include <dirent.h>
#include <fcntl.h>
#include <set>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace Vyn::OvraBase::os {

struct CloseStream {
    void operator()(DIR *stream) const { ::closedir(stream); }
};
using Stream = std::unique_ptr<DIR, CloseStream>;

namespace {

/// The greatest number of folders that stay open at a time, besides the top folder of the tree,
/// however deep the tree is. It is well below the usual limit of 1024 open files per process.
constexpr std::size_t kMaxOpenLevels = 64;

/// Opens the folder \a name in the folder \a parent. Returns null and sets errno if it is not a
/// folder or cannot be opened. With O_NOFOLLOW in \a flags, a link is not a folder.
Stream openFolder(int parent, const char *name, int flags)
{
    const int descriptor = ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC | flags);
    if (descriptor < 0) {
        return nullptr;
    }
    Stream stream(::fdopendir(descriptor));
    if (!stream) {
        ::close(descriptor);
    }
    return stream;
}

/// Removes the content of a folder. All calls are relative to the descriptor of a folder, so that
/// they stay in the tree even if another program replaces one of its folders by a link.
class ContentRemoval {
public:
    explicit ContentRemoval(Stream top) { mLevels.push_back({{}, std::move(top), {}, {}}); }

    /// Removes all that can be removed.
    void run()
    {
        for (;;) {
            if (const dirent *entry = ::readdir(mLevels.back().stream.get()); entry != nullptr) {
                if (const std::string_view name = entry->d_name; name != "." && name != "..") {
                    removeOrEnter(*entry);
                }
                continue;
            }
            if (mLevels.size() == 1) {
                return;
            }
            leave();
        }
    }

private:
    /// A folder whose content is being removed: the top, a sub-folder of the top, and so on.
    struct Level {
        std::string name;                ///< its name in the level above; empty for the top
        Stream stream;                   ///< null while the folder is closed
        struct stat identity;            ///< to recognise the folder when it is opened again
        std::set<std::string> kept = {}; ///< entries that may be folders and cannot be removed
    };

    /// Returns the descriptor of the innermost level.
    int descriptor() const { return ::dirfd(mLevels.back().stream.get()); }

    /// Removes \a entry if it is not a folder. Makes a folder the innermost level, except one that
    /// is in `kept`, and one that cannot be opened. Removes the latter if it is empty.
    void removeOrEnter(const dirent &entry)
    {
        const char *const name = entry.d_name;
        // Some file systems do not tell the type. Then the entry may be a folder if unlinkat()
        // fails, whatever the error is: a missing permission is reported before the type.
        if (entry.d_type != DT_DIR &&
            (::unlinkat(descriptor(), name, 0) == 0 || entry.d_type != DT_UNKNOWN)) {
            return;
        }
        if (mLevels.back().kept.contains(name)) {
            return;
        }
        Stream stream = openFolder(descriptor(), name, O_NOFOLLOW);
        struct stat identity {};
        if (stream && ::fstat(::dirfd(stream.get()), &identity) == 0) {
            mLevels.push_back({name, std::move(stream), identity});
            if (mLevels.size() > kMaxOpenLevels + 1) { // the top stays open
                mLevels[mLevels.size() - kMaxOpenLevels].stream.reset();
            }
            return;
        }
        removeOrKeep(name); // a folder that cannot be opened can be removed if it is empty
    }

    /// Removes the folder of the innermost level, whose content has been removed, and returns to
    /// the level above.
    void leave()
    {
        Level done = std::move(mLevels.back());
        mLevels.pop_back();
        if (!mLevels.back().stream && !reopen(mLevels.back(), ::dirfd(done.stream.get()))) {
            // The level above cannot be opened again: go up to the nearest one that is still open.
            while (!mLevels.back().stream) {
                done.name = std::move(mLevels.back().name);
                mLevels.pop_back();
            }
            mLevels.back().kept.insert(done.name);
            return;
        }
        removeOrKeep(done.name.c_str());
    }

    /// Removes the sub-folder \a name of the innermost level if it is empty. If that fails, adds it
    /// to `kept`: the level may be closed and later listed from the beginning again, and must not
    /// enter the sub-folder a second time.
    void removeOrKeep(const char *name)
    {
        if (::unlinkat(descriptor(), name, AT_REMOVEDIR) != 0) {
            mLevels.back().kept.insert(name);
        }
    }

    /// Opens the folder of \a level again, as the parent of its open sub-folder \a child. Returns
    /// false if that fails. Also returns false if the parent is another folder, because a program
    /// has moved \a child.
    static bool reopen(Level &level, int child)
    {
        Stream stream = openFolder(child, "..", 0);
        struct stat identity {};
        if (!stream || ::fstat(::dirfd(stream.get()), &identity) != 0) {
            return false;
        }
        if (identity.st_dev != level.identity.st_dev || identity.st_ino != level.identity.st_ino) {
            return false;
        }
        level.stream = std::move(stream);
        return true;
    }

    std::vector<Level> mLevels; ///< from the top to the innermost level; never empty
};

} // namespace

bool removeEntry(const QString &path)
{
    return ::unlink(QFile::encodeName(path).constData()) == 0;
}

struct OpenFolder::Handles {
    ~Handles()
    {
        if (parent >= 0) {
            ::close(parent);
        }
    }

    int parent = -1;
    QByteArray name; ///< in the parent
    Stream stream;
    bool isThroughLink = false; ///< the path is not a folder: a link there was followed
};

OpenFolder::OpenFolder(const QString &path, LinkAtPath link)
    : mHandles(std::make_unique<Handles>())
{
    const QFileInfo entry(path);
    mHandles->name = QFile::encodeName(entry.fileName());
    mHandles->parent =
        ::open(QFile::encodeName(entry.path()).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    mHandles->stream = openFolder(mHandles->parent, mHandles->name.constData(), O_NOFOLLOW);
    if (!mHandles->stream && errno == ENOTDIR && link == LinkAtPath::Followed) {
        mHandles->stream = openFolder(mHandles->parent, mHandles->name.constData(), 0);
        mHandles->isThroughLink = true;
    }
}

OpenFolder::~OpenFolder() = default;

bool OpenFolder::isOpen() const
{
    return mHandles->stream != nullptr;
}

void OpenFolder::removeFile(const QString &name)
{
    ::unlinkat(::dirfd(mHandles->stream.get()), QFile::encodeName(name).constData(), 0);
}

bool OpenFolder::remove()
{
    if (mHandles->stream) {
        ContentRemoval(std::move(mHandles->stream)).run();
    }
    return !mHandles->isThroughLink &&
           ::unlinkat(mHandles->parent, mHandles->name.constData(), AT_REMOVEDIR) == 0;
}

} // namespace Vyn::OvraBase::os
