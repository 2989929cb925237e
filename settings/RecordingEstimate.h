// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QString>

class KTMp3LameConfig;

// What an encoder configuration means for a disk, in sentences for people. A recording of sound with a
// variable or average bitrate can only be estimated: those sentences say "About".
class RecordingEstimate {
    Q_DECLARE_TR_FUNCTIONS(RecordingEstimate)

public:
    explicit RecordingEstimate(const KTMp3LameConfig &config);

    // In units of 1,000,000 bytes.
    double megabytesPerHour() const;

    // "About 58 MB an hour." With a bitrate target it says why that is not what the chosen bitrate would
    // need.
    QString rateSentence() const;
    // "213 hours fit on this disk."
    QString roomSentence(qint64 writableBytes) const;
    // What else there is to know about the rate, for a tool tip.
    QString explanation() const;

private:
    bool m_aimsAtBitrate;
    bool m_isConstant;
    double m_kilobitsPerSecond;
};
