// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/MainWindow.h"

#include <QPointer>
#include <QWidget>

namespace platform {

namespace {

QPointer<QWidget> &knownWindow()
{
    static QPointer<QWidget> instance;
    return instance;
}

} // namespace

QWidget *mainWindow()
{
    return knownWindow();
}

void setMainWindow(QWidget *window)
{
    knownWindow() = window;
}

} // namespace platform
