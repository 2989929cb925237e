// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "tests/ui/DemoCards.h"

#include <QApplication>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    testsupport::RecorderCard recorder;
    testsupport::PreferencesCard preferences;
    recorder.show();
    preferences.show();
    if (argc > 1) {
        recorder.grab().save(QString::fromLocal8Bit(argv[1]) + QStringLiteral("-a.png"));
        preferences.grab().save(QString::fromLocal8Bit(argv[1]) + QStringLiteral("-b.png"));
        return 0;
    }
    return QApplication::exec();
}
