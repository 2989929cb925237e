// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// Gives damaged files to what reads them: damaged_input archives|tokens|mp3 [COUNT] [SEED]. The same seed
// damages in the same way. Ends with 1 when something came out that is outside its limits, a refusal was not
// one log line, or a playback did not end; meant for the build with sanitizers, too.

#include "ArchiveMutations.h"
#include "KTAudioControl/KTAudioPlayer.h"
#include "encoder/KTMp3LameConfig.h"
#include "platform/Bookmark.h"
#include "testbed/Mp3Files.h"
#include "testbed/ScriptedSoundSystem.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QThread>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string_view>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 playbackDeadline = 5000; // milliseconds
constexpr std::size_t soundAtOnce = 1 << 20;

std::atomic<long> logLines = 0;

void countLine(QtMsgType, const QMessageLogContext &, const QString &)
{
    ++logLines;
}

bool isWithinLimits(const KTMp3LameConfig &config)
{
    return config.bitrate() >= KTMp3LameConfig::minBitrate()
        && config.bitrate() <= KTMp3LameConfig::maxBitrate()
        && (std::isnan(config.encodeQuality()) // kept as it is
            || (config.encodeQuality() >= KTMp3LameConfig::minEncoderQuality()
                && config.encodeQuality() <= KTMp3LameConfig::maxEncoderQuality()))
        && config.sampleRate() == config.findNextSampleRate(config.sampleRate());
}

bool readArchives(long count, quint64 seed)
{
    const QString folder = QStringLiteral(FLIPSIDE_ARCHIVES "/");
    ArchiveMutations mutations({testbed::fileContents(folder + u"complete.plist"_s),
                                   testbed::fileContents(folder + u"complete.xml"_s),
                                   testbed::fileContents(folder + u"wrong_types.plist"_s),
                                   KTMp3LameConfig::archivedData(KTMp3LameConfig())},
        seed);
    long refused = 0;
    long strange = 0;
    for (long i = 0; i < count; ++i) {
        const auto config = KTMp3LameConfig::unarchivedConfig(mutations.next());
        refused += config ? 0 : 1;
        strange += config && !isWithinLimits(*config) ? 1 : 0;
    }
    std::printf("%ld refused, %ld log lines, %ld outside the limits\n", refused, logLines.load(), strange);
    return strange == 0 && logLines == refused;
}

bool readTokens(long count, quint64 seed)
{
    const QTemporaryDir folder;
    ArchiveMutations mutations({platform::bookmarkDataForFolder(QUrl::fromLocalFile(folder.path()))}, seed);
    long found = 0;
    long strange = 0;
    for (long i = 0; i < count; ++i) {
        const auto place = platform::folderForBookmarkData(mutations.next());
        found += place ? 1 : 0;
        strange += place && !QFileInfo(place->toLocalFile()).isDir() ? 1 : 0;
    }
    std::printf("%ld found, %ld of them are no folder\n", found, strange);
    return strange == 0;
}

class Ending : public KTAudioPlayerDelegate {
public:
    void KTAudioPlayerPlayPacketCount(
        KTAudioPlayer *, std::int64_t, std::uint32_t, const AudioStreamBasicDescription &) override
    {
    }
    void KTAudioPlayerStopPlay(KTAudioPlayer *) override { reached = true; }

    bool reached = false;
};

// Plays the file as fast as it is decoded.
bool playsToAnEnd(const QString &path, testbed::ScriptedSoundSystem &sound)
{
    KTAudioPlayer player;
    Ending ending;
    player.setDelegate(&ending);
    player.playWithFile(path);
    QElapsedTimer timer;
    timer.start();
    while (!ending.reached && timer.elapsed() < playbackDeadline) {
        const bool heard = sound.playbackOpen() && !sound.pull(soundAtOnce).isEmpty();
        if (sound.playbackDraining())
            sound.finishPlayback();
        QCoreApplication::processEvents();
        if (!heard && !ending.reached)
            QThread::usleep(200);
    }
    return ending.reached;
}

bool playFiles(long count, quint64 seed)
{
    const testbed::ScriptedSoundSystemScope sound;
    const QTemporaryDir folder;
    const QByteArray stereo = testbed::encodedMp3(testbed::noise(48000, 2, 0.4), 128);
    const QByteArray mono = testbed::encodedMp3(testbed::noise(22050, 1, 0.4), 32);
    ArchiveMutations mutations(
        {stereo, mono, stereo + mono, QByteArray("ID3\4\0\0\0\0\2\0", 10) + stereo}, seed);
    long endless = 0;
    for (long i = 0; i < count; ++i) {
        const QString path = folder.filePath(u"%1.mp3"_s.arg(i % 8));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(mutations.next()) < 0)
            return false;
        file.close();
        endless += playsToAnEnd(path, *sound) ? 0 : 1;
    }
    std::printf("%ld did not end\n", endless);
    return endless == 0;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const std::string_view kind = argc > 1 ? argv[1] : "";
    const long count = argc > 2 ? std::atol(argv[2]) : 10000;
    const quint64 seed = argc > 3 ? std::strtoull(argv[3], nullptr, 10) : 1;
    qInstallMessageHandler(countLine);
    if (kind == "archives")
        return readArchives(count, seed) ? 0 : 1;
    if (kind == "tokens")
        return readTokens(count, seed) ? 0 : 1;
    if (kind == "mp3")
        return playFiles(count, seed) ? 0 : 1;
    return 2;
}
