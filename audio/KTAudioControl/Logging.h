// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QLoggingCategory>

// "flipside.audio". The program that uses this library has one of its own, of the same name.
Q_DECLARE_LOGGING_CATEGORY(lcAudio)
