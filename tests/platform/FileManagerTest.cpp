// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/FileManager.h"
#include "testbed/Waiting.h"

#include <QDesktopServices>
#include <QDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

// What opens folders.
class Desktop : public QObject {
    Q_OBJECT

public:
    QList<QUrl> opened;

public Q_SLOTS:
    void open(const QUrl &folder) { opened.append(folder); }
};

TEST(FileManager, WithoutOneAFolderIsOpenedItselfAndForAFileTheOneThatItIsIn)
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    Desktop desktop;
    QDesktopServices::setUrlHandler(u"file"_s, &desktop, "open");
    const QUrl folder = QUrl::fromLocalFile(QDir::tempPath());
    for (const QUrl &shown : {folder, QUrl::fromLocalFile(QDir::tempPath() + u"/100%20 h\u00f6rt\n.mp3"_s)}) {
        desktop.opened.clear();
        platform::revealInFileManager(shown);
        EXPECT_TRUE(testbed::waitUntil([&] { return !desktop.opened.isEmpty(); }));
        EXPECT_EQ(desktop.opened, QList{folder});
    }
    QDesktopServices::unsetUrlHandler(u"file"_s);
}

} // namespace

#include "FileManagerTest.moc"
