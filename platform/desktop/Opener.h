// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QUrl>

namespace platform {

// Opens pages, folders and files in whatever the desktop opens such things with. What has not failed within
// some seconds counts as opened. Main thread only.
class Opener : public QObject {
    Q_OBJECT

public:
    static Opener &shared();

    // Returns at once.
    void open(const QUrl &url);

Q_SIGNALS:
    // Something else is to be opened; what became of the one before no longer matters.
    void asked();
    // The log has it already.
    void nothingOpened(const QUrl &url);

private:
    Opener() = default;
    void openByToolkit(const QUrl &url);
    void fail(const QUrl &url);
};

} // namespace platform
