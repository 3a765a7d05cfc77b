// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "AssetLibrary.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/text/StringUtils.h>

#include <QDateTime>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <algorithm>
#include <array>
#include <future>
#include <utility>

using namespace Qt::StringLiterals;
using Vyn::OvraBase::FileUtils;
namespace StringUtils = Vyn::OvraBase::StringUtils;

namespace {

const QString kManifest = u"manifest.json"_s;
const QString kBackup = u".bak"_s; // copyWithBackup() appends it to the name of the destination

/// Returns true if \a name is short enough for " copy 1234" or ".bak" to be appended.
bool hasRoomForEnding(const QString &name)
{
    return QFile::encodeName(name).size() <= 230; // most systems allow 255 bytes
}

/// Returns the entries of the manifest \a path, by file name.
QHash<QString, QJsonValue> load(const QString &path)
{
    const QByteArray text = FileUtils::loadBinaryFile(path);
    const QJsonDocument document = QJsonDocument::fromJson(text);
    const QJsonArray array = document.array();
    bool isOurs = text.isEmpty() || document.isArray();
    QHash<QString, QJsonValue> entries;
    for (const auto &entry : array) {
        isOurs = isOurs && entry[u"name"].isString() && entry[u"hash"].isString();
        entries.insert(entry[u"name"].toString(), entry);
    }
    if (!isOurs) {
        throw Vyn::Exception::FileFormatException("this is no manifest of asset_intake", path);
    }
    return entries;
}

QString hashOf(const QString &path)
{
    return FileUtils::hashToNumber(FileUtils::fileDataToHash(path));
}

qint64 modifiedAt(const QFileInfo &file)
{
    return file.lastModified().toMSecsSinceEpoch();
}

/// Hashes the next batch, which starts at the first of \a files. A batch is large, because on Linux
/// the disk is synced per batch and not per file, but small enough to show progress.
std::vector<Arrival> nextBatch(std::span<const QString> files)
{
    constexpr std::size_t kMostFiles = 1000;
    constexpr qint64 kMostBytes = qint64{256} << 20;
    std::vector<Arrival> batch;
    qint64 bytes = 0;
    while (batch.size() < std::min(kMostFiles, files.size()) && bytes < kMostBytes) {
        const QString &path = files[batch.size()];
        Arrival &arrival = batch.emplace_back(Arrival{path, QFileInfo(path).size()});
        bytes += arrival.size;
        try {
            arrival.hash = hashOf(path);
        } catch (const Vyn::Exception::BaseException &failure) {
            arrival.text = QString::fromUtf8(failure.what());
        }
    }
    return batch;
}

/// Sets the result of \a arrival, its text and its asset. \a asset has the content of \a arrival
/// or, if the copy failed, should have received it.
void settle(Arrival &arrival, Result result, Asset &asset)
{
    static constexpr std::array<const char *, kResults> kTexts{"already there as %1",
        "duplicate of %1", "new", "new, as %1", "replaced, the old content is in %1.bak",
        "it cannot be copied"};
    arrival.result = result;
    arrival.asset = &asset;
    arrival.text = QString::fromLatin1(kTexts[static_cast<std::size_t>(result)]);
    arrival.text.replace(u"%1"_s, asset.name);
}

} // namespace

QString assetClassOf(const QString &path)
{
    static constexpr std::pair<bool (*)(const QString &), const char *> kClasses[] = {
        {FileUtils::isMeshExt, "mesh"}, {FileUtils::isSLVARExt, "archive"},
        {FileUtils::isVSKFilterExt, "filter"}, {FileUtils::isQuickActionExt, "quick action"},
        {FileUtils::isImageExt, "image"}};
    const QString extension = FileUtils::getFilePathExtension(path);
    for (const auto &[isOfClass, name] : kClasses) {
        if (!extension.isEmpty() && isOfClass(extension)) {
            return QString::fromLatin1(name);
        }
    }
    return u"other"_s;
}

AssetLibrary::AssetLibrary(const QString &folder)
    : mFolder(folder)
{
    FileUtils::touch(mFolder.filePath(kManifest)); // so that no asset gets this name
    const QHash<QString, QJsonValue> entries = load(mFolder.filePath(kManifest));
    const QFileInfoList files = mFolder.entryInfoList(QDir::Files);
    for (const QFileInfo &file : files) {
        const QString name = file.fileName();
        const bool isBackup = file.suffix() == u"bak" && mFolder.exists(file.completeBaseName());
        const bool isTemporary = file.suffix() == u"tmp" && !entries.contains(name);
        if (name == kManifest || isBackup || isTemporary || mAssets.contains(name.toCaseFolded())) {
            continue;
        }
        const QJsonValue entry = entries.value(name);
        if (entry[u"size"].toInteger(-1) == file.size() &&
            entry[u"modified"].toInteger() == modifiedAt(file)) {
            Asset &asset = add({name, entry[u"hash"].toString(), file.size()});
            const QJsonArray sources = entry[u"sources"].toArray();
            for (const auto &source : sources) {
                setSource(asset, source.toString());
            }
        } else {
            try {
                add({name, hashOf(file.filePath()), file.size()});
            } catch (const Vyn::Exception::BaseException &) {
                // FileUtils has logged the failure. A file that cannot be read is no asset.
            }
        }
    }
}

void AssetLibrary::takeIn(
    const std::vector<QString> &files, const std::function<void(std::span<const Arrival>)> &report)
{
    std::span<const QString> left(files);
    auto next = std::async(std::launch::async, nextBatch, left);
    while (!left.empty()) {
        std::vector<Arrival> batch = next.get();
        left = left.subspan(batch.size());
        next = std::async(std::launch::async, nextBatch, left); // during the copies of this batch
        copyBatch(batch);
        report(batch);
    }
}

void AssetLibrary::copyBatch(std::span<Arrival> batch)
{
    std::vector<Arrival *> planned;
    std::vector<std::pair<QString, QString>> copies;
    for (Arrival &arrival : batch) {
        if (!arrival.hash.isEmpty() && !isKnown(arrival)) {
            planCopy(arrival);
            planned.push_back(&arrival);
            copies.emplace_back(arrival.path, mFolder.filePath(arrival.asset->name));
        }
    }
    const std::vector<bool> areCopied = FileUtils::copyWithBackup(copies);
    for (std::size_t i = 0; i < planned.size(); ++i) {
        if (!areCopied[i]) {
            const Asset &before = planned[i]->before;
            setContent(*planned[i]->asset, before.hash, before.size);
            planned[i]->asset->sources = before.sources;
        }
    }
    for (Arrival &arrival : batch) {
        if (arrival.asset && arrival.asset->hash != arrival.hash) {
            settle(arrival, Result::Failed, *arrival.asset);
        }
    }
}

/// Returns true if an asset has the content of \a arrival. In that case, settles \a arrival and
/// adds its path to the sources of that asset.
bool AssetLibrary::isKnown(Arrival &arrival)
{
    Asset *const asset = mByHash.value(arrival.hash);
    if (asset != nullptr) {
        setSource(*asset, arrival.path);
        const bool isFirst = asset->sources.startsWith(arrival.path);
        settle(arrival, isFirst ? Result::Unchanged : Result::Duplicate, *asset);
    }
    return asset != nullptr;
}

/// Chooses the asset that \a arrival is copied to, an old or a new one. Gives it the new hash
/// before the copy is made, so that later arrivals with the same content become duplicates of it.
/// copyBatch() restores the old hash, size and sources if the copy fails.
void AssetLibrary::planCopy(Arrival &arrival)
{
    const QString name = QFileInfo(arrival.path).fileName();
    Asset *const asset = mBySource.value(arrival.path);
    if (asset != nullptr && mayReplace(*asset, name)) {
        arrival.before = *asset;
        setContent(*asset, arrival.hash, arrival.size);
        settle(arrival, Result::Replaced, *asset);
    } else {
        Asset &added = add({freeName(name), arrival.hash, arrival.size});
        setSource(added, arrival.path);
        settle(arrival, added.name == name ? Result::New : Result::Renamed, added);
    }
}

bool AssetLibrary::isTaken(const QString &name) const
{
    const QFileInfo file(mFolder, name);
    return mAssets.contains(name.toCaseFolded()) || file.exists() || file.isSymLink();
}

/// Returns true if a new asset can have the name \a name: the name and the name of its backup are
/// not taken, and \a name is not the name that the backup of a taken name has or would have.
bool AssetLibrary::isFree(const QString &name) const
{
    return !isTaken(name) && !isTaken(name + kBackup) &&
           !(name.endsWith(kBackup) && isTaken(name.chopped(kBackup.size())));
}

/// Returns a valid and free name for a new asset: ensureValidFileName() of \a name, or if that is
/// not free, the first free one of its copy names, see StringUtils::getCopyName(), with the
/// extension at the end. A long name is shortened before " copy" is appended.
/// FileUtils::getUniqueFileName() is not used: it does not know the files of the batch that are not
/// copied yet.
QString AssetLibrary::freeName(const QString &name)
{
    QString valid = FileUtils::ensureValidFileName(name);
    if (isFree(valid)) {
        return valid;
    }
    QString base = QFileInfo(valid).completeBaseName();
    const QString end = valid.mid(base.size());
    while (!hasRoomForEnding(base + end) && base.size() > 2) {
        base.chop(base.back().isLowSurrogate() ? 2 : 1);
    }
    QString &last = mLastCopies.try_emplace(valid, base).first->second;
    do {
        last = StringUtils::getCopyName(last);
    } while (!isFree(last + end));
    return last + end;
}

/// Returns true if the new content of a source with the file name \a sourceName may replace the old
/// content of \a asset, which becomes a backup. This is so if \a asset has no other source and no
/// backup yet, and if its name has room for ".bak" and was probably made from \a sourceName: it is
/// the valid form of \a sourceName, or begins with the first copy name of that.
bool AssetLibrary::mayReplace(const Asset &asset, const QString &sourceName) const
{
    const QString valid = FileUtils::ensureValidFileName(sourceName);
    const QString copy = StringUtils::getCopyName(QFileInfo(valid).completeBaseName());
    return (asset.name == valid || asset.name.startsWith(copy)) && asset.sources.size() == 1 &&
           hasRoomForEnding(asset.name) && !isTaken(asset.name + kBackup);
}

bool AssetLibrary::saveManifest() const
{
    QJsonArray array;
    for (const auto &[key, asset] : mAssets) {
        const QFileInfo file(mFolder, asset.name);
        if (!asset.hash.isEmpty()) {
            array.append(QJsonObject{{u"name"_s, asset.name},
                {u"class"_s, assetClassOf(asset.name)}, {u"hash"_s, asset.hash},
                {u"size"_s, asset.size}, {u"modified"_s, modifiedAt(file)},
                {u"sources"_s, QJsonArray::fromStringList(asset.sources)}});
        }
    }
    // With QSaveFile, the manifest is the old or the new one after a power failure.
    QSaveFile file(mFolder.filePath(kManifest));
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(array).toJson()) >= 0 &&
           file.commit();
}

Asset &AssetLibrary::add(const Asset &asset)
{
    Asset &added = mAssets.insert_or_assign(asset.name.toCaseFolded(), asset).first->second;
    mByHash.insert(added.hash, &added);
    return added;
}

void AssetLibrary::setSource(Asset &asset, const QString &source)
{
    Asset *const before = std::exchange(mBySource[source], &asset);
    if (before != &asset) {
        asset.sources.append(source);
        if (before != nullptr) {
            before->sources.removeOne(source);
        }
    }
}

void AssetLibrary::setContent(Asset &asset, const QString &hash, qint64 size)
{
    mByHash.remove(asset.hash);
    asset.hash = hash;
    asset.size = size;
    mByHash.insert(hash, &asset);
}
