// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QLoggingCategory>

// One category a folder; switch them with QT_LOGGING_RULES, for example "flipside.audio.debug=true".
Q_DECLARE_LOGGING_CATEGORY(lcPlatform)
