// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

// Asks for the right to use the microphone. The answer comes on the main thread, from the main loop and never
// inside this call, once. Where the platform has no permission service everybody may record.
void requestMicrophoneAuthorization(std::function<void(bool granted)> completion);
