// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

namespace platform {

// Whether the window system blends translucent windows. Without a compositor they are drawn on black. Asks
// the window system each time, because compositors come and go; one round trip. Main thread only.
bool compositorRuns();

// Tells when a compositor has come or gone. One for the program, made on first use and kept for the life of
// the process. Main thread only.
class CompositorWatch : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    static CompositorWatch &shared();

Q_SIGNALS:
    void changed();

protected:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    CompositorWatch();

    // The number of the window system's event, and what it is about; 0 where there is none.
    int m_event = 0;
    quint32 m_selection = 0;
};

} // namespace platform
