// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

// Asks for permission to use the microphone. The answer comes once, on the main thread, from the main loop
// and never inside this call. Where the platform has no permission service, everyone may record.
void requestMicrophoneAuthorization(std::function<void(bool granted)> completion);
