// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/SessionBus.h"
#include "testbed/Waiting.h"
#include "tests/support/LogCapture.h"
#include "tests/support/NoThreads.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

// One of the test's own, always at the same place.
class Bus {
public:
    Bus() { qputenv("DBUS_SESSION_BUS_ADDRESS", address().toUtf8()); }
    ~Bus() { end(); }
    bool start()
    {
        // It prints its address when it takes calls; its socket's file is there a moment before.
        m_daemon.start(u"dbus-daemon"_s,
            {u"--session"_s, u"--nofork"_s, u"--print-address"_s, u"--address="_s + address()});
        return m_daemon.waitForReadyRead();
    }
    void end()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
        QFile::remove(place());
    }

private:
    QString place() const { return m_folder.filePath(u"bus"_s); }
    QString address() const { return u"unix:path="_s + place(); }

    QTemporaryDir m_folder;
    QProcess m_daemon;
};

TEST(SessionBus, IsLookedForAgainWhereNoThreadCouldBeHadTheFirstTime)
{
    Bus daemon;
    ASSERT_TRUE(daemon.start());
    platform::SessionBus::open();
    auto &bus = platform::SessionBus::shared();
    bus.watch();
    ASSERT_TRUE(bus.connection().isConnected());
    bool isBack = false;
    QObject::connect(&bus, &platform::SessionBus::cameBack, &bus, [&] { isBack = true; });
    {
        const testbed::LogCapture log;
        const testbed::NoThreads none;
        daemon.end();
        ASSERT_TRUE(
            testbed::waitUntil([&] { return log.lines().join(u'\n').contains("No thread can be had"_L1); }));
    }
    ASSERT_TRUE(daemon.start());
    EXPECT_TRUE(testbed::waitUntil([&] { return isBack && bus.connection().isConnected(); }));
}

} // namespace
