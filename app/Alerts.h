// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

struct AudioStreamBasicDescription;

// What the controller tells with an application-modal alert. Each returns when the user has dismissed it.
namespace Alerts {

void failedStartRecording(const AudioStreamBasicDescription &description);
void authorizationAccessSetting();

// A recording has begun, whatever an earlier attempt has told. An alert would keep its buttons from
// everybody.
void dismiss();

} // namespace Alerts
