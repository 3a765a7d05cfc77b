// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/Entries_p.h"
#include "files/FileNames_p.h"
#include "files/FileSystem_p.h"
#include "files/PrivateFolder_p.h"
#include "files/Removal_p.h"
#include "logging/LogSite_p.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QStandardPaths>
#include <QUrl>

#include <chrono>
#include <filesystem>
#include <map>
#include <system_error>
#include <utility>

namespace Vyn::OvraBase {
namespace {

constexpr LogPosition kNotBroughtToDisk{
    "FileUtils.cpp:479 Vyn::OvraBase::FileUtils::ensureFileIsOnDisk()"};
constexpr LogPosition kNoTemporaryFolder{
    "FileUtils.cpp:677 Vyn::OvraBase::FileUtils::createTemporaryDir()"};

/// Returns the path of the system's temporary folder, or an empty path if there is none.
QString systemTemporaryPath()
{
    return QDir::cleanPath(QStandardPaths::writableLocation(QStandardPaths::TempLocation));
}

/// Returns true if \a path is below \a folder. If the application has no name, or one such as "..",
/// its temporary folder is not below the system's, and other programs use it, too.
bool isInside(const QString &path, const QString &folder)
{
    return path.startsWith(folder + u'/');
}

/// Returns the application's temporary folder, and makes it if it is missing. The path is empty if
/// the system has no temporary folder. A folder that is not below the system's temporary folder
/// (see isInside()) is returned as usable, although other users may have access to it.
os::PrivateFolder applicationTemporaryFolder()
{
    const QString system = systemTemporaryPath();
    if (system.isEmpty()) {
        return {};
    }
    const QString path = QDir::cleanPath(system + u'/' + QCoreApplication::applicationName());
    if (isInside(path, system)) {
        return os::makePrivateFolder(system, path.sliced(system.size() + 1));
    }
    QDir().mkpath(path);
    return {path, true};
}

[[noreturn]] void failToCreate(const QString &path)
{
    fail<Exception::FolderCreationException>(
        kNoTemporaryFolder, QStringLiteral("Could not create temporary dir"), path);
}

/// Returns the path of \a name in the application's temporary folder, and makes that folder if it
/// is missing. Throws FolderCreationException if the system has no temporary folder, or if
/// os::makePrivateFolder() returns a folder that is not usable.
QString inApplicationTemporaryFolder(const QString &name)
{
    const os::PrivateFolder folder = applicationTemporaryFolder();
    QString path = folder.path.isEmpty() ? QString() : folder.path + u'/' + name;
    if (!folder.isUsable) {
        failToCreate(path);
    }
    return path;
}

/// Remembers, for one folder and each sequence of names, the number of the next copy. The search
/// for a free name then does not begin at the first number each time.
///
/// The numbers are forgotten if something else has changed the folder, which its modification time
/// shows. The clock of the file system may be too coarse to tell two changes apart. So the time is
/// set one hour back after each copy: any other change then gives a different time.
class LastNumbers {
public:
    /// Makes a new file in \a folder under the first free one of \a names, and opens it as \a file.
    /// Returns false on failure.
    bool create(QFile &file, const QString &folder, const NumberedNames &names)
    {
        const QMutexLocker lock(&mMutex);
        const std::filesystem::path native = os::nativePath(folder);
        std::error_code error;
        if (std::filesystem::last_write_time(native, error) != mMark) {
            mNext.clear();
        }
        const std::pair<QString, qint64> sequence(names.path(names.first()), names.first());
        qint64 &next = mNext.insert({sequence, names.first()}).first->second;
        for (;; ++next) {
            file.setFileName(names.firstFreePath(next));
            if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)) {
                break;
            }
            if (!FileUtils::isFile(file.fileName())) {
                return false;
            }
        }
        ++next;
        using namespace std::chrono_literals;
        std::filesystem::last_write_time(native, decltype(mMark)::clock::now() - 1h, error);
        if (error) {
            mNext.clear();
        }
        mMark = std::filesystem::last_write_time(native, error);
        return true;
    }

private:
    QMutex mMutex;
    /// The next number, by the first path and its number: "a.png" and "a_005.png" have the same
    /// first path.
    std::map<std::pair<QString, qint64>, qint64> mNext;
    std::filesystem::file_time_type mMark; ///< the modification time that the last copy set
};

/// Copies the content and the permissions of \a from to the new file \a to, and closes \a to.
/// Removes \a to on failure. Does not sync it, in contrast to QFile::copy(): a temporary file need
/// not survive a power failure.
bool copyContent(QFile &from, QFile &to)
{
    QByteArray piece;
    do {
        constexpr qint64 kPiece = qint64{64} * 1024;
        piece = from.read(kPiece);
    } while (!piece.isEmpty() && to.write(piece) == piece.size());
    to.setPermissions(from.permissions());
    to.close();
    if (piece.isEmpty() && from.error() == QFile::NoError && to.error() == QFile::NoError) {
        return true;
    }
    to.remove();
    return false;
}

QString defaultTemplate()
{
    return QStringLiteral("XXXXXX");
}

} // namespace

QTemporaryDir FileUtils::createTemporaryDir(const QString &nameTemplate)
{
    const QString path = inApplicationTemporaryFolder(nameTemplate);
    if (canBePath(path)) {
        if (QTemporaryDir folder(path); folder.isValid()) {
            return folder;
        }
    }
    failToCreate(path);
}

QTemporaryDir FileUtils::createTemporaryDir()
{
    return createTemporaryDir(defaultTemplate());
}

QString FileUtils::createApplicationTemporaryDir(const QString &name)
{
    QString path = inApplicationTemporaryFolder(name);
    if (!name.isEmpty() && exists(path)) {
        return path;
    }
    QTemporaryDir folder = createTemporaryDir(name);
    folder.setAutoRemove(false);
    return folder.path();
}

QString FileUtils::createApplicationTemporaryDir()
{
    return createApplicationTemporaryDir(defaultTemplate());
}

void FileUtils::clearApplicationTemporaryDir()
{
    const os::PrivateFolder folder = applicationTemporaryFolder();
    if (folder.isUsable && isInside(folder.path, systemTemporaryPath())) {
        removeFolder(folder.path);
    }
}

// The static objects of these functions are never destroyed, because destructors of other static
// objects may call the functions.

QString FileUtils::getAppDataAbsolutePath(const QString &path)
{
    static const auto &base =
        *new QString(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    return QFileInfo(path).isRelative() ? QDir(base).absoluteFilePath(path) : path;
}

QString FileUtils::getDocumentsAbsolutePath(const QString &path)
{
    static const auto &base = *new QString(QDir::cleanPath(
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + u'/' +
        QCoreApplication::organizationName() + u'/' + QCoreApplication::applicationName()));
    return QFileInfo(path).isRelative() ? QDir(base).absoluteFilePath(path) : path;
}

const QString &FileUtils::safeApplicationDirPath()
{
    static auto &mutex = *new QMutex;
    static auto &path = *new QString;
    const QMutexLocker lock(&mutex);
    if (path.isEmpty() && QCoreApplication::instance() != nullptr) {
        path = QCoreApplication::applicationDirPath();
    }
    return path;
}

QString FileUtils::ensureFileIsOnDisk(const QString &pathOrUrl)
{
    if (!pathOrUrl.contains(QLatin1String(":/"))) {
        return pathOrUrl;
    }
    const QUrl url(pathOrUrl, QUrl::TolerantMode);
    if (!url.isValid() || url.scheme().isEmpty() || url.scheme() == QLatin1String("file")) {
        return pathOrUrl;
    }

    const QString source =
        pathOrUrl.startsWith(QLatin1String("qrc")) ? pathOrUrl.sliced(3) : pathOrUrl;
    const QString folder = inApplicationTemporaryFolder(QStringLiteral("external_files"));
    if (!makeFolder(folder)) {
        failToCreate(folder);
    }
    QFile from(source);
    QFile to;
    const NumberedNames names(folder, getBaseName(pathOrUrl), getFilePathExtension(pathOrUrl));
    static auto &numbers = *new LastNumbers;
    if (!isFile(source) || !from.open(QIODevice::ReadOnly) || !numbers.create(to, folder, names) ||
        !copyContent(from, to)) {
        fail<Exception::FileCopyException>(
            kNotBroughtToDisk, QStringLiteral("Failed to copy non-local file"), pathOrUrl);
    }
    return to.fileName();
}

} // namespace Vyn::OvraBase
