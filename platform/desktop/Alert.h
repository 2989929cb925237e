// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/Seam.h"

#include <QString>
#include <functional>

namespace platform {

// What an application-modal alert says: the message in bold, the explanation below it, one button to dismiss
// it. Main thread only.
struct Alert {
    QString messageText;
    QString informativeText;
    QString buttonTitle;

    // Returns after the user has dismissed the alert. The main loop goes on meanwhile, but no other window of
    // the application takes input.
    void runModal() const;
};

// Something has come to pass that makes them needless: those that are up are dismissed.
void dismissAlerts();

// Shows an alert and returns when it has been dismissed.
Seam<std::function<void(const Alert &alert)>> &alertPresenter();

} // namespace platform
