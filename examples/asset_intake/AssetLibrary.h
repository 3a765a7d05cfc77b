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
    QString name;             ///< file name in the library
    QString hash;             ///< hash of the content; empty if the file could not be copied
    qint64 size = 0;          ///< in bytes
    QStringList sources = {}; ///< absolute paths of the files that came in with this content
};

/// What happened to a file that came in.
enum class Result {
    Unchanged, ///< not copied: the library has its content
    Duplicate, ///< not copied: the library has its content from another source
    New,       ///< copied
    Renamed,   ///< copied under another name
    Replaced,  ///< copied in place of its old content, which is kept as a backup
    Failed     ///< not copied
};
constexpr std::size_t kResults = 6;

/// A file that comes in.
struct Arrival {
    QString path;
    qint64 size = 0;
    Result result = Result::Failed;
    QString text = {};      ///< the result, for the user
    QString hash = {};      ///< hash of the content; empty if the file cannot be read
    Asset *asset = nullptr; ///< the asset with its content, or null
    Asset before = {};      ///< what \a asset was before, if \a path is copied to it
};

/// A folder with one file for each content. Its "manifest.json" tells where they came from.
class AssetLibrary {
public:
    /// Reads the folder and its manifest. Files that the manifest does not name, such as those of a
    /// run that was killed, and files that were changed since are hashed; they have no source.
    ///
    /// \throws Vyn::Exception::FileFormatException  the manifest was not written by this class.
    explicit AssetLibrary(const QString &folder);

    /// Copies each content among \a files that is new, under a valid and unique name. Works in
    /// batches, and hands each to \a report when its copies would survive a power cut.
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
    std::map<QString, Asset> mAssets; ///< by name in folded case: Windows sees no difference
    QHash<QString, Asset *> mByHash;
    QHash<QString, Asset *> mBySource;
    std::map<QString, QString> mLastCopies; ///< last name of a copy, by the name that was taken
};
