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

/// More folders than this are not open at a time, however deep a tree is.
constexpr std::size_t kMostOpen = 64;

std::error_code errorWith(int code)
{
    return {code, std::generic_category()};
}

/// Opens the folder \a name in the folder \a parent. Returns null, with the reason in errno, for
/// what is not a folder, and with O_NOFOLLOW in \a flags also for a link.
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

/// Removes the entry \a name of \a parent, which was an empty folder a moment ago. Returns 0 or the
/// error number.
int removeEmptied(int parent, const char *name)
{
    if (::unlinkat(parent, name, AT_REMOVEDIR) == 0 || errno == ENOENT) {
        return 0;
    }
    // A file or link that has taken its place goes too: it is inside what is to be removed.
    return errno == ENOTDIR && ::unlinkat(parent, name, 0) == 0 ? 0 : errno;
}

/// Removes the content of one folder, on descriptors: what an entry's path leads to by then does
/// not matter.
class Emptying {
public:
    explicit Emptying(Stream top) { mLevels.push_back({{}, std::move(top), {}, {}}); }

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
    /// A folder on the way from the top to the one that is being emptied.
    struct Level {
        std::string name;     ///< in the folder above
        Stream stream;        ///< null while the folder is closed
        struct stat identity; ///< tells whether a folder that is opened again is the same
        std::set<std::string> kept = {}; ///< sub-folders that could not be removed
    };

    int descriptor() const { return ::dirfd(mLevels.back().stream.get()); }

    void note(int code)
    {
        if (!mError) {
            mError = errorWith(code);
        }
    }

    void keep(const std::string &name, int reason)
    {
        note(reason);
        mLevels.back().kept.insert(name);
    }

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
            if (mLevels.size() > kMostOpen + 1) { // the top stays open
                mLevels[mLevels.size() - kMostOpen].stream.reset();
            }
            return;
        }
        const int reason = errno;
        // A folder that cannot be read may be empty.
        if (const int failure = removeEmptied(descriptor(), name); failure != 0) {
            keep(name, failure == ENOTEMPTY ? reason : failure);
        }
    }

    /// Goes on in the folder above the one that is empty now.
    void leave()
    {
        Level done = std::move(mLevels.back());
        mLevels.pop_back();
        if (!mLevels.back().stream && !reopen(mLevels.back(), ::dirfd(done.stream.get()))) {
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

    /// Opens the folder of \a level, which is above \a below unless somebody has moved one of them.
    static bool reopen(Level &level, int below)
    {
        Stream stream = openFolder(below, "..", 0);
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

    std::vector<Level> mLevels; ///< from the top down; never empty
    std::error_code mError;
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
    bool isBehindLink = false;
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
        mHandles->isBehindLink = true;
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
    std::error_code error = Emptying(std::move(mHandles->stream)).run();
    if (!mHandles->isBehindLink &&
        ::unlinkat(mHandles->parent, mHandles->name.constData(), AT_REMOVEDIR) != 0 && !error) {
        error = errorWith(errno);
    }
    return error;
}

} // namespace Vyn::OvraBase::os
