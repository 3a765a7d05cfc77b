// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "Intake.h"

#include "Console.h"
#include "HashesAhead.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/logStr.h>
#include <ovrabase/text/StringUtils.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>

using Vyn::OvraBase::FileUtils;
namespace StringUtils = Vyn::OvraBase::StringUtils;

namespace {

QString classOf(const QString &path)
{
    const QString extension = FileUtils::getFilePathExtension(path);
    if (FileUtils::isMeshExt(extension)) {
        return QStringLiteral("mesh");
    }
    if (FileUtils::isSLVARExt(extension)) {
        return QStringLiteral("archive");
    }
    if (FileUtils::isVSKFilterExt(extension)) {
        return QStringLiteral("filter");
    }
    if (FileUtils::isQuickActionExt(extension)) {
        return QStringLiteral("quick action");
    }
    if (!extension.isEmpty() && FileUtils::isImageExt(extension)) {
        return QStringLiteral("image");
    }
    return QStringLiteral("other");
}

/// Whether \a name leaves room for a number, "copy" or ".bak" behind it.
bool leavesRoom(const QString &name)
{
    return QFile::encodeName(name).size() <= 230; // of 255
}

bool stands(const QString &path)
{
    const QFileInfo entry(path);
    return entry.isSymLink() || entry.exists();
}

/// Whether a copy to \a path would meet something there or in the place of its backup.
bool isTaken(const QString &path)
{
    return stands(path) || stands(path + QStringLiteral(".bak"));
}

/// The intake of one file at a time.
class Intake {
public:
    Intake(const std::vector<QString> &files, const QString &library, Manifest &manifest)
        : mLibrary(library)
        , mManifest(manifest)
        , mHashes(files)
    {
    }

    /// Takes the next file in and returns what happened to it, as a line for the user.
    QString take(const QString &source)
    {
        const QFileInfo file(source);
        const QString assetClass = classOf(source);
        Tally &tally = mSummary.byClass[assetClass];
        ++tally.files;
        tally.bytes += file.size();
        return QStringLiteral("%1 %2  %3")
            .arg(assetClass, -12)
            .arg(file.fileName(), outcomeOf(file, assetClass, tally));
    }

    const Summary &summary() const { return mSummary; }

private:
    QString outcomeOf(const QFileInfo &file, const QString &assetClass, Tally &tally)
    {
        try {
            return bringIn(file, assetClass, tally);
        } catch (const Vyn::Exception::IOException &failure) {
            ++mSummary.failed;
            return QStringLiteral("left alone, %1: %2")
                .arg(QString::fromUtf8(failure.what()), Vyn::logStr(failure.subject()));
        } catch (const Vyn::Exception::BaseException &failure) {
            ++mSummary.failed;
            return QStringLiteral("left alone, %1").arg(QString::fromUtf8(failure.what()));
        }
    }

    QString bringIn(const QFileInfo &file, const QString &assetClass, Tally &tally)
    {
        const QString source = file.absoluteFilePath();
        const QString hash = mHashes.next();
        Asset *const before = mManifest.fromSource(source);
        if (Asset *const same = mManifest.withContent(hash, file.size())) {
            if (same == before) {
                same->assetClass = assetClass; // it may have become the source meanwhile
                return QStringLiteral("unchanged");
            }
            if (before) {
                mManifest.dropSource(*before);
            }
            if (same->source.isEmpty()) {
                mManifest.removeDuplicate(source);
                mManifest.setSource(*same, source, assetClass);
                return QStringLiteral("already there as %1").arg(same->name);
            }
            ++tally.duplicates;
            mManifest.setDuplicate(*same, source);
            return QStringLiteral("duplicate of %1").arg(same->name);
        }

        mManifest.removeDuplicate(source);
        const bool replaces = before && mayReplace(*before, file.fileName());
        const QString destination =
            replaces ? QDir(mLibrary).filePath(before->name) : freePath(file.fileName());
        if (!FileUtils::copyWithBackup(source, destination)) {
            ++mSummary.failed;
            return QStringLiteral("left alone, it cannot be copied");
        }
        ++mSummary.copied;
        mSummary.copiedBytes += file.size();
        if (replaces) {
            mManifest.replaceContent(*before, hash, file.size());
            return QStringLiteral("replaced, the old content is in %1.bak").arg(before->name);
        }
        if (before) {
            mManifest.dropSource(*before);
        }
        const QString name = QFileInfo(destination).fileName();
        mManifest.add({source, name, assetClass, hash, file.size(), {}});
        ++tally.added;
        tally.renamed += name == file.fileName() ? 0 : 1;
        return name == file.fileName() ? QStringLiteral("new")
                                       : QStringLiteral("new, as %1").arg(name);
    }

    /// Returns a valid path in the library for a file called \a name, where nothing is yet.
    QString freePath(const QString &name)
    {
        const QDir folder(mLibrary);
        const QString valid = FileUtils::ensureValidFileName(name);
        QString &path = mLastPaths[valid]; // numbers go on from there
        if (path.isEmpty()) {
            path = folder.filePath(valid);
        }
        if (!isTaken(path)) {
            return path;
        }
        QString extension = FileUtils::getFilePathCompleteExtension(valid);
        QString base = FileUtils::getBaseName(path);
        if (!leavesRoom(base + extension)) {
            extension = FileUtils::getFilePathExtension(valid);
            base = QFileInfo(path).completeBaseName();
            while (base.size() > 2 && !leavesRoom(base + extension)) {
                base.chop(base.back().isLowSurrogate() ? 2 : 1);
            }
        }
        if (!extension.isEmpty()) {
            path = FileUtils::getUniqueFileName(mLibrary, base, extension);
            path = folder.filePath(FileUtils::ensureValidFileName(QFileInfo(path).fileName()));
        }
        // What has no extension to number, or meets a folder, is named as users name copies.
        while (isTaken(path)) {
            base = StringUtils::getCopyName(base);
            path = folder.filePath(extension.isEmpty() ? base : QString(base + u'.' + extension));
        }
        return path;
    }

    /// Whether the content of \a asset may go to its backup: the file is named after its source,
    /// which is called \a sourceName, nobody else means it, and there is room for the backup, which
    /// nothing has taken.
    bool mayReplace(const Asset &asset, const QString &sourceName) const
    {
        const bool isOwn =
            !asset.adopted || asset.name == FileUtils::ensureValidFileName(sourceName);
        return isOwn && asset.duplicates.isEmpty() && leavesRoom(asset.name) &&
               !stands(QDir(mLibrary).filePath(asset.name + QStringLiteral(".bak")));
    }

    QString mLibrary;
    Manifest &mManifest;
    QHash<QString, QString> mLastPaths; ///< by valid name
    HashesAhead mHashes;
    Summary mSummary;
};

} // namespace

Summary takeIn(const std::vector<QString> &files, const QString &library, Manifest &manifest)
{
    FileUtils::touch(manifest.path()); // an asset of the same name gets another one
    Intake intake(files, library, manifest);
    Listing listing(static_cast<qsizetype>(files.size()));
    for (const QString &file : files) {
        listing.print(intake.take(file));
    }
    return intake.summary();
}
