// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/WindowExchange.h"

#include <QWidget>

namespace WindowExchange {

void bringToFront(QWidget *window)
{
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->activateWindow();
}

void exchange(QWidget *oldWindow, QWidget *newWindow)
{
    if (newWindow)
        bringToFront(newWindow);
    if (oldWindow)
        oldWindow->hide();
}

} // namespace WindowExchange
