// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QTimer>
#include <QVariantMap>
#include <chrono>
#include <functional>

class QDBusMessage;

namespace platform {

// One question to the desktop's portal, the service that does for a program what it may not do itself. The
// answer comes in two parts: that it was taken, and, after the user has been asked if need be, what became of
// it. Deletes itself at the end; whoever deletes it before closes what is open, and is told nothing more.
// Main thread only.
class PortalRequest : public QObject {
    Q_OBJECT

public:
    // Ended: in some other way. The portal does not say whether a chooser's window was closed or broke.
    enum class Outcome { Done, Cancelled, Ended, Failed };
    // From the main loop, once; `Failed` also where there is no portal, where it has not taken the question
    // by the deadline, and where it ends before it has answered, or the bus.
    using Report = std::function<void(Outcome outcome, const QVariantMap &results)>;

    // The arguments without the options that end them all.
    static PortalRequest *send(const QString &interface, const QString &method, QVariantList arguments,
        const QVariantMap &options, std::chrono::milliseconds deadline, Report report);
    // For what lasts as long as the request: `Done` is reported when it was taken, and the request stays
    // until it is deleted, or any other outcome is reported later. A portal that does not run is started only
    // in a sandbox, where it is the one service that can be asked.
    static PortalRequest *hold(const QString &interface, const QString &method, QVariantList arguments,
        const QVariantMap &options, std::chrono::milliseconds deadline, Report report);
    ~PortalRequest() override;

private Q_SLOTS:
    void answered(uint response, const QVariantMap &results);
    void fail();

private:
    enum class Kind { Question, Held };

    PortalRequest(Kind kind, Report report);
    void ask(const QString &interface, const QString &method, QVariantList arguments, QVariantMap options);
    void follow();
    void taken(const QDBusMessage &answer);
    void close() const;
    void end(Outcome outcome, const QVariantMap &results);

    const Kind m_kind;
    Report m_report;
    QString m_path; // of the request itself, on the bus
    QTimer m_deadline;
};

} // namespace platform
