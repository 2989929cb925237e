// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/FileManager.h"
#include "testbed/Waiting.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

// What opens folders: writes down each one.
class Opener {
public:
    Opener()
    {
        QFile script(m_folder.filePath(u"xdg-open"_s));
        EXPECT_TRUE(script.open(QFile::WriteOnly));
        script.write("#!/bin/sh\nprintf %s \"$1\" >\"$0.new\" && mv \"$0.new\" \"$0.opened\"\n");
        script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        qputenv("PATH", QFile::encodeName(m_folder.path()) + ':' + qgetenv("PATH"));
    }

    QUrl opened()
    {
        QFile file(m_folder.filePath(u"xdg-open.opened"_s));
        testbed::waitUntil([&] { return file.open(QFile::ReadOnly); });
        const QByteArray url = file.isOpen() ? file.readAll() : QByteArray();
        file.remove();
        return QUrl::fromEncoded(url);
    }

private:
    QTemporaryDir m_folder;
};

TEST(FileManager, WithoutOneAFolderIsOpenedItselfAndForAFileTheOneThatItIsIn)
{
    Opener opener;
    const QUrl folder = QUrl::fromLocalFile(QDir::tempPath());
    for (const QUrl &shown : {folder, QUrl::fromLocalFile(QDir::tempPath() + u"/100%20 h\u00f6rt\n.mp3"_s)}) {
        platform::revealInFileManager(shown);
        EXPECT_EQ(opener.opened(), folder);
    }
}

} // namespace
