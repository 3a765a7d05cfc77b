// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDir>
#include <QHash>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <functional>
#include <map>
#include <span>
#include <vector>

/// Returns the class of the file \a path: "image", "mesh", "archive" and so on.
QString assetClassOf(const QString &path);

/// A file of the library.
struct Asset {
    QString name;    ///< file name in the library
    QString hash;    ///< hash of the content; empty if the first copy failed
    qint64 size = 0; ///< in bytes
    /// Absolute paths of the incoming files with this content, in the order of their arrival.
    QStringList sources = {};
};

/// What was done with an incoming file.
enum class Result {
    /// Not copied: the library has its content, and this file is the first source of it.
    Unchanged,
    /// Not copied: the library has its content, and another file is the first source of it.
    Duplicate,
    New,      ///< copied under its own name
    Renamed,  ///< copied under another name: its own is invalid or not free, see isFree()
    Replaced, ///< copied in place of its old content, which is kept as a backup
    Failed    ///< not copied: it cannot be read, or its content cannot be written
};
constexpr std::size_t kResults = 6;

/// An incoming file.
struct Arrival {
    QString path;
    qint64 size = 0;
    Result result = Result::Failed;
    QString text = {}; ///< the result as a text for the user
    QString hash = {}; ///< hash of the content; empty if the file cannot be read
    /// The asset that has its content or, if the copy failed, should have it. Null if the file
    /// cannot be read.
    Asset *asset = nullptr;
    Asset before = {}; ///< \a asset before \a path was copied to it; empty if it is new
};

/// A folder with one file (an asset) for each content. The file "manifest.json" in it lists the
/// assets and the sources of each.
class AssetLibrary {
public:
    /// Reads the folder and its manifest. A file that is not in the manifest, or whose size or date
    /// differs from the manifest, is hashed and becomes an asset without a source. A run that was
    /// killed leaves such files. Backups, hidden files and files that cannot be read are ignored,
    /// and so are files with the extension "tmp" that are not in the manifest: a copyWithBackup()
    /// that was killed leaves such files. Of several files whose names differ only in letter case,
    /// one becomes an asset.
    ///
    /// \throws Vyn::Exception::FileFormatException  The manifest was not written by this class.
    /// \throws Vyn::Exception::BaseException  The manifest cannot be read, or it is missing and
    ///     cannot be created (for example, because \a folder does not exist).
    explicit AssetLibrary(const QString &folder);

    /// Copies each of \a files whose content the library does not have, once per content, under a
    /// valid and unique name. Works in batches. Calls \a report for each batch, after its copies
    /// are synced to the disk.
    void takeIn(const std::vector<QString> &files,
        const std::function<void(std::span<const Arrival>)> &report);

    /// Replaces the manifest. Returns false if it cannot be written; the old one stays then.
    [[nodiscard]] bool saveManifest() const;

private:
    void copyBatch(std::span<Arrival> batch);
    bool isKnown(Arrival &arrival);
    void planCopy(Arrival &arrival);

    bool mayReplace(const Asset &asset, const QString &sourceName) const;
    QString freeName(const QString &name);
    bool isFree(const QString &name) const;
    bool isTaken(const QString &name) const;

    Asset &add(const Asset &asset);
    void setSource(Asset &asset, const QString &source);
    void setContent(Asset &asset, const QString &hash, qint64 size);

    const QDir mFolder;
    /// By the case-folded name: on Windows, names that differ only in letter case are one file.
    std::map<QString, Asset> mAssets;
    QHash<QString, Asset *> mByHash;
    QHash<QString, Asset *> mBySource;
    /// By the name that was taken: the name that freeName() chose last, without the extension. The
    /// next call continues there.
    std::map<QString, QString> mLastCopies;
};
