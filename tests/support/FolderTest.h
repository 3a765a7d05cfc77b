// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/RecordedLog.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <map>
#include <string>

namespace Vyn::Test {

/// Each test gets a folder of its own, in which names are relative, and the log of what it does.
class FolderTest : public testing::Test {
protected:
    QString path(const char *name) const { return mFolder.filePath(QString::fromUtf8(name)); }
    bool exists(const char *name) const { return OvraBase::FileUtils::exists(path(name)); }

    /// Writes a file, in folders that are made where they are missing.
    void write(const char *name, const QByteArray &content = {}) const
    {
        using OvraBase::FileUtils;
        ASSERT_TRUE(FileUtils::makeFolder(FileUtils::extractFolderPath(path(name))));
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }

    void makeFolder(const char *name) const
    {
        ASSERT_TRUE(OvraBase::FileUtils::makeFolder(path(name)));
    }

    void link(const char *target, const char *name) const
    {
        ASSERT_TRUE(QFile::link(path(target), path(name)));
    }

    /// Returns the files below \a name with their content, and the folders with a slash.
    std::map<std::string, std::string> tree(const char *name) const
    {
        std::map<std::string, std::string> entries;
        QDirIterator all(path(name), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
            QDirIterator::Subdirectories);
        while (all.hasNext()) {
            const QString entry = all.next();
            const std::string relative = QDir(path(name)).relativeFilePath(entry).toStdString();
            if (all.fileInfo().isDir()) {
                entries[relative + '/'];
            } else {
                entries[relative] = OvraBase::FileUtils::loadBinaryFile(entry).toStdString();
            }
        }
        return entries;
    }

    /// Expects that \a call throws an E with \a message and \a subject and logs it first.
    template<class E, class Call>
    void expectFailure(
        Call call, const char *position, const QString &message, const QString &subject)
    {
        try {
            call();
            ADD_FAILURE() << "nothing thrown at " << position;
        } catch (const E &failure) {
            EXPECT_EQ(failure.what(), message.toStdString());
            if constexpr (std::is_base_of_v<Exception::IOException, E>) {
                EXPECT_EQ(failure.subject(), subject);
            }
        }
        EXPECT_THAT(mLog.take(),
            testing::ElementsAre(Record{
                2, "Debug: FileUtils.cpp:" + std::string(position) + "()", message.toStdString()}));
    }

    QTemporaryDir mFolder;
    RecordedLog mLog;
};

} // namespace Vyn::Test
