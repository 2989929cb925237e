// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/WindowController.h"

WindowController::WindowController(const QString &windowNibName)
    : m_windowNibName(windowNibName)
{
}

WindowController::~WindowController()
{
    delete m_window;
}

QWidget *WindowController::window()
{
    if (!m_window) {
        m_window = loadWindow();
        windowDidLoad();
    }
    return m_window;
}
