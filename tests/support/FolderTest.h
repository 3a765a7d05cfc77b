// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/Guards.h"
#include "support/RecordedLog.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>

#include <QDirIterator>
#include <QFile>

#include <gmock/gmock.h>

#include <filesystem>
#include <tuple>

namespace Vyn::Test {

namespace fs = std::filesystem;
using OvraBase::FileUtils;
using testing::ElementsAre;
using testing::IsEmpty;

/// Gives each test an empty folder, a RecordedLog, and the functions of FileUtils without a
/// qualifier. Names are relative to that folder. A test fails if it does not take all records from
/// the log. A tree is written as one text, the list of its entries: "file=content, folder/,
/// folder/empty file, link->target". make() takes them in any order, but a link only after the
/// folder that contains it. tree() sorts them.
class FolderTest : public testing::Test, protected OvraBase::FileUtils {
protected:
    /// Without a valid folder, all paths would be empty, which QDir takes for the current folder.
    void SetUp() override { ASSERT_TRUE(mFolder.isValid()); }
    void TearDown() override { EXPECT_THAT(mLog.take(), IsEmpty()); }

    QString path(const std::string &name) const
    {
        return mFolder.filePath(QString::fromStdString(name));
    }

    fs::path native(const std::string &name) const { return path(name).toStdU16String(); }

    /// Writes a file, or makes a folder if \a name ends in a slash, with the folders above it.
    void write(const QString &name, const QByteArray &content = {}) const
    {
        QFile file(mFolder.filePath(name));
        ASSERT_TRUE(QDir(mFolder.path()).mkpath(u"./"_s + name.left(name.lastIndexOf(u'/') + 1)));
        if (!name.endsWith(u'/')) {
            ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        }
    }

    /// Makes each entry of \a tree. The target of a link is relative to the test's folder.
    void make(const std::string &tree) const
    {
        for (const QString &entry :
            QString::fromStdString(tree).split(u", "_s, Qt::SkipEmptyParts)) {
            if (const QStringList link = entry.split(u"->"_s); link.size() == 2) {
                ASSERT_TRUE(QFile::link(mFolder.filePath(link[1]), mFolder.filePath(link[0])));
            } else {
                write(entry.section(u'=', 0, 0), entry.section(u'=', 1).toUtf8());
            }
        }
    }

    /// Returns the tree below \a name. The target of a link is relative to \a name.
    std::string tree(const std::string &name = ".") const
    {
        const QDir top(path(name));
        QStringList entries;
        QDirIterator all(top.path(),
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
            QDirIterator::Subdirectories);
        while (all.hasNext()) {
            QFile file(all.next());
            const QFileInfo info = all.fileInfo();
            entries << top.relativeFilePath(file.fileName());
            if (info.isSymLink()) {
                entries.last() += u"->"_s + top.relativeFilePath(info.symLinkTarget());
            } else if (info.isDir()) {
                entries.last() += u'/';
            } else if (info.isFile() && info.size() != 0 && file.open(QIODevice::ReadOnly)) {
                entries.last() += u'=' + QString::fromUtf8(file.readAll());
            }
        }
        entries.sort();
        return entries.join(u", "_s).toStdString();
    }

    /// The rows of a table. A row begins with its name, which a failure prints.
    template<class... Columns>
    using Rows = std::vector<std::tuple<const char *, Columns...>>;

    /// Calls \a check for each row, with all columns but the name, and with an empty folder.
    template<class... Columns, class Check>
    void forEach(const Rows<Columns...> &rows, const Check &check)
    {
        for (const auto &row : rows) {
            SCOPED_TRACE(std::get<0>(row));
            QDir(mFolder.path()).removeRecursively();
            ASSERT_TRUE(QDir().mkpath(mFolder.path()));
            std::apply([&](const char *, const auto &...columns) { check(columns...); }, row);
            TearDown();
        }
    }

    /// Expects that \a call logs \a message at \a position as an error on Debug, and throws an E
    /// with \a message and \a subject.
    template<class E, class Call>
    void expectFailure(
        const std::string &position, const QString &message, const QString &subject, Call call)
    {
        try {
            call();
            ADD_FAILURE() << "nothing thrown at " << position;
        } catch (const E &failure) {
            const auto *const onFile = dynamic_cast<const Exception::IOException *>(&failure);
            EXPECT_EQ(failure.what(), message.toStdString());
            EXPECT_EQ(onFile ? onFile->subject() : QString(), subject);
        }
        EXPECT_THAT(mLog.take(), ElementsAre(Record{2, "Debug: FileUtils.cpp:" + position + "()",
                                     message.toStdString()}));
    }

    QTemporaryDir mFolder;
    RecordedLog mLog;
};

} // namespace Vyn::Test
