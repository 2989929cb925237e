// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "benchmarks/FirstPaint.h"

#include <QLabel>

// The least that a program with a window does: one line of text.
int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QLabel window(QStringLiteral("Preferences"));
    window.resize(460, 392);
    const FirstPaint measurement(&window);
    window.show();
    return QApplication::exec();
}
