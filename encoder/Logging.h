// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QLoggingCategory>

// "flipside.encoder"
Q_DECLARE_LOGGING_CATEGORY(lcEncoder)
