// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// How soon a very long recording begins to play, and what it takes:
//     play_long FOLDER [HOURS]
// A file of ten hours at 320 kbit/s is written (1.4 GB) and handed to the player over a sound system that
// takes samples as fast as they come. Printed are the time to the first sample and the memory after it and
// after half an hour of playing.

#include "KTAudioControl/KTAudioPlayer.h"
#include "testbed/Mp3Files.h"
#include "testbed/ScriptedSoundSystem.h"
#include "testbed/Waiting.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <cstdio>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t secondOfSound = 48000UL * 4;

long residentKilobytes()
{
    QFile statm(u"/proc/self/statm"_s);
    if (!statm.open(QIODevice::ReadOnly))
        return -1;
    return statm.readAll().split(' ').value(1).toLong() * sysconf(_SC_PAGESIZE) / 1024;
}

// The file is opened and decoded beside this thread.
qint64 pull(testbed::ScriptedSoundSystem &sound, std::size_t bytes)
{
    qint64 pulled = 0;
    testbed::waitUntil([&] {
        pulled += sound.pull(bytes - std::size_t(pulled)).size();
        return pulled == qint64(bytes) || sound.playbackDraining();
    });
    return pulled;
}

bool writeLongFile(const QString &path, double hours)
{
    const QByteArray minute = testbed::encodedMp3(testbed::noise(48000, 2, 60), 320);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    for (int minutes = 0; minutes < int(hours * 60); ++minutes) {
        if (file.write(minute) != minute.size())
            return false;
    }
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "play_long FOLDER [HOURS]\n");
        return 2;
    }
    const double hours = argc > 2 ? std::atof(argv[2]) : 10;
    const QString path = QDir(QFile::decodeName(argv[1])).absoluteFilePath(u"long.mp3"_s);
    const bool written = writeLongFile(path, hours);

    const testbed::ScriptedSoundSystemScope sound;
    KTAudioPlayer player;
    QElapsedTimer timer;
    timer.start();
    player.playWithFile(path);
    const bool played = written && pull(*sound, secondOfSound) > 0;
    const double first = double(timer.nsecsElapsed()) / 1e6;
    const long atFirst = residentKilobytes();
    timer.restart();
    for (int second = 0; played && second < 1800; ++second)
        pull(*sound, secondOfSound);
    std::printf(
        "first second of %.1f hours after %.2f ms, %ld kB resident; after half an hour (%.1f s) %ld kB\n",
        hours, first, atFirst, double(timer.elapsed()) / 1000, residentKilobytes());
    player.stop();
    QFile::remove(path);
    return played ? 0 : 1;
}
