// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/desktop/FolderChooser.h"

#include <QObject>

// The question to the user where recordings are to go. It may be another program's window, and open for long.
// Main thread only.
class FolderRequest : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    bool isOpen() const { return m_isOpen; }

    // `chosen` is called as chooseFolder() does: with nothing also while another request is open, which goes
    // on. What `chosen` posts to the main loop is done before this one is over. False when nobody is asked,
    // because a folder is being chosen for something else.
    bool ask(QWidget *window, const QString &title, platform::FolderChoice chosen);

Q_SIGNALS:
    void isOpenChanged();

private:
    void setOpen(bool open);

    bool m_isOpen = false;
};
