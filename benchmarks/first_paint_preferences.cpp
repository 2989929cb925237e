// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "benchmarks/FirstPaint.h"
#include "settings/HBPreferencesWndCtrl.h"

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QWidget *card = HBPreferencesWndCtrl::preferencesWndCtrl()->window();
    const FirstPaint measurement(card);
    card->show();
    return QApplication::exec();
}
