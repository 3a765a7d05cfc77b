// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/FileListing_p.h"
#include "files/FileNames_p.h"
#include "files/FileSystem_p.h"

#include <ovrabase/files/FileUtils.h>

#include <QStringView>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace Vyn::OvraBase {
namespace {

/// The names that count as reserved by Windows: those of devices, and COM0 and LPT0.
constexpr std::array<QStringView, 24> kReservedNames{u"CON", u"PRN", u"AUX", u"NUL", u"COM0",
    u"COM1", u"COM2", u"COM3", u"COM4", u"COM5", u"COM6", u"COM7", u"COM8", u"COM9", u"LPT0",
    u"LPT1", u"LPT2", u"LPT3", u"LPT4", u"LPT5", u"LPT6", u"LPT7", u"LPT8", u"LPT9"};

constexpr qsizetype kNumberDigits = 3;

bool isForbidden(QChar c)
{
    return c < u' ' || QStringView(u"\"<>|:*?\\/").contains(c);
}

QStringView upToFirstNul(QStringView name)
{
    const qsizetype end = name.indexOf(QChar::Null);
    return end < 0 ? name : name.first(end);
}

/// Returns true if the part of \a name before the last dot is a reserved name. Windows ignores the
/// extension of a device name.
bool hasReservedStem(QStringView name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    const QString stem = (dot < 0 ? name : name.first(dot)).toString().toUpper();
    return std::find(kReservedNames.begin(), kReservedNames.end(), stem) != kReservedNames.end();
}

bool isAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// Returns true if \a name ends in "_" and exactly three digits.
bool endsWithNumber(QStringView name)
{
    if (name.size() <= kNumberDigits) {
        return false;
    }
    const QStringView tail = name.last(kNumberDigits + 1);
    return tail.front() == u'_' && std::all_of(tail.begin() + 1, tail.end(), isAsciiDigit);
}

/// The numbers in the names of files in a folder. Only names that consist of a given text, a number
/// and another given text count. The folder is listed in pieces, see readMore().
class ListedNumbers {
public:
    ListedNumbers(const QString &folder, const QString &beforeNumber, const QString &afterNumber)
        : mListing(folder)
        , mBefore(os::nativePath(beforeNumber).native())
        , mAfter(os::nativePath(afterNumber).native())
    {
    }

    /// Reads up to \a entries more entries of the listing.
    void readMore(int entries)
    {
        os::FileListing::Name name;
        for (int i = 0; i < entries && mListing.next(name); ++i) {
            if (const std::size_t number = numberIn(name); number != kNone) {
                mNumbers.resize(std::max(mNumbers.size(), number + 1));
                mNumbers[number] = true;
            }
        }
    }

    /// Returns true if readMore() has read a file name with \a number.
    bool contains(qint64 number) const
    {
        const auto index = static_cast<std::size_t>(number);
        return index < mNumbers.size() && mNumbers[index];
    }

private:
    using NameView = std::basic_string_view<os::FileListing::Name::value_type>;
    static constexpr std::size_t kNone = ~std::size_t{0};

    /// Returns the number in \a name, or kNone.
    std::size_t numberIn(NameView name) const
    {
        if (name.size() < mBefore.size() + kNumberDigits + mAfter.size() ||
            !name.starts_with(mBefore) || !name.ends_with(mAfter)) {
            return kNone;
        }
        const NameView digits =
            name.substr(mBefore.size(), name.size() - mBefore.size() - mAfter.size());
        // Limits the size of mNumbers. For a greater number, firstFreePath() tests whether the file
        // exists.
        constexpr std::size_t kMaxDigits = 6;
        if (digits.size() > kMaxDigits || (digits.size() > kNumberDigits && digits[0] == '0')) {
            return kNone; // NumberedNames writes leading zeros only up to three digits
        }
        std::size_t number = 0;
        for (const auto digit : digits) {
            if (digit < '0' || digit > '9') {
                return kNone;
            }
            number = 10 * number + static_cast<std::size_t>(digit - '0');
        }
        return number;
    }

    os::FileListing mListing;
    os::FileListing::Name mBefore;
    os::FileListing::Name mAfter;
    std::vector<bool> mNumbers; ///< true at the index of each number that was read
};

} // namespace

bool FileUtils::isValidFileName(const QString &name)
{
    const QStringView visible = upToFirstNul(name);
    return std::none_of(visible.begin(), visible.end(), isForbidden) && !hasReservedStem(name);
}

QString FileUtils::ensureValidFileName(const QString &name)
{
    if (name.isEmpty()) {
        return tr("file");
    }
    QString valid = upToFirstNul(name).toString();
    std::replace_if(valid.begin(), valid.end(), isForbidden, QChar(u'x'));
    if (hasReservedStem(valid)) {
        valid.prepend(u'_');
    }
    return valid;
}

QString FileUtils::getUniqueFileName(
    const QString &folder, const QString &baseName, const QString &extension)
{
    const NumberedNames names(folder, baseName, extension);
    qint64 number = names.first();
    return names.firstFreePath(number);
}

NumberedNames::NumberedNames(
    const QString &folder, const QString &baseName, const QString &extension)
    : mFolder(folder)
    , mStem(baseName)
    , mEnd(u'.' + extension)
{
    if (endsWithNumber(baseName)) {
        mStart = QStringView(baseName).last(kNumberDigits).toInt() + 1;
        mStem.chop(kNumberDigits + 1);
    }
}

QString NumberedNames::path(qint64 number) const
{
    if (number < mStart) {
        return mFolder.filePath(mStem + mEnd);
    }
    const QString digits = QString::number(number).rightJustified(kNumberDigits, u'0');
    return mFolder.filePath(mStem + u'_' + digits + mEnd);
}

bool NumberedNames::isInFolder() const
{
    const QString name = QDir::fromNativeSeparators(mStem + mEnd);
    return QDir::isRelativePath(name) && !name.contains(u'/');
}

QString NumberedNames::firstFreePath(qint64 &number) const
{
    // The first names are tested without a listing of the folder, because a few tests are faster
    // than a listing. After that, some entries are listed per test. To list an entry takes about a
    // tenth of the time of a test. So the listing makes the search at most a few times slower, even
    // if the folder has many other files.
    constexpr int kTestsBeforeListing = 32;
    constexpr int kListedPerTest = 32;
    std::optional<ListedNumbers> listed;
    for (int tests = 0;; ++number) {
        if (number >= mStart && listed && listed->contains(number)) {
            continue;
        }
        // The listing cannot show that a name is free: the file system may ignore letter case, and
        // a file may be newer than the listing.
        QString candidate = path(number);
        if (!FileUtils::isFile(candidate)) {
            return candidate;
        }
        if (++tests == kTestsBeforeListing && isInFolder()) {
            listed.emplace(mFolder.path(), mStem + u'_', mEnd);
        }
        if (listed) {
            listed->readMore(kListedPerTest);
        }
    }
}

} // namespace Vyn::OvraBase
