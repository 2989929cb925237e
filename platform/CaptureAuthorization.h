// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

namespace platform {

// The operating system's permission service for microphones, as far as there is one. Free desktops have none,
// so the one in use says that it is absent; a test or a sandboxed build puts another in its place.
class CaptureAuthorization {
public:
    enum Status { NotDetermined = 0, Restricted = 1, Denied = 2, Authorized = 3 };

    virtual ~CaptureAuthorization() = default;

    // Whether this version of the platform asks the user at all; where it does not, everyone may record.
    virtual bool isOffered() const = 0;
    // A Status, or a value of a later version that nobody here knows.
    virtual int authorizationStatusForAudio() const = 0;
    // Asks the user. Answers once, on any thread, possibly inside this call.
    virtual void requestAccessForAudio(std::function<void(bool granted)> answer) = 0;

    static CaptureAuthorization *current();
    // Not owned; a null pointer brings the platform's own back.
    static void setCurrent(CaptureAuthorization *authorization);
};

} // namespace platform
