// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace testbed {

// Empty where there is no such file.
QByteArray fileContents(const QString &path);

// Interleaved signed 16-bit sound.
struct Sound {
    int rate = 0;
    int channels = 0;
    QList<qint16> samples;

    qsizetype frames() const { return channels ? samples.size() / channels : 0; }
    QByteArray bytes() const;
};

// A sine of each frequency in a channel of its own, at half of full scale.
Sound tone(int rate, const QList<double> &frequencies, double seconds);
// Noise that is never the same twice, so that any part of it tells where it comes from. The same for every
// run.
Sound noise(int rate, int channels, double seconds);
// MPEG frames without an information frame, straight from libmp3lame.
QByteArray encodedMp3(const Sound &sound, int kbps = 128);
// What the mpg123 program decodes from a file, with nothing trimmed; empty where it complains.
Sound decodedByMpg123(const QString &path);

} // namespace testbed
