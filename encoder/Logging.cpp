// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "encoder/Logging.h"

Q_LOGGING_CATEGORY(lcEncoder, "flipside.encoder", QtInfoMsg)
