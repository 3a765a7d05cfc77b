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
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <span>
#include <utility>

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

/// Returns \a base with the next number, as FileUtils::getUniqueFileName() counts.
QString withNextNumber(const QString &base)
{
    static const QRegularExpression numbered(QStringLiteral("_(\\d\\d\\d+)$"));
    const auto match = numbered.match(base);
    return match.hasMatch() ? base.left(match.capturedStart()) +
                                  QStringLiteral("_%1").arg(
                                      match.capturedView(1).toInt() + 1, 3, 10, QLatin1Char('0'))
                            : base + QStringLiteral("_001");
}

/// A file that comes in.
struct Arrival {
    QFileInfo file;
    QString assetClass;
    QString hash;
    QString outcome; ///< a line for the user, empty until it is known
};

/// The intake of files in batches: what the library says it copied, it has synced.
class Intake {
public:
    Intake(const std::vector<QString> &files, const QString &library, Manifest &manifest)
        : mLibrary(library)
        , mManifest(manifest)
        , mHashes(files)
    {
    }

    /// Takes the next files in and returns what happened to each, as a line for the user.
    QStringList take(std::span<const QString> sources)
    {
        std::vector<Arrival> arrivals;
        for (const QString &source : sources) {
            arrivals.push_back({QFileInfo(source), classOf(source), {}, {}});
            Arrival &arrival = arrivals.back();
            ++tallyOf(arrival).files;
            tallyOf(arrival).bytes += arrival.file.size();
            attempt(arrival, [&] { arrival.hash = mHashes.next(); });
        }
        const auto isOpen = [](const Arrival &arrival) { return arrival.outcome.isEmpty(); };
        while (std::any_of(arrivals.begin(), arrivals.end(), isOpen)) {
            for (Arrival &arrival : arrivals) {
                if (isOpen(arrival) && !dependsOnPending(arrival)) {
                    attempt(arrival, [&] { bringIn(arrival); });
                }
            }
            copyPending();
        }
        QStringList lines;
        for (const Arrival &arrival : arrivals) {
            lines.append(QStringLiteral("%1 %2  %3")
                             .arg(arrival.assetClass, -12)
                             .arg(arrival.file.fileName(), arrival.outcome));
        }
        return lines;
    }

    const Summary &summary() const { return mSummary; }

private:
    struct PendingCopy {
        Arrival *arrival;
        Asset *before; ///< what came from the same source earlier, or null
        bool replaces; ///< the file of \a before
        QString destination;
    };

    Tally &tallyOf(const Arrival &arrival) { return mSummary.byClass[arrival.assetClass]; }

    template<class Work>
    void attempt(Arrival &arrival, Work work)
    {
        try {
            work();
        } catch (const Vyn::Exception::IOException &failure) {
            fail(arrival, QStringLiteral("%1: %2").arg(
                              QString::fromUtf8(failure.what()), Vyn::logStr(failure.subject())));
        } catch (const Vyn::Exception::BaseException &failure) {
            fail(arrival, QString::fromUtf8(failure.what()));
        }
    }

    void fail(Arrival &arrival, const QString &reason)
    {
        ++mSummary.failed;
        arrival.outcome = QStringLiteral("left alone, %1").arg(reason);
    }

    /// Whether the outcome of \a arrival is known only when the pending copies are made.
    bool dependsOnPending(const Arrival &arrival)
    {
        return mPendingContents.contains(arrival.hash) ||
               mPendingAssets.contains(mManifest.fromSource(arrival.file.absoluteFilePath())) ||
               mPendingAssets.contains(mManifest.withContent(arrival.hash, arrival.file.size()));
    }

    /// Finds out what happens to \a arrival, or plans its copy.
    void bringIn(Arrival &arrival)
    {
        const QFileInfo &file = arrival.file;
        const QString source = file.absoluteFilePath();
        Asset *const before = mManifest.fromSource(source);
        if (Asset *const same = mManifest.withContent(arrival.hash, file.size())) {
            if (same == before) {
                same->assetClass = arrival.assetClass; // it may have become the source meanwhile
                arrival.outcome = QStringLiteral("unchanged");
                return;
            }
            if (before) {
                mManifest.dropSource(*before);
            }
            if (same->source.isEmpty()) {
                mManifest.removeDuplicate(source);
                mManifest.setSource(*same, source, arrival.assetClass);
                arrival.outcome = QStringLiteral("already there as %1").arg(same->name);
                return;
            }
            ++tallyOf(arrival).duplicates;
            mManifest.setDuplicate(*same, source);
            arrival.outcome = QStringLiteral("duplicate of %1").arg(same->name);
            return;
        }

        const bool replaces = before && mayReplace(*before, file.fileName());
        const QString destination =
            replaces ? QDir(mLibrary).filePath(before->name) : freePath(file.fileName());
        if (mPendingNames.contains(destination.toCaseFolded())) {
            return; // the file system may take both for one name
        }
        mManifest.removeDuplicate(source);
        mPending.push_back({&arrival, before, replaces, destination});
        mPendingPaths.insert(destination);
        mPendingNames.insert(destination.toCaseFolded());
        mPendingContents.insert(arrival.hash);
        if (before) {
            mPendingAssets.insert(before);
        }
    }

    void copyPending()
    {
        std::vector<std::pair<QString, QString>> copies;
        for (const PendingCopy &copy : mPending) {
            copies.emplace_back(copy.arrival->file.absoluteFilePath(), copy.destination);
        }
        const std::vector<bool> areCopied = FileUtils::copyWithBackup(copies);
        for (std::size_t i = 0; i < mPending.size(); ++i) {
            if (areCopied[i]) {
                noteCopied(mPending[i]);
            } else {
                fail(*mPending[i].arrival, QStringLiteral("it cannot be copied"));
            }
        }
        mPending.clear();
        mPendingPaths.clear();
        mPendingNames.clear();
        mPendingContents.clear();
        mPendingAssets.clear();
    }

    void noteCopied(const PendingCopy &copy)
    {
        Arrival &arrival = *copy.arrival;
        ++mSummary.copied;
        mSummary.copiedBytes += arrival.file.size();
        if (copy.replaces) {
            mManifest.replaceContent(*copy.before, arrival.hash, arrival.file.size());
            arrival.outcome =
                QStringLiteral("replaced, the old content is in %1.bak").arg(copy.before->name);
            return;
        }
        if (copy.before) {
            mManifest.dropSource(*copy.before);
        }
        const QString name = QFileInfo(copy.destination).fileName();
        mManifest.add({arrival.file.absoluteFilePath(), name, arrival.assetClass, arrival.hash,
            arrival.file.size(), {}});
        const bool isRenamed = name != arrival.file.fileName();
        ++tallyOf(arrival).added;
        tallyOf(arrival).renamed += isRenamed ? 1 : 0;
        arrival.outcome =
            isRenamed ? QStringLiteral("new, as %1").arg(name) : QStringLiteral("new");
    }

    /// Whether a copy to \a path would meet something there or in the place of its backup.
    bool isTaken(const QString &path) const
    {
        return mPendingPaths.contains(path) || stands(path) ||
               stands(path + QStringLiteral(".bak"));
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
            while (mPendingPaths.contains(path)) { // they are not there yet
                QString last = QFileInfo(path).fileName();
                last.chop(extension.size() + 1);
                path = folder.filePath(withNextNumber(last) + u'.' + extension);
            }
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
    std::vector<PendingCopy> mPending;
    QSet<QString> mPendingPaths;
    QSet<QString> mPendingNames; ///< without case
    QSet<QString> mPendingContents;
    QSet<const Asset *> mPendingAssets; ///< that change with the copies
};

/// Returns how many of \a files come in together: the more, the less it costs to sync them, and the
/// longer nothing is seen.
std::size_t batchSize(std::span<const QString> files)
{
    constexpr std::size_t kMost = 1000;
    constexpr qint64 kMostBytes = qint64{256} << 20;
    std::size_t size = 0;
    for (qint64 bytes = 0; size < std::min(kMost, files.size()) && bytes < kMostBytes; ++size) {
        bytes += QFileInfo(files[size]).size();
    }
    return size;
}

} // namespace

Summary takeIn(const std::vector<QString> &files, const QString &library, Manifest &manifest)
{
    FileUtils::touch(manifest.path()); // an asset of the same name gets another one
    Intake intake(files, library, manifest);
    Listing listing(static_cast<qsizetype>(files.size()));
    for (std::span<const QString> left(files); !left.empty();) {
        const std::size_t size = batchSize(left);
        for (const QString &line : intake.take(left.first(size))) {
            listing.print(line);
        }
        left = left.subspan(size);
    }
    return intake.summary();
}
