// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

namespace platform {

// The text that the X server's settings manager has under a name such as "Net/ThemeName". Empty without X or
// without a manager, and where the setting is no text. A few round trips to the X server. Main thread only.
QByteArray xSetting(const char *name);

// The same from the manager's property as it stands on the server; it may be damaged.
QByteArray xSettingIn(const QByteArray &property, const QByteArray &name);

} // namespace platform
