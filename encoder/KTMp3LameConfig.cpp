// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "encoder/KTMp3LameConfig.h"

#include "platform/KeyPath.h"
#include "platform/KeyedArchive.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

const QString highName = u"high"_s;
const QString standardName = u"standard"_s;
const QString fastName = u"fast"_s;

// A rate from `from` upwards is encoded at `rate`.
struct SampleRateStep {
    qint64 from;
    qint32 rate;
};
constexpr SampleRateStep sampleRateSteps[] = {{48000, 48000}, {44100, 44100}, {32000, 32000}, {24000, 24000},
    {22050, 22050}, {16000, 16000}, {12000, 12000}, {11000, 11025}};
constexpr qint32 lowestSampleRate = 8000;

constexpr const char *archivedClassName = "KTMp3LameConfig";

bool sameValue(double one, double other)
{
    return one == other || (std::isnan(one) && std::isnan(other));
}

} // namespace

KTMp3LameConfig::KTMp3LameConfig()
{
    setEncoderTarget(defaultEncodeTarget());
    setEncoderEngineQuality(defaultEncoderEngineQuality());
    setBitrate(defaultEncoderBitrate());
    setVbrMode(defaultEncoderVBRMode());
    setIsCBR(defaultEncoderIsCBR());
    setEncodeQuality(defaultEncoderQuality());
    setNumberOfChannel(defaultNumberOfChannel());
    setSampleRate(defaultSampleRate());
    setLameMode(defaultLameMode());
    platform::announceDerivedProperties(this);
}

KTMp3LameConfig::KTMp3LameConfig(const platform::KeyedDecoder &coder)
{
    setEncoderTarget(coder.decodeInt("encoderTarget"));
    setEncoderEngineQuality(coder.decodeInt("encoderEngineQuality"));
    setVbrMode(coder.decodeInt("vbrMode"));
    setIsCBR(coder.decodeBool("isCBR"));
    setBitrate(coder.decodeInteger("bitrate"));
    setEncodeQuality(coder.decodeDouble("encodeQuality"));
    setSampleRate(coder.decodeInteger("sampleRate"));
    setLameMode(coder.decodeInt("lameMode"));
    setNumberOfChannel(coder.decodeInteger("numberOfChannel"));
    platform::announceDerivedProperties(this);
}

void KTMp3LameConfig::encodeWithCoder(platform::KeyedEncoder &coder) const
{
    coder.encodeInt("encoderTarget", m_encoderTarget);
    coder.encodeInt("encoderEngineQuality", m_encoderEngineQuality);
    coder.encodeInt("vbrMode", m_vbrMode);
    coder.encodeInteger("bitrate", m_bitrate);
    coder.encodeDouble("encodeQuality", m_encodeQuality);
    coder.encodeBool("isCBR", m_isCBR);
    coder.encodeInteger("numberOfChannel", m_numberOfChannel);
    coder.encodeInt("lameMode", m_lameMode);
    coder.encodeInteger("sampleRate", m_sampleRate);
}

QByteArray KTMp3LameConfig::archivedData(const KTMp3LameConfig &config)
{
    platform::KeyedEncoder coder;
    config.encodeWithCoder(coder);
    return coder.archive(archivedClassName);
}

QSharedPointer<KTMp3LameConfig> KTMp3LameConfig::unarchivedConfig(const QByteArray &data)
{
    const auto coder = platform::KeyedDecoder::fromArchive(data, archivedClassName);
    return coder ? QSharedPointer<KTMp3LameConfig>::create(*coder) : nullptr;
}

void KTMp3LameConfig::copyFromConfig(const KTMp3LameConfig &config)
{
    setBitrate(config.bitrate());
    setEncoderTarget(config.encoderTarget());
    setEncodeQuality(config.encodeQuality());
    setEncoderEngineQuality(config.encoderEngineQuality());
    setIsCBR(config.isCBR());
    setVbrMode(config.vbrMode());
}

qint32 KTMp3LameConfig::findNextSampleRate(qint64 sampleRate) const
{
    for (const SampleRateStep &step : sampleRateSteps) {
        if (sampleRate >= step.from)
            return step.rate;
    }
    return lowestSampleRate;
}

template <typename Value>
void KTMp3LameConfig::store(Value &field, Value value, void (KTMp3LameConfig::*changed)())
{
    if (field == value)
        return;
    field = value;
    Q_EMIT(this->*changed)();
}

void KTMp3LameConfig::setBitrate(qint64 bitrate)
{
    store(m_bitrate, std::clamp(bitrate, minBitrate(), maxBitrate()), &KTMp3LameConfig::bitrateChanged);
}

void KTMp3LameConfig::setEncodeQuality(double encodeQuality)
{
    if (minEncoderQuality() > encodeQuality)
        encodeQuality = minEncoderQuality();
    else if (encodeQuality > maxEncoderQuality())
        encodeQuality = maxEncoderQuality();
    // A NaN differs from itself, but setting it twice is no change.
    if (!sameValue(m_encodeQuality, encodeQuality))
        store(m_encodeQuality, encodeQuality, &KTMp3LameConfig::encodeQualityChanged);
}

void KTMp3LameConfig::setSampleRate(qint64 sampleRate)
{
    store(m_sampleRate, qint64{findNextSampleRate(sampleRate)}, &KTMp3LameConfig::sampleRateChanged);
}

void KTMp3LameConfig::setNumberOfChannel(qint64 numberOfChannel)
{
    store(m_numberOfChannel, numberOfChannel, &KTMp3LameConfig::numberOfChannelChanged);
    setLameMode(numberOfChannel < 2 ? Mono : JointStereo);
}

void KTMp3LameConfig::setIsCBR(bool isCBR)
{
    store(m_isCBR, isCBR, &KTMp3LameConfig::isCBRChanged);
}

void KTMp3LameConfig::setEncoderTarget(qint32 encoderTarget)
{
    store(m_encoderTarget, encoderTarget, &KTMp3LameConfig::encoderTargetChanged);
}

void KTMp3LameConfig::setEncoderEngineQuality(qint32 encoderEngineQuality)
{
    store(m_encoderEngineQuality, encoderEngineQuality, &KTMp3LameConfig::encoderEngineQualityChanged);
}

void KTMp3LameConfig::setLameMode(qint32 lameMode)
{
    store(m_lameMode, lameMode, &KTMp3LameConfig::lameModeChanged);
}

void KTMp3LameConfig::setVbrMode(qint32 vbrMode)
{
    store(m_vbrMode, vbrMode, &KTMp3LameConfig::vbrModeChanged);
}

QStringList KTMp3LameConfig::encoderEngineQualityNames() const
{
    return {highName, standardName, fastName};
}

QStringList KTMp3LameConfig::vbrModeNames() const
{
    return {standardName, fastName};
}

QString KTMp3LameConfig::encoderEngineQualityName() const
{
    switch (m_encoderEngineQuality) {
    case HighQuality:
        return highName;
    case FastQuality:
        return fastName;
    default:
        return standardName;
    }
}

void KTMp3LameConfig::setEncoderEngineQualityName(const QString &name)
{
    if (name == fastName)
        setEncoderEngineQuality(FastQuality);
    else if (name == highName)
        setEncoderEngineQuality(HighQuality);
    else
        setEncoderEngineQuality(StandardQuality);
}

QString KTMp3LameConfig::vbrModeName() const
{
    return m_vbrMode == FastVbr ? fastName : standardName;
}

void KTMp3LameConfig::setVbrModeName(const QString &name)
{
    setVbrMode(name == fastName ? FastVbr : StandardVbr);
}

QString KTMp3LameConfig::bitrateDesc() const
{
    return u"%1kbps"_s.arg(m_bitrate);
}

void KTMp3LameConfig::setEnableQualityTarget(bool enable)
{
    setEncoderTarget(enable ? QualityTarget : BitrateTarget);
}

QStringList KTMp3LameConfig::keyPathsForValuesAffectingEncoderEngineQualityName()
{
    return {u"encoderEngineQuality"_s};
}

QStringList KTMp3LameConfig::keyPathsForValuesAffectingVbrModeName()
{
    return {u"vbrMode"_s};
}

QStringList KTMp3LameConfig::keyPathsForValuesAffectingBitrateDesc()
{
    return {u"bitrate"_s};
}

QStringList KTMp3LameConfig::keyPathsForValuesAffectingEnableQualityTarget()
{
    return {u"encoderTarget"_s};
}
