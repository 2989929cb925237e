// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// The names under which the running card is known on the session bus.
namespace BusNames {

inline const QString service = QStringLiteral("io.github.flipside_recorder.Flipside");
// The service's name with slashes, as desktops expect it of a program that the bus can start.
inline const QString path = QStringLiteral("/io/github/flipside_recorder/Flipside");

inline const QString application = QStringLiteral("org.freedesktop.Application");
inline const QString recorder = QStringLiteral("io.github.flipside_recorder.Flipside.Recorder");

inline const QString refused = QStringLiteral("io.github.flipside_recorder.Flipside.Error.Refused");

} // namespace BusNames
