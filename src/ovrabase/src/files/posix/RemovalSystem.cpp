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

/// The number of folders that are open at a time, besides the top, however deep the tree is. It is
/// well below the usual limit of 1024 open files per process.
constexpr std::size_t kMaxOpenLevels = 64;

std::error_code errorWith(int code)
{
    return {code, std::generic_category()};
}

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

/// Removes the empty folder \a name in \a parent. Returns 0 or the error number.
int removeEmptied(int parent, const char *name)
{
    if (::unlinkat(parent, name, AT_REMOVEDIR) == 0 || errno == ENOENT) {
        return 0;
    }
    // Another program may have replaced the folder by a file or a link. It is removed, too, because
    // it is in the tree.
    return errno == ENOTDIR && ::unlinkat(parent, name, 0) == 0 ? 0 : errno;
}

/// Removes the content of a folder. All calls are relative to the descriptor of a folder, so that
/// they stay in the tree even if another program replaces one of its folders by a link.
class ContentRemoval {
public:
    explicit ContentRemoval(Stream top) { mLevels.push_back({{}, std::move(top), {}, {}}); }

    /// Removes the content. Returns the first error.
    std::error_code run()
    {
        for (;;) {
            errno = 0;
            if (const dirent *entry = ::readdir(mLevels.back().stream.get()); entry != nullptr) {
                if (const std::string_view name = entry->d_name; name != "." && name != "..") {
                    removeOrEnter(*entry);
                }
                continue;
            }
            note(errno);
            if (mLevels.size() == 1) {
                return mError;
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
        std::set<std::string> kept = {}; ///< sub-folders that cannot be removed
    };

    /// Returns the descriptor of the innermost level.
    int descriptor() const { return ::dirfd(mLevels.back().stream.get()); }

    /// Stores an error if it is the first one. 0 is not an error.
    void note(int code)
    {
        if (!mError) {
            mError = errorWith(code);
        }
    }

    /// Notes the error \a reason. A folder that is opened again lists the sub-folder \a name again,
    /// which is then not tried a second time.
    void keep(const std::string &name, int reason)
    {
        note(reason);
        mLevels.back().kept.insert(name);
    }

    /// Removes \a entry if it is not a folder. Otherwise makes it the innermost level.
    void removeOrEnter(const dirent &entry)
    {
        const char *const name = entry.d_name;
        if (entry.d_type != DT_DIR) {
            if (::unlinkat(descriptor(), name, 0) == 0 || errno == ENOENT) {
                return;
            }
            if (errno != EISDIR) {
                note(errno);
                return;
            }
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
        const int reason = errno;
        // The folder cannot be read. It can be removed if it is empty.
        if (const int failure = removeEmptied(descriptor(), name); failure != 0) {
            keep(name, failure == ENOTEMPTY ? reason : failure);
        }
    }

    /// Removes the innermost level, whose content is removed, and returns to the level above.
    void leave()
    {
        Level done = std::move(mLevels.back());
        mLevels.pop_back();
        if (!mLevels.back().stream && !reopen(mLevels.back(), ::dirfd(done.stream.get()))) {
            // The folders above are lost: go up to the nearest one that is still open.
            const int reason = errno;
            while (!mLevels.back().stream) {
                done.name = std::move(mLevels.back().name);
                mLevels.pop_back();
            }
            keep(done.name, reason);
            return;
        }
        if (const int failure = removeEmptied(descriptor(), done.name.c_str()); failure != 0) {
            keep(done.name, failure);
        }
    }

    /// Opens the folder of \a level again, as the parent of its open sub-folder \a child. Returns
    /// false and sets errno if that is another folder, because a program has moved one of the two.
    static bool reopen(Level &level, int child)
    {
        Stream stream = openFolder(child, "..", 0);
        struct stat identity {};
        if (!stream || ::fstat(::dirfd(stream.get()), &identity) != 0) {
            return false;
        }
        if (identity.st_dev != level.identity.st_dev || identity.st_ino != level.identity.st_ino) {
            errno = ENOTEMPTY;
            return false;
        }
        level.stream = std::move(stream);
        return true;
    }

    std::vector<Level> mLevels; ///< from the top to the innermost level; never empty
    std::error_code mError;     ///< the first error
};

} // namespace

std::error_code removeEntry(const QString &path)
{
    return errorWith(::unlink(QFile::encodeName(path).constData()) == 0 ? 0 : errno);
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
    bool isThroughLink = false; ///< the folder was opened through a link at the path
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
    if (!mHandles->stream) {
        mError = errorWith(errno);
    }
}

OpenFolder::~OpenFolder() = default;

std::error_code OpenFolder::removeFile(const QString &name)
{
    const int folder = ::dirfd(mHandles->stream.get());
    return errorWith(::unlinkat(folder, QFile::encodeName(name).constData(), 0) == 0 ? 0 : errno);
}

std::error_code OpenFolder::remove()
{
    std::error_code error = ContentRemoval(std::move(mHandles->stream)).run();
    if (!mHandles->isThroughLink &&
        ::unlinkat(mHandles->parent, mHandles->name.constData(), AT_REMOVEDIR) != 0 && !error) {
        error = errorWith(errno);
    }
    return error;
}

} // namespace Vyn::OvraBase::os
