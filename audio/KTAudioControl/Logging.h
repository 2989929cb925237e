// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QLoggingCategory>

// "flipside.audio". The sound library and the program that uses it have one each, of the same name.
Q_DECLARE_LOGGING_CATEGORY(lcAudio)
