// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <QGuiApplication>
#include <QStandardPaths>

#include <gmock/gmock.h>

int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
