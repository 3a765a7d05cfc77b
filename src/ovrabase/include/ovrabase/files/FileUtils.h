// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>
#include <QTemporaryDir>
#include <QUrl>

#include <utility>
#include <vector>

namespace Vyn {

/// Tells a function whether to enter sub-folders.
enum class Recursion { NonRecursive = 0, Recursive = 1 };

} // namespace Vyn

namespace Vyn::OvraBase {

/// Functions on paths, files and folders.
///
/// All functions are static and thread-safe. A path is absolute, or relative to the current folder,
/// and contains "/" or the system's separator. Nothing exists at an invalid path: an empty one, one
/// with a NUL, and one that is too long for the system. Functions that access the file system block
/// until it answers.
///
/// A function reports a failure by an exception, which is logged first, only if its comment names
/// the exception. Otherwise it returns false or an empty value, or ignores the failure. Records go
/// to the global loggers Support and Debug, see GlobalLoggers.h.
class OVRABASE_EXPORT FileUtils : public QObject {
    Q_OBJECT

public:
    /// Makes an object without state. It is needed only for calls by name, through the meta-object
    /// or from QML: all functions are static.
    explicit FileUtils(QObject *parent = nullptr);
    ~FileUtils() override;

    /// \name File paths
    /// @{

    /// Appends \a path to the list \a paths, with a ";" between them when neither is empty.
    static void addPathToPaths(QString &paths, const QString &path);
    /// Returns ';', which separates the paths of a list.
    static char getPathListSeparator();

    /// Returns the folder of \a path. It ends in a separator only if it is a root, or if \a path
    /// has three separators in a row there. Returns "." for a file name without a folder.
    static QString extractFolderPath(const QString &path);
    /// Returns the file name up to its first dot.
    static QString getBaseName(const QString &path);
    /// Returns what follows the last dot of the file name: "gz" of "a/b.tar.gz".
    Q_INVOKABLE static QString getFilePathExtension(const QString &filePath);
    /// Returns what follows the first dot of the file name: "tar.gz" of "a/b.tar.gz".
    static QString getFilePathCompleteExtension(const QString &path);
    /// Returns \a filePath without its complete extension and the dot before it: "a/b" of
    /// "a/b.tar.gz", "a/" of "a/.hidden", and "a/b." of "a/b.", which has no extension.
    Q_INVOKABLE static QString getFilePathWithoutExtension(const QString &filePath);
    /// Returns the complete extension of \a path if it is a file, and an empty text otherwise.
    static QString getFileSuffix(const QString &path);

    /// Returns \a path with \a extension in place of its complete extension: "x/a.png" for
    /// "x/a.tar.gz" and "png". A leading dot of \a extension stays: "x/a..png".
    ///
    /// \throws Exception::InvalidArgumentException  \a path or \a extension is empty, or
    ///     \a extension contains "/" or "\".
    static QString changeFilePathExtension(const QString &path, const QString &extension);

    /// Returns true if \a a and \a b are the same text, with "/" equal to the native separator.
    /// Relative paths, ".." and links are not resolved.
    static bool pathAreIdentical(const QString &a, const QString &b);

    /// @}
    /// \name File checks
    /// Links are followed.
    /// @{

    /// Returns true if \a path exists. A dangling link does not count.
    static bool exists(const QString &path);
    /// Returns exists() of the path of \a url, or false if \a url is not a local file.
    static bool exists(const QUrl &url);
    /// Returns true if \a path is a regular file.
    static bool isFile(const QString &path);
    /// Returns isFile() of the path of \a url, or false if \a url is not a local file.
    static bool isFile(const QUrl &url);
    /// Returns true if \a path is a folder.
    static bool isFolder(const QString &path);
    /// Returns isFolder() of the path of \a url, or false if \a url is not a local file.
    static bool isFolder(const QUrl &url);
    /// Returns true if \a path exists and may be read.
    static bool isReadable(const QString &path);
    /// Returns isReadable() of the path of \a url, or false if \a url is not a local file.
    static bool isReadable(const QUrl &url);
    /// Returns true if \a path is writable. If \a path is missing, returns true if its nearest
    /// ancestor that exists is writable. Returns false if not even the root of \a path exists (a
    /// missing drive or server), and for an empty path.
    static bool isWritable(const QString &path);
    /// Returns isWritable() of the path of \a url, or false if \a url is not a local file.
    static bool isWritable(const QUrl &url);
    /// Returns true if \a path exists and may be read and written. In contrast to isWritable(), a
    /// missing \a path gives false whatever its ancestors are.
    static bool isReadableAndWritable(const QString &path);
    /// Returns isReadableAndWritable() of the path of \a url, or false if \a url is not a local
    /// file.
    static bool isReadableAndWritable(const QUrl &url);
    /// Returns true if \a path is a folder that contains a file or a folder. Hidden files and
    /// hidden folders do not count.
    static bool isNonEmptyFolder(const QString &path);
    /// Returns isNonEmptyFolder() of the path of \a url, or false if \a url is not a local file.
    static bool isNonEmptyFolder(const QUrl &url);

    /// Returns true if \a url is relative, or is a "file" url with a relative path.
    static bool isRelativeFilePath(const QUrl &url);
    /// Returns true if \a a was modified after \a b, and false if either is missing.
    static bool isFileMoreRecentThan(const QString &a, const QString &b);
    /// Returns true if \a path is a file that can be opened, at least for reading. Opens and closes
    /// the file, and neither creates nor changes it. On Windows, reads the NTFS access rights,
    /// which is slower than to read the attributes.
    static bool checkFileCanBeOpened(const QString &path);

    /// @}
    /// \name File kinds
    /// An extension has no dot, and is compared without regard to case, except in
    /// isImageFormatSupported().
    /// @{

    /// Returns true for a mesh: usd, usda, usdc, usdz, obj, fbx, gltf or glb.
    static bool isMeshExt(const QString &ext);
    /// Returns true for an archive: slvar.
    static bool isSLVARExt(const QString &ext);
    /// Returns true for a filter: vskfilter or ovrafilter.
    static bool isVSKFilterExt(const QString &ext);
    /// Returns true for a quick action: ovqa.
    static bool isQuickActionExt(const QString &ext);
    /// Returns false for the image formats that the application refuses, dng and nef in lower case.
    /// Returns true for every other text.
    static bool isImageFormatSupported(const QString &ext);
    /// Returns true for "svg" and for each extension that FreeImage knows, except dng and nef.
    /// Ignores letter case, also for dng and nef.
    ///
    /// The first call loads FreeImage, which takes some milliseconds. If it cannot be loaded, only
    /// "svg" is known, and a warning is logged once on Support.
    static bool isImageExt(const QString &ext);

    /// @}
    /// \name File names
    /// The forbidden characters and the reserved device names (CON, PRN, AUX, NUL, COM0 to COM9 and
    /// LPT0 to LPT9) are those of Windows, on every system.
    /// @{

    /// Returns true if \a name has no forbidden character and is not a reserved device name. Only
    /// the text up to the first NUL is checked for characters, and only the text before the last
    /// dot for device names. An empty name is valid.
    static bool isValidFileName(const QString &name);
    /// Returns \a name up to its first NUL, with "x" for every forbidden character, and with "_" in
    /// front of a reserved device name. Returns the translated word "file" for an empty \a name.
    static QString ensureValidFileName(const QString &name);

    /// Returns the first of these paths in \a folder at which no file exists: "baseName.extension",
    /// "baseName_001.extension", "baseName_002.extension" and so on. A path at which a folder
    /// exists counts as free.
    ///
    /// If \a baseName ends in "_" and exactly three digits, the numbers continue from there: for
    /// "a_009", the paths are "a.extension", "a_010.extension" and so on. Creates no file, so that
    /// two calls can return the same path. Takes time in proportion to the number of names that are
    /// taken.
    static QString getUniqueFileName(
        const QString &folder, const QString &baseName, const QString &extension);

    /// @}
    /// \name Reading and writing
    /// @{

    /// Returns the paths of the files in \a folder whose names match one of the wildcards
    /// \a nameFilters, in any letter case. An empty list matches every name. Recursion::Recursive
    /// adds such files in sub-folders. The paths are not sorted. Hidden files and folders are left
    /// out, and links to folders are not followed.
    static std::vector<QString> folderParseFiles(
        const QString &folder, const QList<QString> &nameFilters, Recursion recursion);

    /// On Windows, sets the attribute "hidden" of \a path and clears all other attributes. May have
    /// no effect on a path with other than ASCII characters. Does nothing on other systems.
    static void hideFileOnWindows(const QString &path);

    /// Returns the content of a file.
    ///
    /// \throws Exception::InvalidArgumentException  \a path is not a file.
    /// \throws Exception::FileOpenException  The file cannot be opened.
    /// \throws Exception::FileReadingException  The file cannot be read to its end.
    static QByteArray loadBinaryFile(const QString &path);
    /// Returns the text of a file without its "\r", so that line ends are "\n". A byte-order mark
    /// decides the encoding; the default is UTF-8. Throws what loadBinaryFile() throws.
    static QString loadTextFileToQString(const QString &path);
    /// Writes \a text to the file \a path, in UTF-8 and with the system's line ends. Overwrites an
    /// existing file. Returns true if the whole text was written. On failure, the file may contain
    /// a part of it.
    static bool saveTextToFile(const QString &text, const QString &path);

    /// Makes the folder \a path and its parents if they are missing. Returns true if the folder
    /// then exists. In a missing path, ".." removes the name before it. "" is the current folder.
    static bool makeFolder(const QString &path);
    /// Creates the empty file \a path if it is missing, and does not change an existing one.
    /// Failures are ignored.
    static void touch(const QString &path);

    /// @}
    /// \name Folder copies
    /// @{

    /// Copies the content of the folder \a source, with the hidden entries, into the folder
    /// \a destination, which is made if it is missing. A relative \a destination is relative to
    /// \a source.
    ///
    /// Copies what \a source contains when the call begins, so that \a destination may be in
    /// \a source. Overwrites nothing. Ignores pipes, sockets, devices and dangling links. Copies
    /// the target of any other link. But a link to a folder is not followed if that folder contains
    /// the link, or an earlier link through which \a source leads to it. And only the first 100 of
    /// the links that are in linked folders and lead to folders are followed. If something cannot
    /// be copied (a file exists already, a link is not followed, a folder cannot be read to its
    /// end), logs a warning on Support and goes on.
    ///
    /// A copied file has the permissions of its source. A new folder has at most those of its
    /// source, and all permissions for its owner while it is being filled. Neither has a set-uid,
    /// set-gid or sticky bit. On Windows, both inherit the access rights of the destination.
    ///
    /// Returns true if everything was copied completely. All copies then survive a power failure.
    /// For that, the call syncs the file system once, and so also waits for data that other
    /// programs have written; on Windows, it syncs each file. Returns false if \a source is not a
    /// folder.
    static bool copyRecursively(const QString &source, const QString &destination);

    /// @}
    /// \name Copies with backup
    /// @{

    /// Copies the file or Qt resource \a source to \a destination. An entry that exists there (a
    /// file, a folder or a link) becomes the backup "destination.bak" and replaces an older backup,
    /// unless it is a link to that. An older backup that is a folder normally makes the call fail.
    /// The copy has the permissions of \a source without the set-uid, set-gid and sticky bits.
    ///
    /// Returns true if the whole content is at \a destination. The content and the backup then
    /// survive a power failure, with two exceptions. If the folder of \a destination was made just
    /// before the call, the name of that folder may not be on the disk yet. A network file system
    /// that cannot sync folders may lose the new names; the answer is true all the same.
    ///
    /// On failure, logs a warning on Debug and leaves \a destination unchanged. But if nothing
    /// exists at \a destination then, its backup, even an old one, is renamed to it. An older
    /// backup is unchanged too, unless it was already replaced when a later step failed: the rename
    /// of the copy to \a destination, or the sync of the new names. If \a destination is a folder
    /// and its older backup is a file or a link, that backup is removed first, and so is also lost
    /// if the folder cannot be renamed.
    ///
    /// At every moment, either the complete old content exists at \a destination or as the backup,
    /// or the complete new content exists at \a destination. This also holds if the process is
    /// killed or the power fails. A killed process may leave up to two files with random names and
    /// the extension "tmp" in the folder of \a destination.
    static bool copyWithBackup(const QString &source, const QString &destination);
    /// Copies each pair of source and destination, in order, as the function for one copy does.
    /// Returns the results in the order of \a copies. A copy that fails does not stop the others.
    ///
    /// At every moment, each destination has its complete old or its complete new content. (The old
    /// content of a folder is for a moment only under the name of the backup; that of a file, too,
    /// on Windows, without hard links, or if the last sync fails.) During the call, the disk must
    /// have space for the old and the new contents of all copies.
    ///
    /// Faster than single copies, because the file systems are synced only twice for all copies. A
    /// sync also waits for data that other programs have written. Two more syncs are needed for a
    /// copy that reads or replaces the destination or backup of an earlier copy, and for a copy
    /// that replaces a folder or a link, as its destination or backup. On Windows, each file is
    /// synced.
    ///
    /// A process that is killed during the call may leave one file with the extension "tmp" for
    /// each copy, and one more, which is a second name (a hard link) of an old content.
    static std::vector<bool> copyWithBackup(const std::vector<std::pair<QString, QString>> &copies);

    /// @}
    /// \name Removal
    /// @{

    /// Removes the folder \a path with its content. Does nothing if \a path does not exist or is a
    /// file. Any names and any depth are allowed.
    ///
    /// If \a path is a link to a folder, removes only the link. Links in the folder are removed and
    /// not followed. Nothing outside of the folder is removed, even if another program replaces
    /// folders by links during the call.
    ///
    /// \throws Exception::FolderDeletionException  An entry cannot be removed. It stays with the
    ///     folders that contain it, and all others are removed.
    static void removeDirRecursiveIfItExists(const QString &path);
    /// Removes the file or link \a path. Does nothing if \a path does not exist.
    ///
    /// \throws Exception::FileDeletionException  The entry cannot be removed, or is a folder.
    static void removeFileIfItExists(const QString &path);

    /// @}
    /// \name Application folders
    /// The application's temporary folder is the folder with the application's name in the system's
    /// temporary folder. Without an application name, it is the system's temporary folder itself.
    ///
    /// All processes of the application that one user runs share the folder. On Linux, if
    /// there is a name, no other user has access to it (mode 0700). If the name is taken by a link,
    /// by an entry of another user or by a folder that others may write to, the folder's name is
    /// "<name>-<user id>". On Windows, the system's temporary folder already belongs to the user.
    /// @{

    /// Makes a folder in the application's temporary folder. The destructor of the returned object
    /// removes it. The folder's name is \a nameTemplate with random characters in place of the last
    /// six or more "X" in a row; if there are none, "." and six random characters are appended.
    ///
    /// \throws Exception::FolderCreationException  The folder cannot be made. subject() is the path
    ///     with \a nameTemplate as the name.
    static QTemporaryDir createTemporaryDir(const QString &nameTemplate);
    /// Calls createTemporaryDir("XXXXXX").
    static QTemporaryDir createTemporaryDir();
    /// Returns the absolute path of the entry \a name of the application's temporary folder. If it
    /// does not exist, makes a folder as createTemporaryDir(name) does, and returns its path. That
    /// folder stays until clearApplicationTemporaryDir().
    ///
    /// \throws Exception::FolderCreationException  The folder cannot be made. subject() is the path
    ///     of \a name.
    static QString createApplicationTemporaryDir(const QString &name);
    /// Calls createApplicationTemporaryDir("XXXXXX").
    static QString createApplicationTemporaryDir();
    /// Removes the application's temporary folder with its content, also the files of other
    /// processes of the application. An entry that cannot be removed stays, and is not reported.
    /// Does nothing without an application name.
    static void clearApplicationTemporaryDir();

    /// Returns the absolute path for \a path, which is relative to the application's data folder.
    /// Returns an absolute \a path unchanged. Creates nothing. The data folder is determined in the
    /// first call: a later change of the names of application and organisation has no effect.
    static QString getAppDataAbsolutePath(const QString &path);
    /// Returns the absolute path for \a path, which is relative to the folder
    /// "organisation/application" in the user's documents folder. Returns an absolute \a path
    /// unchanged. Creates nothing. The folder is determined in the first call: a later change of
    /// the names has no effect.
    Q_INVOKABLE static QString getDocumentsAbsolutePath(const QString &path);
    /// Returns the folder of the program. Returns an empty path until the first call that is made
    /// while there is an application object.
    ///
    /// That call changes the string that earlier calls returned a reference to. No other thread may
    /// read the string during that call.
    static const QString &safeApplicationDirPath();

    /// Returns a path on the local disk for \a pathOrUrl. Returns a "file" url, an invalid url, a
    /// text without a url scheme and a text without ":/" unchanged.
    ///
    /// Anything else, for example "qrc:/icon.png", is copied into the folder "external_files" in
    /// the application's temporary folder. A path with a drive letter and "/" is copied, too,
    /// because the letter looks like a scheme. Each call makes a new copy under the first
    /// free name: "a.gz", "a_001.gz" and so on for "qrc:/a.tar.gz".
    ///
    /// \throws Exception::FileCopyException  The file cannot be copied. subject() is \a pathOrUrl.
    /// \throws Exception::FolderCreationException  The folder "external_files" cannot be made.
    ///     subject() is its path.
    static QString ensureFileIsOnDisk(const QString &pathOrUrl);

    /// @}
    /// \name Content hashes
    /// The hash is MurmurHash3_x64_128() with the seed 0. It is not cryptographic: an attacker can
    /// make two contents with the same hash.
    /// @{

    /// Returns the hash of \a data, 16 bytes.
    static QByteArray dataToHash(const QByteArray &data);
    /// Returns dataToHash() of the content of the file \a path. Reads the file in pieces, and so
    /// needs little memory. Throws what loadBinaryFile() throws.
    static QByteArray fileDataToHash(const QString &path);
    /// Returns the two halves of \a hash as decimal numbers, for example "12345-678". A half is a
    /// little-endian 64-bit number. If \a hash does not have 16 bytes, returns the text for
    /// dataToHash(hash).
    static QString hashToNumber(const QByteArray &hash);
    /// Returns hashToNumber() of the hash of \a name in UTF-8.
    static QString fileNameToHash(const QString &name);

    /// @}
};

} // namespace Vyn::OvraBase
