// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/Logging.h"

Q_LOGGING_CATEGORY(lcUi, "flipside.ui", QtInfoMsg)
