// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "encoder/KTMp3Lame.h"

#include "encoder/KTMp3LameConfig.h"
#include "encoder/LameReports.h"
#include "encoder/UnfinishedEncodings.h"
#include "platform/Logging.h"

#include <cmath>
#include <lame/lame.h>

namespace {

constexpr char16_t byteOrderMark = 0xFEFF;
// kbit/s, the range of a variable bitrate.
constexpr int lowestVariableBitrate = 32;
constexpr int highestVariableBitrate = 320;

// libmp3lame's scale, 0 (best) to 9 (fastest).
int lameQuality(qint32 encoderEngineQuality)
{
    switch (encoderEngineQuality) {
    case KTMp3LameConfig::HighQuality:
        return 3;
    case KTMp3LameConfig::FastQuality:
        return 7;
    default:
        return 5;
    }
}

// libmp3lame makes the quality an index into a table; NaN would lie far outside it.
float lameVbrQuality(double encodeQuality)
{
    return float(std::isnan(encodeQuality) ? KTMp3LameConfig::defaultEncoderQuality() : encodeQuality);
}

} // namespace

void KTMp3Lame::HandleCloser::operator()(lame_global_struct *handle) const
{
    lame_close(handle);
}

KTMp3Lame::KTMp3Lame(const QSharedPointer<KTMp3LameConfig> &config, const QString &outFile)
    : m_outFile(outFile)
    , m_config(config)
{
    resetTagText();
}

KTMp3Lame::~KTMp3Lame()
{
    const platform::OverlapCheck::Call noPcmCall(m_pcmCalls);
    if (m_handle)
        UnfinishedEncodings::keepUntilExit(m_handle.release(), m_file.abandon());
}

void KTMp3Lame::resetTagText()
{
    m_tagText.fill(0);
    m_tagText[0] = byteOrderMark;
}

QSharedPointer<KTMp3LameConfig> KTMp3Lame::config()
{
    platform::assertMainThread();
    if (!m_config)
        m_config = QSharedPointer<KTMp3LameConfig>::create();
    return m_config;
}

QString KTMp3Lame::outFile() const
{
    const QMutexLocker lock(&m_accessorMutex);
    return m_outFile;
}

void KTMp3Lame::setOutFile(const QString &outFile)
{
    const QMutexLocker lock(&m_accessorMutex);
    m_outFile = outFile;
}

QVariantMap KTMp3Lame::meta() const
{
    const QMutexLocker lock(&m_accessorMutex);
    return m_meta;
}

void KTMp3Lame::setMeta(const QVariantMap &meta)
{
    const QMutexLocker lock(&m_accessorMutex);
    m_meta = meta;
}

bool KTMp3Lame::readyToEncode(QDeadlineTimer deadline)
{
    platform::assertMainThread();
    if (m_handle) {
        qCWarning(lcEncoder, "Already to encode, or do not finalize encode.");
        return false;
    }
    const LameReports reports(this);
    m_handle.reset(lame_init());
    if (!m_handle)
        return false;
    LameReports::install(m_handle.get());
    lame_set_bWriteVbrTag(m_handle.get(), 0);
    lame_set_disable_reservoir(m_handle.get(), 0);
    m_output.fill(0);
    resetTagText();
    if (!m_file.open(outFile(), deadline)) {
        m_handle.reset();
        return false;
    }
    configLameEncoder();
    if (lame_init_params(m_handle.get()) < 0)
        return false;
    m_encoder.store(m_handle.get(), std::memory_order_release);
    return true;
}

void KTMp3Lame::configLameEncoder()
{
    platform::assertMainThread();
    lame_global_struct *handle = m_handle.get();
    if (!handle)
        return;
    const LameReports reports(this);
    lame_set_quality(handle, lameQuality(config()->encoderEngineQuality()));
    configTarget(handle);
    lame_set_num_channels(handle, int(config()->numberOfChannel()));
    // The mode follows the channel count; the configuration's own mode is not used.
    lame_set_mode(handle, config()->numberOfChannel() < 2 ? MONO : JOINT_STEREO);
    lame_set_in_samplerate(handle, int(config()->sampleRate()));
    lame_set_out_samplerate(handle, int(config()->sampleRate()));
}

void KTMp3Lame::configTarget(lame_global_struct *handle)
{
    if (config()->encoderTarget() != KTMp3LameConfig::BitrateTarget) {
        lame_set_VBR(handle, config()->vbrMode() == KTMp3LameConfig::StandardVbr ? vbr_mtrh : vbr_rh);
        lame_set_VBR_quality(handle, lameVbrQuality(config()->encodeQuality()));
        lame_set_VBR_min_bitrate_kbps(handle, lowestVariableBitrate);
        lame_set_VBR_max_bitrate_kbps(handle, highestVariableBitrate);
    } else if (config()->isCBR()) {
        lame_set_VBR(handle, vbr_off);
        lame_set_brate(handle, int(config()->bitrate()));
    } else {
        lame_set_VBR(handle, vbr_abr);
        lame_set_VBR_mean_bitrate_kbps(handle, int(config()->bitrate()));
    }
}

void KTMp3Lame::finalizeEncode()
{
    platform::assertMainThread();
    const platform::OverlapCheck::Call noPcmCall(m_pcmCalls);
    if (!m_handle)
        return;
    const LameReports reports(this);
    m_encoder.store(nullptr, std::memory_order_relaxed);
    const int size = lame_encode_flush(m_handle.get(), m_output.data(), outputCapacity);
    if (size > 0)
        std::fwrite(m_output.data(), 1, size_t(size), m_file.get());
    lame_mp3_tags_fid(m_handle.get(), m_file.get());
    m_file.close();
    m_handle.reset();
}

platform::OutputState KTMp3Lame::outputState() const
{
    platform::assertMainThread();
    return m_file.state();
}

void KTMp3Lame::logErrorMessage(qint32 code) const
{
    if (const char *text = LameReports::errorText(code))
        qCWarning(lcEncoder, "%s", text);
}

void KTMp3Lame::reportMessage(const QString &, qint32) { }
