// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/Seam.h"

#include <functional>

namespace platform {

// The operating system's permission service for microphones, as far as there is one. Free desktops have none,
// so the platform's own says that it is absent; a sandboxed build may put another in its place. Main thread
// only.
class CaptureAuthorization {
public:
    enum Status { NotDetermined = 0, Restricted = 1, Denied = 2, Authorized = 3 };

    virtual ~CaptureAuthorization() = default;

    // Whether this version of the platform asks the user at all; where it does not, everyone may record.
    virtual bool isOffered() const = 0;
    // A Status, or a value of a later version that is not known here.
    virtual int authorizationStatusForAudio() const = 0;
    // Asks the user. Answers once, on any thread, possibly inside this call.
    virtual void requestAccessForAudio(std::function<void(bool granted)> answer) = 0;
};

// Whom to ask; not owned.
Seam<CaptureAuthorization *> &captureAuthorization();

} // namespace platform
