// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QVariantMap>
#include <chrono>
#include <functional>

namespace platform {

// One question to the desktop's portal, the service that does for a program what it may not do itself. The
// answer comes in two parts: that it was taken, and, after the user has been asked if need be, what became of
// it. Deletes itself at the end. Main thread only.
class PortalRequest : public QObject {
    Q_OBJECT

public:
    enum class Outcome { Done, Cancelled, Failed };
    // From the main loop, once; `Failed` also where there is no portal, and where it has not taken the
    // question by the deadline.
    using Report = std::function<void(Outcome outcome)>;

    // The arguments without the options that end them all.
    static void send(const QString &interface, const QString &method, QVariantList arguments,
        std::chrono::milliseconds deadline, Report report);

private Q_SLOTS:
    void answered(uint response, const QVariantMap &results);

private:
    explicit PortalRequest(Report report);
    void ask(const QString &interface, const QString &method, QVariantList arguments,
        std::chrono::milliseconds deadline);
    void end(Outcome outcome);

    Report m_report;
};

} // namespace platform
