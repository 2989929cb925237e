// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/CaptureAuthorization.h"

namespace platform {

namespace {

class NoAuthorizationService : public CaptureAuthorization {
public:
    bool isOffered() const override { return false; }
    int authorizationStatusForAudio() const override { return Authorized; }
    void requestAccessForAudio(std::function<void(bool granted)> answer) override { answer(true); }
};

} // namespace

Seam<CaptureAuthorization *> &captureAuthorization()
{
    static NoAuthorizationService own;
    static Seam<CaptureAuthorization *> seam(&own);
    return seam;
}

} // namespace platform
