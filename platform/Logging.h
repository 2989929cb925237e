// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QLoggingCategory>

// One category for each folder; switch them with QT_LOGGING_RULES, for example "flipside.audio.debug=true".
// Inline, so that the sound library, which shares no data with the program, has its own of the same names.
inline const QLoggingCategory &lcApp()
{
    static const QLoggingCategory category("flipside.app", QtInfoMsg);
    return category;
}

inline const QLoggingCategory &lcAudio()
{
    static const QLoggingCategory category("flipside.audio", QtInfoMsg);
    return category;
}

inline const QLoggingCategory &lcEncoder()
{
    static const QLoggingCategory category("flipside.encoder", QtInfoMsg);
    return category;
}

inline const QLoggingCategory &lcPlatform()
{
    static const QLoggingCategory category("flipside.platform", QtInfoMsg);
    return category;
}

inline const QLoggingCategory &lcSettings()
{
    static const QLoggingCategory category("flipside.settings", QtInfoMsg);
    return category;
}

inline const QLoggingCategory &lcUi()
{
    static const QLoggingCategory category("flipside.ui", QtInfoMsg);
    return category;
}
