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

#include <string>

namespace Vyn::Test {

using namespace Qt::StringLiterals;
using OvraBase::FileUtils;
using testing::ElementsAre;
using testing::IsEmpty;

/// Gives each test an empty folder, in which names are relative, the log of what it does, and the
/// functions of FileUtils under their bare names. A tree is written as one text, its sorted
/// entries: "file=content, folder/, folder/empty file".
class FolderTest : public testing::Test, protected OvraBase::FileUtils {
protected:
    QString path(const std::string &name) const
    {
        return mFolder.filePath(QString::fromStdString(name));
    }

    /// Writes a file, or makes a folder if \a name ends in a slash, with the folders above it.
    void write(const QString &name, const QByteArray &content = {}) const
    {
        QFile file(mFolder.filePath(name));
        ASSERT_TRUE(QDir(mFolder.path()).mkpath(u"./"_s + name.left(name.lastIndexOf(u'/') + 1)));
        if (!name.endsWith(u'/')) {
            ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        }
    }

    /// Writes each entry of \a tree.
    void make(const std::string &tree) const
    {
        for (const QString &entry :
            QString::fromStdString(tree).split(u", "_s, Qt::SkipEmptyParts)) {
            write(entry.section(u'=', 0, 0), entry.section(u'=', 1).toUtf8());
        }
    }

    void link(const std::string &target, const std::string &name) const
    {
        ASSERT_TRUE(QFile::link(path(target), path(name))) << name;
    }

    /// Returns the tree below \a name; what a link leads to counts as its content.
    std::string tree(const std::string &name = ".") const
    {
        QStringList entries;
        QDirIterator all(path(name), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
            QDirIterator::Subdirectories);
        while (all.hasNext()) {
            QFile file(all.next());
            entries << QDir(path(name)).relativeFilePath(file.fileName());
            if (all.fileInfo().isDir()) {
                entries.last() += u'/';
            } else if (all.fileInfo().isFile() && file.open(QIODevice::ReadOnly) &&
                       file.size() != 0) {
                entries.last() += u'=' + QString::fromUtf8(file.readAll());
            }
        }
        entries.sort();
        return entries.join(u", "_s).toStdString();
    }

    /// Calls \a check for each row of a table, with an empty folder and an empty log. A failure
    /// prints the row's name.
    template<class Rows, class Check>
    void forEach(const Rows &rows, const Check &check)
    {
        for (const auto &row : rows) {
            SCOPED_TRACE(row.name);
            QDir(mFolder.path()).removeRecursively();
            ASSERT_TRUE(QDir().mkpath(mFolder.path()));
            mLog.take();
            check(row);
        }
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
