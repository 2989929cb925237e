// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// Decodes damaged configuration archives: ArchiveFuzz [COUNT] [SEED]. Meant for the build with sanitizers;
// the same seed damages in the same way. Ends with 1 when a configuration outside its limits came out, or
// when a refusal was not one log line.

#include "encoder/KTMp3LameConfig.h"
#include "benchmarks/ArchiveMutations.h"

#include <QFile>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace {

qsizetype logLines = 0;

void countLine(QtMsgType, const QMessageLogContext &, const QString &)
{
    ++logLines;
}

QByteArray readFile(const char *name)
{
    QFile file(QStringLiteral(FLIPSIDE_ENCODER_TEST_DATA "/") + QString::fromLatin1(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
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

} // namespace

int main(int argc, char **argv)
{
    const long count = argc > 1 ? std::atol(argv[1]) : 200000;
    const quint64 seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1;
    ArchiveMutations mutations(
        {readFile("complete.plist"), readFile("complete.xml"), readFile("wrong_types.plist"),
            KTMp3LameConfig::archivedData(KTMp3LameConfig())},
        seed);
    qInstallMessageHandler(countLine);
    long decoded = 0;
    long strange = 0;
    for (long i = 0; i < count; ++i) {
        const auto config = KTMp3LameConfig::unarchivedConfig(mutations.next());
        decoded += config ? 1 : 0;
        strange += config && !isWithinLimits(*config) ? 1 : 0;
    }
    std::printf("| archives | decoded | refused | log lines | outside limits |\n|---|---|---|---|---|\n");
    std::printf(
        "| %ld | %ld | %ld | %lld | %ld |\n", count, decoded, count - decoded, qint64(logLines), strange);
    return strange == 0 && logLines == count - decoded ? 0 : 1;
}
