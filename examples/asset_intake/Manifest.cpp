// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "Manifest.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QSet>
#include <QUuid>

#include <algorithm>

using Vyn::OvraBase::FileUtils;

namespace {

qint64 modifiedAt(const QFileInfo &file)
{
    return file.lastModified().toMSecsSinceEpoch();
}

QJsonObject toJson(const Asset &asset, const QFileInfo &file)
{
    return {{QStringLiteral("source"), asset.source}, {QStringLiteral("name"), asset.name},
        {QStringLiteral("class"), asset.assetClass}, {QStringLiteral("hash"), asset.hash},
        {QStringLiteral("size"), asset.size}, {QStringLiteral("modified"), modifiedAt(file)},
        {QStringLiteral("duplicates"), QJsonArray::fromStringList(asset.duplicates)},
        {QStringLiteral("adopted"), asset.adopted}};
}

/// Whether \a value is an entry that this program wrote, and not of somebody's other
/// "manifest.json".
bool isAsset(const QJsonValue &value)
{
    return value[u"source"].isString() && value[u"name"].isString() && value[u"hash"].isString() &&
           value[u"size"].isDouble();
}

Asset fromJson(const QJsonValue &value)
{
    Asset asset{value[u"source"].toString(), value[u"name"].toString(), value[u"class"].toString(),
        value[u"hash"].toString(), value[u"size"].toInteger(), {}, value[u"adopted"].toBool()};
    const QJsonArray duplicates = value[u"duplicates"].toArray();
    for (const auto &duplicate : duplicates) {
        asset.duplicates.append(duplicate.toString());
    }
    return asset;
}

} // namespace

Manifest::Manifest(const QString &library)
    : mLibrary(library)
{
    if (FileUtils::isFile(path())) {
        load();
    }
    findUnnamed();
}

void Manifest::load()
{
    const QByteArray text = FileUtils::loadBinaryFile(path());
    const QJsonDocument document = QJsonDocument::fromJson(text);
    const QJsonArray assets = document.array();
    if ((!text.isEmpty() && !document.isArray()) ||
        !std::all_of(assets.begin(), assets.end(), isAsset)) {
        throw Vyn::Exception::FileFormatException("the manifest is not one of ours", path());
    }
    for (const auto &value : assets) {
        const Asset asset = fromJson(value);
        const QFileInfo file(QDir(mLibrary).filePath(asset.name));
        // A name that leads elsewhere was not written here: it is not to be trusted.
        if (file.fileName() == asset.name && file.isFile() && file.size() == asset.size &&
            modifiedAt(file) == value[u"modified"].toInteger()) {
            add(asset);
        }
    }
}

void Manifest::findUnnamed()
{
    QSet<QString> named{QFileInfo(path()).fileName()};
    for (const Asset &asset : mAssets) {
        named.insert(asset.name);
    }
    const QFileInfoList files = QDir(mLibrary).entryInfoList(QDir::Files, QDir::Unsorted);
    for (const QFileInfo &file : files) {
        // Neither what a copy that was killed left nor a backup is anybody's asset.
        const QString base = file.completeBaseName();
        const bool isPart = file.suffix() == u"tmp" && !QUuid(base).isNull();
        const bool isBackup = file.suffix() == u"bak" && named.contains(base);
        if (!isPart && !isBackup && !named.contains(file.fileName())) {
            mUnnamed.insert(file.size(), file.fileName());
        }
    }
}

bool Manifest::save() const
{
    QJsonArray assets;
    for (const Asset &asset : mAssets) {
        if (!asset.source.isEmpty()) {
            assets.append(toJson(asset, QFileInfo(QDir(mLibrary).filePath(asset.name))));
        }
    }
    QSaveFile file(path()); // never a half-written manifest
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(assets).toJson()) >= 0 &&
           file.commit();
}

QString Manifest::path() const
{
    return QDir(mLibrary).filePath(QStringLiteral("manifest.json"));
}

Asset *Manifest::withContent(const QString &hash, qint64 size)
{
    const QStringList unnamed = mUnnamed.values(size);
    mUnnamed.remove(size);
    for (const QString &name : unnamed) {
        try {
            const QByteArray content = FileUtils::fileDataToHash(QDir(mLibrary).filePath(name));
            const QString number = FileUtils::hashToNumber(content);
            if (!mByHash.contains(number)) {
                add({{}, name, {}, number, size, {}});
            }
        } catch (const Vyn::Exception::BaseException &) {
            // Somebody's file that cannot be read is none of ours.
        }
    }
    Asset *const asset = mByHash.value(hash);
    return asset && asset->size == size ? asset : nullptr;
}

Asset *Manifest::fromSource(const QString &source)
{
    return mBySource.value(source);
}

void Manifest::add(const Asset &asset)
{
    mAssets.push_back(asset);
    Asset *const added = &mAssets.back();
    mByHash.insert(added->hash, added);
    mBySource.insert(added->source, added);
    for (const QString &duplicate : added->duplicates) {
        mByDuplicate.insert(duplicate, added);
    }
}

void Manifest::setSource(Asset &asset, const QString &source, const QString &assetClass)
{
    asset.source = source;
    asset.assetClass = assetClass;
    asset.adopted = true;
    mBySource.insert(source, &asset);
}

void Manifest::dropSource(Asset &asset)
{
    mBySource.remove(asset.source);
    asset.source = asset.duplicates.isEmpty() ? QString() : asset.duplicates.takeFirst();
    asset.adopted = true;
    if (!asset.source.isEmpty()) {
        mByDuplicate.remove(asset.source);
        mBySource.insert(asset.source, &asset);
    }
}

void Manifest::setDuplicate(Asset &asset, const QString &source)
{
    if (mByDuplicate.value(source) != &asset) {
        removeDuplicate(source);
        asset.duplicates.append(source);
        mByDuplicate.insert(source, &asset);
    }
}

void Manifest::removeDuplicate(const QString &source)
{
    if (Asset *const asset = mByDuplicate.take(source)) {
        asset->duplicates.removeOne(source);
    }
}

void Manifest::replaceContent(Asset &asset, const QString &hash, qint64 size)
{
    mByHash.remove(asset.hash);
    asset.hash = hash;
    asset.size = size;
    mByHash.insert(hash, &asset);
}
