// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/Logging.h"

Q_LOGGING_CATEGORY(lcPlatform, "flipside.platform", QtInfoMsg)
