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

/// Whether a folder walk descends into sub-folders.
enum class Recursion { NonRecursive = 0, Recursive = 1 };

} // namespace Vyn

namespace Vyn::OvraBase {

/// Questions about paths and files, and the operations on them.
///
/// All functions are static, keep no state and may be called from any thread. Paths are absolute or
/// relative to the current folder, with "/" or the system's separator. What touches the file system
/// blocks until it answers. A path that no system accepts (empty, with a NUL, far too long) counts
/// as the path of something that does not exist. A soft failure answers false or an empty value;
/// exceptions are named where they are thrown, and are logged first.
class OVRABASE_EXPORT FileUtils : public QObject {
    Q_OBJECT

public:
    /// For the meta-object only: everything here is static.
    explicit FileUtils(QObject *parent = nullptr);
    ~FileUtils() override;

    /// \name File paths
    /// @{

    /// Appends \a path to the list \a paths, with a ";" between them when neither is empty.
    static void addPathToPaths(QString &paths, const QString &path);
    /// Returns ';', which separates the paths of a list.
    static char getPathListSeparator();

    /// Returns the folder that holds \a path, without a separator at its end; "." for a bare name.
    static QString extractFolderPath(const QString &path);
    /// Returns the file name up to its first dot.
    static QString getBaseName(const QString &path);
    /// Returns what follows the last dot of the file name: "gz" of "a/b.tar.gz".
    Q_INVOKABLE static QString getFilePathExtension(const QString &filePath);
    /// Returns what follows the first dot of the file name: "tar.gz" of "a/b.tar.gz".
    static QString getFilePathCompleteExtension(const QString &path);
    /// Returns \a filePath without its complete extension and the dot before it: "a/b" of
    /// "a/b.tar.gz", and "a/" of "a/.hidden".
    Q_INVOKABLE static QString getFilePathWithoutExtension(const QString &filePath);
    /// Returns the complete extension of a file that exists, else the empty string.
    static QString getFileSuffix(const QString &path);

    /// Returns \a path with \a extension in place of its complete extension: "x/a.png" for
    /// "x/a.tar.gz" and "png". A leading dot of \a extension is not removed.
    ///
    /// \throws Exception::InvalidArgumentException  \a path or \a extension is empty, or
    ///     \a extension contains "/" or "\".
    static QString changeFilePathExtension(const QString &path, const QString &extension);

    /// Tells whether the two are the same text, native separators or not. Nothing is resolved.
    static bool pathAreIdentical(const QString &a, const QString &b);

    /// @}
    /// \name File checks
    /// Links are followed. The forms for urls answer false for a url that is not a local file, and
    /// otherwise what the forms for paths answer.
    /// @{

    /// Returns true if \a path exists; a dangling link does not.
    static bool exists(const QString &path);
    /// See exists(const QString &).
    static bool exists(const QUrl &url);
    /// Returns true if \a path is a regular file.
    static bool isFile(const QString &path);
    /// See isFile(const QString &).
    static bool isFile(const QUrl &url);
    /// Returns true if \a path is a folder.
    static bool isFolder(const QString &path);
    /// See isFolder(const QString &).
    static bool isFolder(const QUrl &url);
    /// Returns true if \a path exists and may be read.
    static bool isReadable(const QString &path);
    /// See isReadable(const QString &).
    static bool isReadable(const QUrl &url);
    /// Returns true if \a path, or else its nearest ancestor that exists, is writable. Returns
    /// false if not even the root of \a path exists (a missing drive or server), and for an empty
    /// path.
    static bool isWritable(const QString &path);
    /// See isWritable(const QString &).
    static bool isWritable(const QUrl &url);
    /// Returns true if \a path exists and may be read and written. Ancestors do not count.
    static bool isReadableAndWritable(const QString &path);
    /// See isReadableAndWritable(const QString &).
    static bool isReadableAndWritable(const QUrl &url);
    /// Returns true if \a path is a folder with an entry that is not hidden.
    static bool isNonEmptyFolder(const QString &path);
    /// See isNonEmptyFolder(const QString &).
    static bool isNonEmptyFolder(const QUrl &url);

    /// Returns true if \a url is relative, or is a "file" url with a relative path.
    static bool isRelativeFilePath(const QUrl &url);
    /// Returns true if \a a was modified after \a b, and false if either is missing.
    static bool isFileMoreRecentThan(const QString &a, const QString &b);
    /// Returns true if \a path is a file that can be opened, at least for reading. The file is
    /// opened and closed; nothing is created or written. On Windows this looks at the access
    /// rights, which takes longer than looking at the attributes.
    static bool checkFileCanBeOpened(const QString &path);

    /// @}
    /// \name File kinds
    /// Extensions are given without the dot and compared without case, where not said otherwise.
    /// @{

    /// usd, usda, usdc, usdz, obj, fbx, gltf, glb
    static bool isMeshExt(const QString &ext);
    /// slvar, the archives
    static bool isSLVARExt(const QString &ext);
    /// vskfilter and ovrafilter
    static bool isVSKFilterExt(const QString &ext);
    /// ovqa
    static bool isQuickActionExt(const QString &ext);
    /// Tells whether \a ext, in lower case, is none of the formats that are refused.
    static bool isImageFormatSupported(const QString &ext);
    /// Tells whether \a ext is a supported format that FreeImage knows, or "svg". The first call
    /// loads FreeImage, which takes some milliseconds; where it is missing, "svg" is all that is
    /// known, and a warning is logged once on Support.
    static bool isImageExt(const QString &ext);

    /// @}
    /// \name File names
    /// The rules are those of Windows, on every system.
    /// @{

    /// Returns true if \a name has no forbidden character and is not a reserved device name. Only
    /// the text up to the first NUL is checked for characters, and only the text before the last
    /// dot for device names. An empty name is valid.
    static bool isValidFileName(const QString &name);
    /// Returns \a name up to its first NUL, with "x" for every forbidden character, and with "_" in
    /// front of a reserved device name. Returns the translated word "file" for an empty \a name.
    static QString ensureValidFileName(const QString &name);

    /// Returns the first of these paths in \a folder that is not an existing file:
    /// "baseName.extension", "baseName_001.extension", "baseName_002.extension" and so on. A folder
    /// counts as free.
    ///
    /// A \a baseName that ends in "_" and exactly three digits continues its numbering: "a_009"
    /// gives "a.extension", then "a_010.extension". Creates nothing: two callers can receive the
    /// same path. Takes time in proportion to the number of names that are taken.
    static QString getUniqueFileName(
        const QString &folder, const QString &baseName, const QString &extension);

    /// @}
    /// \name Reading and writing
    /// @{

    /// Returns the paths of the files in \a folder, and for Recursion::Recursive in its
    /// sub-folders, whose names match one of the wildcards \a nameFilters; of all files if there
    /// are no filters. The paths are not sorted. Hidden files and folders are left out, and links
    /// to folders are not followed.
    static std::vector<QString> folderParseFiles(
        const QString &folder, const QList<QString> &nameFilters, Recursion recursion);

    /// On Windows, sets the attribute "hidden" of \a path and clears all others. A path that is not
    /// ASCII may be missed. Does nothing on other systems.
    static void hideFileOnWindows(const QString &path);

    /// Returns the content of a file.
    ///
    /// \throws Exception::InvalidArgumentException  \a path is not a file.
    /// \throws Exception::FileOpenException  the file cannot be opened.
    /// \throws Exception::FileReadingException  the file cannot be read to its end.
    static QByteArray loadBinaryFile(const QString &path);
    /// Returns the text of a file, with "\n" as line ends. A byte-order mark tells the encoding;
    /// without one it is UTF-8. Throws what loadBinaryFile() throws.
    static QString loadTextFileToQString(const QString &path);
    /// Writes \a text to the file \a path as UTF-8 with the system's line ends; an existing file is
    /// overwritten. Returns true if the whole text was written; otherwise the file may have a part.
    static bool saveTextToFile(const QString &text, const QString &path);

    /// Makes the folder \a path and its parents if they are missing. Returns true if \a path is a
    /// folder then. An empty \a path is the current folder.
    static bool makeFolder(const QString &path);
    /// Creates the empty file \a path if it is missing, and does not change an existing one.
    /// Failures are ignored.
    static void touch(const QString &path);

    /// @}
    /// \name Folder copies
    /// @{

    /// Copies the content of the folder \a source, hidden entries too, into \a destination, which
    /// is made when missing. A relative \a destination stands in \a source.
    ///
    /// Copies what \a source held when the call began, so \a destination may lie inside. Nothing is
    /// overwritten. Pipes, sockets, devices and links that lead nowhere are passed over. Other
    /// links are copied as what they lead to, except a link to a folder that the link is in; of the
    /// links to folders that are found in linked folders, the first 100 are followed. What cannot
    /// be copied gets a warning on Support, and the copy goes on: a file that exists already, a
    /// link that is not followed, a folder that cannot be read to its end.
    ///
    /// A copied file has the permissions of its source. A folder that is made has at most those of
    /// its source; its owner has all rights while it is being filled. Neither has a set-uid,
    /// set-gid or sticky bit. (On Windows, both inherit their access rights from the destination.)
    ///
    /// Returns true if everything was copied with its whole content and would survive a power cut
    /// from then on. For that, the file system is synced once, which waits for what other programs
    /// have written, too; on Windows each file is. False also when \a source is not a folder.
    static bool copyRecursively(const QString &source, const QString &destination);

    /// @}
    /// \name Copies with backup
    /// @{

    /// Copies the file or Qt resource \a source to \a destination; what stood there before is kept
    /// under the same name and ".bak", in place of an older backup. The copy has the permissions of
    /// \a source without the set-uid, set-gid and sticky bits.
    ///
    /// Returns true if the whole content is at \a destination. From then on, it and the backup
    /// would survive a power cut. On failure nothing new is there and an older backup is as it was,
    /// a warning is written on Debug, and a backup that exists without its original is renamed
    /// back. Only where the disk fails while the new names are synced, the older backup is lost.
    ///
    /// At every moment, even when the process dies or the power fails in it, the old content is
    /// whole under one of its two names or the new one is whole under its name. A process that dies
    /// may leave a file with a random name and ".tmp" beside \a destination.
    static bool copyWithBackup(const QString &source, const QString &destination);
    /// Copies each pair of source and destination, in order, with the promises of a single copy.
    /// The answers come in the order of \a copies; a copy that fails stops no other.
    ///
    /// At every moment, each destination is whole, old or new. (Where the system cannot give a file
    /// two names, as on Windows, the old one is for a moment only at its backup's name.) Meanwhile
    /// all new contents need room beside the old ones.
    ///
    /// Costs less than single copies: the file systems are synced twice for all, which waits for
    /// what other programs have written, too. A copy from or onto an earlier destination or backup,
    /// and one onto a folder or a link, adds two more. On Windows each file is synced.
    static std::vector<bool> copyWithBackup(const std::vector<std::pair<QString, QString>> &copies);

    /// @}
    /// \name Removal
    /// @{

    /// Removes the folder \a path with its content, whatever its names and its depth. A missing
    /// folder is not an error, and a file at \a path stays.
    ///
    /// Links are removed and not followed, inside and as \a path itself. Nothing outside of the
    /// folder is removed, even if links take the place of folders during the call.
    ///
    /// \throws Exception::FolderDeletionException  something cannot be removed; the rest is
    /// removed.
    static void removeDirRecursiveIfItExists(const QString &path);
    /// Removes the file or link \a path. A missing one is not an error.
    ///
    /// \throws Exception::FileDeletionException  it cannot be removed, or \a path is a folder.
    static void removeFileIfItExists(const QString &path);

    /// @}
    /// \name Application folders
    /// The application's temporary folder is the folder with the application's name in the system's
    /// temporary folder. All instances of the application that one user runs share it; nobody else
    /// has access to it on Linux (mode 0700). If something of that name belongs to another user, is
    /// a link, or is a folder that others may write to, "<name>-<user id>" takes its place in all
    /// functions. On Windows the system's temporary folder is the user's own. Without an
    /// application name, the application's temporary folder is the system's.
    /// @{

    /// Makes a folder in the application's temporary folder, which is removed with the returned
    /// object. Its name is \a nameTemplate with random characters for the last six X; a template
    /// without them gets them appended.
    ///
    /// \throws Exception::FolderCreationException  names the path that was tried.
    static QTemporaryDir createTemporaryDir(const QString &nameTemplate);
    /// Calls createTemporaryDir("XXXXXX").
    static QTemporaryDir createTemporaryDir();
    /// Returns the absolute path of the entry \a name of the application's temporary folder. When
    /// it is missing, makes a folder as createTemporaryDir() does, which stays until
    /// clearApplicationTemporaryDir().
    ///
    /// \throws Exception::FolderCreationException  names the path that was tried.
    static QString createApplicationTemporaryDir(const QString &name);
    /// Calls createApplicationTemporaryDir("XXXXXX").
    static QString createApplicationTemporaryDir();
    /// Removes the application's temporary folder with its content, also what other instances of
    /// the application have in it. What cannot be removed stays, without an error. Does nothing
    /// without an application name, when that folder is the system's.
    static void clearApplicationTemporaryDir();

    /// Resolves a relative \a path against the application's data folder, which is computed on the
    /// first call and kept. Returns an absolute \a path unchanged. Creates nothing.
    static QString getAppDataAbsolutePath(const QString &path);
    /// Resolves a relative \a path against documents/organisation/application, which is computed on
    /// the first call and kept. Returns an absolute \a path unchanged. Creates nothing.
    Q_INVOKABLE static QString getDocumentsAbsolutePath(const QString &path);
    /// Returns the folder of the program; empty as long as there is no application object. The
    /// first call with an application object changes the string: no other thread may read a
    /// reference from an earlier call at that moment.
    static const QString &safeApplicationDirPath();

    /// Returns a local path for \a pathOrUrl. A plain path and a "file" url are returned unchanged.
    /// Anything else, for example a "qrc" url, but also a path with a drive letter, is copied into
    /// the folder "external_files" of the application's temporary folder. Every call makes another
    /// copy, under the first free name as getUniqueFileName() counts.
    ///
    /// \throws Exception::FileCopyException  names \a pathOrUrl.
    /// \throws Exception::FolderCreationException  names the folder that was tried.
    static QString ensureFileIsOnDisk(const QString &pathOrUrl);

    /// @}
    /// \name Content hashes
    /// MurmurHash3_x64_128 with seed 0. Not for secrets: collisions can be made on purpose.
    /// @{

    /// Returns the 16 bytes of the hash.
    static QByteArray dataToHash(const QByteArray &data);
    /// Returns dataToHash() of the file's content, reading it piece by piece. Throws what
    /// loadBinaryFile() throws.
    static QByteArray fileDataToHash(const QString &path);
    /// Returns the two little-endian 64-bit halves of \a hash as "12345-678". What is not 16 bytes
    /// long is hashed first.
    static QString hashToNumber(const QByteArray &hash);
    /// Returns the number text of the hash of \a name in UTF-8.
    static QString fileNameToHash(const QString &name);

    /// @}
};

} // namespace Vyn::OvraBase
