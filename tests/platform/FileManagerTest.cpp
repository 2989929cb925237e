// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/FileManager.h"
#include "testbed/Waiting.h"

#include <QDBusConnection>
#include <QDesktopServices>
#include <QDir>
#include <QProcess>
#include <QStringList>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

// The file manager as the session bus knows it, and the desktop that opens folders.
class Desktop : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    QStringList shown;
    QList<QUrl> opened;

public Q_SLOTS:
    void ShowItems(const QStringList &uris, const QString &) { shown.append(uris); }
    void open(const QUrl &folder) { opened.append(folder); }
};

TEST(FileManager, TheFileManagerIsAskedAndWithoutOneTheFolderIsOpened)
{
    QProcess bus;
    bus.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s});
    ASSERT_TRUE(bus.waitForReadyRead(10000)) << "dbus-daemon does not run; scripts/setup installs it";
    const QByteArray address = bus.readLine().trimmed();
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    Desktop desktop;
    QDesktopServices::setUrlHandler(u"file"_s, &desktop, "open");
    const QUrl file = QUrl::fromLocalFile(u"/music/100%20 h\u00f6rt\n.mp3"_s);

    platform::revealInFileManager(file);
    EXPECT_TRUE(testbed::waitUntil([&] { return !desktop.opened.isEmpty(); }));
    EXPECT_EQ(desktop.opened, QList{QUrl::fromLocalFile(u"/music"_s)});
    // A folder is opened itself.
    platform::revealInFileManager(QUrl::fromLocalFile(QDir::tempPath()));
    EXPECT_TRUE(testbed::waitUntil([&] { return desktop.opened.size() == 2; }));
    EXPECT_EQ(desktop.opened.takeLast(), QUrl::fromLocalFile(QDir::tempPath()));

    auto service = QDBusConnection::connectToBus(QString::fromLatin1(address), u"file manager"_s);
    ASSERT_TRUE(service.registerObject(
        u"/org/freedesktop/FileManager1"_s, &desktop, QDBusConnection::ExportAllSlots));
    ASSERT_TRUE(service.registerService(u"org.freedesktop.FileManager1"_s));
    platform::revealInFileManager(file);
    EXPECT_TRUE(testbed::waitUntil([&] { return !desktop.shown.isEmpty(); }));
    EXPECT_EQ(desktop.shown, QStringList{u"file:///music/100%2520%20h%C3%B6rt%0A.mp3"_s});
    EXPECT_EQ(desktop.opened.size(), 1);

    QDesktopServices::unsetUrlHandler(u"file"_s);
    QDBusConnection::disconnectFromBus(u"file manager"_s);
    bus.terminate();
    bus.waitForFinished();
}

} // namespace

#include "FileManagerTest.moc"
