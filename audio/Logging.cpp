// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/Logging.h"

Q_LOGGING_CATEGORY(lcAudio, "flipside.audio", QtInfoMsg)
