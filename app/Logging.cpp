// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/Logging.h"

Q_LOGGING_CATEGORY(lcApp, "flipside.app", QtInfoMsg)
