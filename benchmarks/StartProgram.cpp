// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// A program that starts, uses a QColor of Qt Gui, and ends.

#include <QColor>

int main()
{
    return QColor(Qt::red).name().isEmpty() ? 1 : 0;
}
