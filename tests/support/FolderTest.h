// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/RecordedLog.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>

#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <map>
#include <string>

namespace Vyn::Test {

using namespace Qt::StringLiterals;
using OvraBase::FileUtils;
using testing::ElementsAre;
using testing::IsEmpty;

/// Files with their content, and folders, whose names end in a slash.
using Tree = std::map<std::string, std::string>;

/// Gives each test an empty folder, in which names are relative, the log of what it does, and the
/// functions of FileUtils under their bare names.
class FolderTest : public testing::Test, protected OvraBase::FileUtils {
protected:
    QString path(const std::string &name) const
    {
        return mFolder.filePath(QString::fromStdString(name));
    }

    /// Makes what \a entries say, and the folders that hold it.
    void make(const Tree &entries) const
    {
        for (const auto &[name, content] : entries) {
            ASSERT_TRUE(QDir().mkpath(path(name.substr(0, name.find_last_of('/') + 1))));
            if (!name.ends_with('/')) {
                QFile file(path(name));
                ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name;
                ASSERT_EQ(file.write(QByteArray::fromStdString(content)), qint64(content.size()));
            }
        }
    }

    void link(const std::string &target, const std::string &name) const
    {
        ASSERT_TRUE(QFile::link(path(target), path(name))) << name;
    }

    /// Returns what is below \a name; what a link leads to counts as its content.
    Tree tree(const std::string &name = ".") const
    {
        Tree entries;
        QDirIterator all(path(name), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
            QDirIterator::Subdirectories);
        while (all.hasNext()) {
            QFile entry(all.next());
            const QString relative = QDir(path(name)).relativeFilePath(entry.fileName());
            const bool isFile = all.fileInfo().isFile() && entry.open(QIODevice::ReadOnly);
            entries[relative.toStdString() + (all.fileInfo().isDir() ? "/" : "")] =
                isFile ? entry.readAll().toStdString() : std::string();
        }
        return entries;
    }

    /// Empties the folder and the log, for the next row of a table.
    void startAnew()
    {
        QDir(mFolder.path()).removeRecursively();
        ASSERT_TRUE(QDir().mkpath(mFolder.path()));
        mLog.take();
    }

    /// Expects that \a call throws an E with \a message and \a subject and logs it first.
    template<class E, class Call>
    void expectFailure(
        Call call, const std::string &position, const QString &message, const QString &subject = {})
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
        EXPECT_THAT(mLog.take(), ElementsAre(Record{2, "Debug: FileUtils.cpp:" + position + "()",
                                     message.toStdString()}));
    }

    QTemporaryDir mFolder;
    RecordedLog mLog;
};

} // namespace Vyn::Test
