// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <deque>

/// One file of the library and where it came from.
struct Asset {
    QString source; ///< absolute path; empty until a source with this content comes in
    QString name;   ///< file name in the library
    QString assetClass;
    QString hash;           ///< of the content
    qint64 size;            ///< in bytes
    QStringList duplicates; ///< further sources of the same content
    bool adopted = false;   ///< the file was there before it became that of this source
};

/// What the library holds, kept in its "manifest.json". Files that it does not name, such as those
/// of a run that was killed, are known by their content all the same.
class Manifest {
public:
    /// Reads the manifest of \a library. Assets whose file is gone or was changed are left out:
    /// they come in anew. Throws what loading a file throws.
    explicit Manifest(const QString &library);

    bool save() const;
    QString path() const;

    Asset *withContent(const QString &hash, qint64 size);
    Asset *fromSource(const QString &source);

    void add(const Asset &asset);
    void setSource(Asset &asset, const QString &source, const QString &assetClass);
    /// Notes that the source of \a asset has another content now. The asset is that of its first
    /// duplicate then, or nobody's: its file stays, and is known by its content only.
    void dropSource(Asset &asset);
    /// Notes that \a source, a duplicate of nothing else from now on, has the content of \a asset.
    void setDuplicate(Asset &asset, const QString &source);
    void removeDuplicate(const QString &source);
    /// Makes \a asset what came from its source now.
    void replaceContent(Asset &asset, const QString &hash, qint64 size);

private:
    void load();
    void findUnnamed();

    QString mLibrary;
    std::deque<Asset> mAssets; // addresses stay
    QHash<QString, Asset *> mByHash;
    QHash<QString, Asset *> mBySource;
    QHash<QString, Asset *> mByDuplicate;
    QMultiHash<qint64, QString> mUnnamed; // by size
};
