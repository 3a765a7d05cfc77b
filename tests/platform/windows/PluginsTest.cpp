// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/platform/base.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

#include <qt_windows.h>

namespace {

using namespace Vyn::OvraBase;
using namespace Qt::StringLiterals;

QString besideTheTests(const QString &name)
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(name);
}

TEST(WindowsPlugin, MayHaveANameThatTheCodePageLacksAndLeavesTheErrorMode)
{
    const QString copy = besideTheTests(u"\u63D2\u4EF6.dll"_s);
    QFile::remove(copy);
    ASSERT_TRUE(QFile::copy(besideTheTests(u"ovrabaseTestPlugin.dll.6.0"_s), copy));
    DWORD callersMode = 0;
    ::SetThreadErrorMode(SEM_NOGPFAULTERRORBOX, &callersMode);
    QString error;
    void *const library = loadSharedLibrary(u"\u63D2\u4EF6"_s, &error);
    EXPECT_EQ(::GetThreadErrorMode(), DWORD{SEM_NOGPFAULTERRORBOX});
    ::SetThreadErrorMode(callersMode, nullptr);
    EXPECT_NE(loadSymbol(library, u"plugInServices"_s), nullptr) << error.toStdString();
    closeSharedLibrary(library);
    EXPECT_TRUE(QFile::remove(copy)) << "still loaded";
}

} // namespace
