// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/RecordingEstimate.h"

#include "encoder/KTMp3LameConfig.h"
#include "platform/ForPeople.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// Every recording asks the encoder for its highest bitrate when it starts, whatever was chosen before. With a
// bitrate target that is what is written; with a quality target the bitrate plays no part.
constexpr double recordingKilobitsPerSecond = 320;

// The mean bitrates that LAME's documentation gives for stereo music at the qualities 0 to 9, and one more,
// continued by the same step. Speech and silence need less.
constexpr std::array<double, 11> meanOfQuality = {245, 225, 190, 175, 165, 130, 115, 100, 85, 65, 45};

double meanOf(double quality)
{
    // NaN counts as the best quality: better to plan for too much room than for too little.
    const double inScale = quality > 0 ? std::min(quality, 9.999) : 0;
    const auto below = static_cast<std::size_t>(inScale);
    return std::lerp(meanOfQuality[below], meanOfQuality[below + 1], inScale - std::floor(inScale));
}

QString number(double value, int decimals = 0)
{
    const double unit = std::pow(10.0, decimals);
    return platform::localeOfNumbers().toString(std::floor(value * unit) / unit, 'f', decimals);
}

} // namespace

RecordingEstimate::RecordingEstimate(const KTMp3LameConfig &config)
    // Any target but 0 makes the encoder aim at a quality.
    : m_aimsAtBitrate(config.encoderTarget() == KTMp3LameConfig::BitrateTarget)
    , m_isConstant(m_aimsAtBitrate && config.isCBR())
    , m_kilobitsPerSecond(m_aimsAtBitrate ? recordingKilobitsPerSecond : meanOf(config.encodeQuality()))
{
}

double RecordingEstimate::megabytesPerHour() const
{
    return m_kilobitsPerSecond * 3600 / 8 / 1000;
}

QString RecordingEstimate::rateSentence() const
{
    const QString rate = number(std::round(megabytesPerHour()));
    if (!m_aimsAtBitrate)
        return tr("About %1 MB an hour.").arg(rate);
    const QString sentence = m_isConstant
        ? tr("A recording sets the bitrate to %1kbps when it starts: %2 MB an hour.")
        : tr("A recording sets the bitrate to %1kbps when it starts: about %2 MB an hour.");
    return sentence.arg(number(m_kilobitsPerSecond), rate);
}

QString RecordingEstimate::roomSentence(qint64 writableBytes) const
{
    const double hours = static_cast<double>(std::max<qint64>(writableBytes, 0)) / 1e6 / megabytesPerHour();
    const double minutes = hours * 60;
    if (minutes < 1)
        return tr("This disk is full.");
    if (minutes < 2)
        return tr("1 minute fits on this disk.");
    if (hours < 1)
        return tr("%1 minutes fit on this disk.", nullptr, int(minutes)).arg(number(minutes));
    if (hours < 1.1)
        return tr("1 hour fits on this disk.");
    if (hours < 10)
        return tr("%1 hours fit on this disk.", "less than ten, with a decimal", int(hours))
            .arg(number(hours, 1));
    return tr("%1 hours fit on this disk.", nullptr, int(hours)).arg(number(hours));
}

QString RecordingEstimate::explanation() const
{
    if (m_aimsAtBitrate)
        return tr("Whatever bitrate is chosen here, a recording takes the highest.\nA quality target makes "
                  "smaller files.");
    return tr(
        "With a quality target the size depends on the sound:\nmusic needs most, speech and silence less.");
}
