// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// How many seconds of sound the encoder itself keeps at most: what it was given and no decoder gets out of
// the file yet. A frame needs what follows it, and at a variable bitrate lends its room to the next ones.
//
//     held_back SOUND FILE [PROPERTY=NUMBER]...
//
// SOUND is raw, 48000 Hz, 16 bit, 2 channels; FILE is written anew. The properties are those of the encoder's
// configuration.

#include "EncoderSettings.h"
#include "encoder/KTMp3Lame.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <algorithm>
#include <array>
#include <cstdio>
#include <span>
#include <thread>

namespace {

constexpr int rate = 48000;
constexpr int pieces = 2000; // of a hundredth of a second
constexpr int framesOfPiece = rate / 100;
constexpr int settling = 100;
constexpr qint64 highestBitrate = 240000;
// What libmp3lame and a decoder put before the sound (lame.h, lame_get_encoder_delay, and 529 samples of the
// decoder's).
constexpr int delay = 576 + 529;

// kbit/s of an MPEG-1 layer III frame by the four bits of its header, ISO/IEC 11172-3, 2.4.2.3.
constexpr std::array bitrates{0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0};
constexpr int samplesOfFrame = 1152;
constexpr int headerBytes = 4;

// Those frames of a file that grows which are in it to their last byte.
class Frames {
public:
    // -1 where something else is in it.
    int countWith(const QByteArray &bytes)
    {
        m_waiting += bytes;
        while (m_waiting.size() >= headerBytes) {
            const auto header = static_cast<unsigned char>(m_waiting[2]);
            const bool isPadded = header & 2;
            const int size = samplesOfFrame / 8 * bitrates[header >> 4] * 1000 / rate + isPadded;
            if (size <= 1)
                return -1;
            if (m_waiting.size() < size)
                break;
            m_waiting.remove(0, size);
            ++m_count;
        }
        return m_count;
    }

private:
    QByteArray m_waiting;
    int m_count = 0;
};

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const auto config = QSharedPointer<KTMp3LameConfig>::create();
    if (argc < 3 || !takeSettings(*config, std::span(argv, size_t(argc)).subspan(3)))
        return 2;
    // What a recording sets itself.
    config->setNumberOfChannel(2);
    config->setSampleRate(rate);
    config->setBitrate(highestBitrate);
    QFile sound(QFile::decodeName(argv[1]));
    QFile file(QFile::decodeName(argv[2]));
    KTMp3Lame encoder(config, file.fileName());
    if (!sound.open(QIODevice::ReadOnly) || !encoder.readyToEncode()
        || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return 1;
    Frames frames;
    int held = 0;
    for (int i = 1; i <= pieces; ++i) {
        const QByteArray piece = sound.read(framesOfPiece * 4);
        encoder.addPCMDataToEncode_shortInt(reinterpret_cast<const qint16 *>(piece.data()), piece.size() / 4);
        // This is faster than sound, and than the thread that writes it.
        for (const QDeadlineTimer deadline(10000); encoder.outputState().bytesWaiting > 0;) {
            if (deadline.hasExpired())
                return 1;
            std::this_thread::yield();
        }
        const int count = frames.countWith(file.readAll());
        if (count < 0)
            return 1;
        if (i > settling)
            held = std::max(held, i * framesOfPiece - (count * samplesOfFrame - delay));
    }
    std::printf("%.3f\n", double(held) / rate);
    return 0;
}
