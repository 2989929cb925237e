// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/OutputStream.h"
#include "testbed/Mp3Files.h"
#include "testbed/Waiting.h"
#include "tests/support/LogCapture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testbed::fileContents;
using testbed::waitUntil;

// A folder on the slow disk of the testbed, whose calls are linked into the program: its faults can be
// chosen. And one stream to it.
struct Disk {
    explicit Disk(const QByteArray &first = {})
    {
        fault(first);
        qputenv("SLOW_DISK_FOLDER", folder.toUtf8());
        qputenv("SLOW_DISK_CONTROL", (place.path() + u"/control"_s).toUtf8());
        QDir().mkpath(folder);
    }
    ~Disk() { fault({}); }

    void fault(const QByteArray &line) const
    {
        QFile control(place.path() + u"/control"_s);
        EXPECT_TRUE(control.open(QIODevice::WriteOnly) && control.write(line) == line.size());
    }
    // Numbered lines, so that nothing can be missing, twice or elsewhere unseen.
    void write(int lines)
    {
        for (int i = 0; i < lines; ++i) {
            const QByteArray line = QByteArray::number(++written).rightJustified(99, '.') + '\n';
            std::fwrite(line.constData(), 1, size_t(line.size()), stream.get());
            expected += line;
        }
    }
    bool isComplete() const
    {
        return waitUntil([this] { return stream.state().bytesWaiting == 0; })
            && fileContents(path) == expected;
    }

    const QTemporaryDir place;
    const QString folder = place.filePath(u"folder"_s);
    const QString path = folder + u"/take.mp3"_s;
    testbed::LogCapture log;
    platform::OutputStream stream;
    int written = 0;
    QByteArray expected;
};
