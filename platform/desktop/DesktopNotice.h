// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

class QDBusMessage;

namespace platform {

// One message of the program on the desktop, beside all windows. The notification service is asked without
// waiting for its answer, and where it refuses, or does not answer within some seconds, the portal: a program
// in a sandbox reaches no other. Without a session bus there is no message. Main thread only.
class DesktopNotice : public QObject {
    Q_OBJECT

public:
    explicit DesktopNotice(QObject *parent = nullptr);
    // Takes the message back.
    ~DesktopNotice() override;

    // In place of what is shown. The same text is not shown again.
    void show(const QString &text);
    void takeBack();

private Q_SLOTS:
    void closed(uint id, uint reason);

private:
    void settle();
    void ask();
    void answered(const QDBusMessage &answer);
    void beginAnew();
    void sayToPortal(const QString &method, const QVariantList &more) const;

    QString m_wanted; // empty when nothing is to be shown
    QString m_shown;
    uint m_id = 0; // the service's; 0 while it shows nothing
    bool m_asking = false;
    bool m_throughPortal = false; // the service has refused
    bool m_listening = false;
};

} // namespace platform
