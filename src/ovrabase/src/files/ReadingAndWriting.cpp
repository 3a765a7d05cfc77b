// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/Entries_p.h"
#include "files/FileSystem_p.h"
#include "files/ReadingAndWriting_p.h"
#include "logging/LogSite_p.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <filesystem>
#include <system_error>

namespace Vyn::OvraBase {
namespace {

constexpr LogPosition kMissingFile{"FileUtils.cpp:136 Vyn::OvraBase::verifyAccessToFile()"};
constexpr LogPosition kFileNotOpened{"FileUtils.cpp:142 Vyn::OvraBase::verifyAccessToFile()"};
constexpr LogPosition kNotRead{"FileUtils.cpp:150 Vyn::OvraBase::verifyReading()"};

/// Returns true if \a path is a named pipe. To open one for writing blocks until it has a reader.
bool isNamedPipe(const QString &path)
{
    std::error_code unknown;
    return std::filesystem::is_fifo(os::nativePath(path), unknown);
}

} // namespace

void verifyAccessToFile(const QString &path, QFile &file, QIODevice::OpenMode mode)
{
    if (!FileUtils::isFile(path)) {
        fail<Exception::InvalidArgumentException>(
            kMissingFile, QStringLiteral("File <%1> does not exist").arg(path));
    }
    file.setFileName(path);
    if (!file.open(mode)) {
        fail<Exception::FileOpenException>(kFileNotOpened,
            QStringLiteral("Error opening file <%1> : %2").arg(path, file.errorString()), path);
    }
}

void verifyReading(const QFile &file)
{
    if (file.error() != QFile::NoError) {
        fail<Exception::FileReadingException>(kNotRead,
            QStringLiteral("Error reading file <%1> : %2").arg(file.fileName(), file.errorString()),
            file.fileName());
    }
}

std::vector<QString> FileUtils::folderParseFiles(
    const QString &folder, const QList<QString> &nameFilters, Recursion recursion)
{
    std::vector<QString> files;
    if (!isFolder(folder)) {
        return files;
    }
    QDirIterator entries(folder, nameFilters, QDir::Files,
        recursion == Recursion::Recursive ? QDirIterator::Subdirectories
                                          : QDirIterator::NoIteratorFlags);
    while (entries.hasNext()) {
        files.push_back(entries.next());
    }
    return files;
}

void FileUtils::hideFileOnWindows(const QString &path)
{
    if (canBePath(path)) {
        os::hideFile(path);
    }
}

QByteArray FileUtils::loadBinaryFile(const QString &path)
{
    QFile file;
    verifyAccessToFile(path, file, QIODevice::ReadOnly);
    QByteArray content = file.readAll();
    verifyReading(file);
    return content;
}

QString FileUtils::loadTextFileToQString(const QString &path)
{
    QFile file;
    verifyAccessToFile(path, file, QIODevice::ReadOnly | QIODevice::Text);
    QTextStream stream(&file);
    stream.setAutoDetectUnicode(true);
    QString text = stream.readAll();
    verifyReading(file);
    return text;
}

bool FileUtils::saveTextToFile(const QString &text, const QString &path)
{
    QFile file(path);
    if (!canBePath(path) || isNamedPipe(path) ||
        !file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        return false;
    }
    QTextStream stream(&file);
    stream << text;
    stream.flush(); // also flushes the file, and stores a failure in status()
    file.close();
    return stream.status() == QTextStream::Ok && file.error() == QFile::NoError;
}

bool FileUtils::makeFolder(const QString &path)
{
    const QFileInfo entry(path);
    if (entry.isDir() || entry.isFile()) {
        return entry.isDir();
    }
    return QDir().mkpath(QDir(path).absolutePath());
}

void FileUtils::touch(const QString &path)
{
    if (canBePath(path) && !isNamedPipe(path)) {
        [[maybe_unused]] const bool touched =
            QFile(path).open(QIODevice::WriteOnly | QIODevice::Append);
    }
}

} // namespace Vyn::OvraBase
