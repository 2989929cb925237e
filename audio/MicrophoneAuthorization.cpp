// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/MicrophoneAuthorization.h"

#include "platform/CaptureAuthorization.h"
#include "platform/MainQueue.h"

using platform::CaptureAuthorization;

void requestMicrophoneAuthorization(std::function<void(bool granted)> completion)
{
    const auto answer = [completion = std::move(completion)](bool granted) {
        platform::postToMainQueue([completion, granted] { completion(granted); });
    };
    CaptureAuthorization *authorization = platform::captureAuthorization().inUse();
    if (!authorization->isOffered())
        return answer(true);
    switch (authorization->authorizationStatusForAudio()) {
    case CaptureAuthorization::Authorized:
        return answer(true);
    case CaptureAuthorization::Restricted:
    case CaptureAuthorization::Denied:
        return answer(false);
    default:
        // Not decided yet, or a status of a later platform: the user decides.
        authorization->requestAccessForAudio(answer);
    }
}
