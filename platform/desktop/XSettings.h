// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractNativeEventFilter>
#include <QByteArray>
#include <QObject>

namespace platform {

// The text that the X server's settings manager has under a name such as "Net/ThemeName". Empty without X or
// without a manager, and where the setting is no text. A few round trips to the X server. Main thread only.
QByteArray xSetting(const char *name);

// The same from the manager's property as it stands on the server; it may be damaged.
QByteArray xSettingIn(const QByteArray &property, const QByteArray &name);

// Tells when the manager has changed a setting, and when one has come or gone. One for the program, made on
// first use and kept for the life of the process. Main thread only.
class XSettingsWatch : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    static XSettingsWatch &shared();

Q_SIGNALS:
    void changed();

protected:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    XSettingsWatch();
    void followManager();

    // Of the window system: its event for a new manager, 0 where there is none; names; the manager's window.
    int m_managerEvent = 0;
    quint32 m_selection = 0;
    quint32 m_property = 0;
    quint32 m_manager = 0;
};

} // namespace platform
