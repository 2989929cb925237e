// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QSharedPointer>
#include <QStringList>

namespace platform {
class KeyedDecoder;
class KeyedEncoder;
} // namespace platform

// How a recording is encoded. One is shared by the preferences and every recording, as a
// QSharedPointer<KTMp3LameConfig>; main thread only. The setters clamp and snap instead of failing, so every
// way in (windows, archives, copies, defaults) ends within the same limits.
class KTMp3LameConfig : public QObject {
    Q_OBJECT
    // kbit/s, 8 to 320: the constant bitrate, or the mean of an average bitrate.
    Q_PROPERTY(qint64 bitrate READ bitrate WRITE setBitrate NOTIFY bitrateChanged)
    // Variable bitrate quality, 0.0 (best) to maxEncoderQuality() (smallest).
    Q_PROPERTY(double encodeQuality READ encodeQuality WRITE setEncodeQuality NOTIFY encodeQualityChanged)
    // Hz, one of the nine rates of MPEG-1, MPEG-2 and MPEG-2.5 layer III; of the input and of the output.
    Q_PROPERTY(qint64 sampleRate READ sampleRate WRITE setSampleRate NOTIFY sampleRateChanged)
    // Channels of the PCM that is fed to the encoder.
    Q_PROPERTY(
        qint64 numberOfChannel READ numberOfChannel WRITE setNumberOfChannel NOTIFY numberOfChannelChanged)
    // With a bitrate target: constant (true) or average (false) bitrate.
    Q_PROPERTY(bool isCBR READ isCBR WRITE setIsCBR NOTIFY isCBRChanged)
    Q_PROPERTY(qint32 encoderTarget READ encoderTarget WRITE setEncoderTarget NOTIFY encoderTargetChanged)
    Q_PROPERTY(qint32 encoderEngineQuality READ encoderEngineQuality WRITE setEncoderEngineQuality NOTIFY
            encoderEngineQualityChanged)
    // libmp3lame's numbering: 0 stereo, 1 joint stereo, 2 dual channel, 3 mono. Follows numberOfChannel.
    Q_PROPERTY(qint32 lameMode READ lameMode WRITE setLameMode NOTIFY lameModeChanged)
    Q_PROPERTY(qint32 vbrMode READ vbrMode WRITE setVbrMode NOTIFY vbrModeChanged)

    // The names are what the windows show, and what they choose by. An unknown name means "standard".
    Q_PROPERTY(QStringList encoderEngineQualityNames READ encoderEngineQualityNames NOTIFY
            encoderEngineQualityNamesChanged)
    Q_PROPERTY(QStringList vbrModeNames READ vbrModeNames NOTIFY vbrModeNamesChanged)
    Q_PROPERTY(QString encoderEngineQualityName READ encoderEngineQualityName WRITE
            setEncoderEngineQualityName NOTIFY encoderEngineQualityNameChanged)
    Q_PROPERTY(QString vbrModeName READ vbrModeName WRITE setVbrModeName NOTIFY vbrModeNameChanged)
    Q_PROPERTY(QString bitrateDesc READ bitrateDesc NOTIFY bitrateDescChanged)
    Q_PROPERTY(bool enableQualityTarget READ enableQualityTarget WRITE setEnableQualityTarget NOTIFY
            enableQualityTargetChanged)

public:
    enum EncoderTarget : qint32 { BitrateTarget = 0, QualityTarget = 1 };
    enum EncoderEngineQuality : qint32 { HighQuality = 0, StandardQuality = 1, FastQuality = 2 };
    enum VbrMode : qint32 { StandardVbr = 0, FastVbr = 1 };
    enum LameMode : qint32 { JointStereo = 1, Mono = 3 };

    // The defaults.
    KTMp3LameConfig();
    // What an archive holds; missing values are 0 or false before they are clamped. The channel count comes
    // last and decides on the mode, so that an archived mode never survives.
    explicit KTMp3LameConfig(const platform::KeyedDecoder &coder);

    void encodeWithCoder(platform::KeyedEncoder &coder) const;
    // A keyed archive whose root object is the configuration.
    static QByteArray archivedData(const KTMp3LameConfig &config);
    // Null, and one log line, when the data is no such archive.
    static QSharedPointer<KTMp3LameConfig> unarchivedConfig(const QByteArray &data);

    static qint32 defaultEncodeTarget() { return QualityTarget; }
    static qint32 defaultEncoderEngineQuality() { return StandardQuality; }
    static qint64 defaultEncoderBitrate() { return 128; }
    static qint32 defaultEncoderVBRMode() { return StandardVbr; }
    static bool defaultEncoderIsCBR() { return false; }
    static double defaultEncoderQuality() { return 5.0; }
    static qint64 defaultNumberOfChannel() { return 2; }
    static qint64 defaultSampleRate() { return 44100; }
    static qint32 defaultLameMode() { return JointStereo; }
    static qint64 minBitrate() { return 8; }
    static qint64 maxBitrate() { return 320; }
    static double minEncoderQuality() { return 0.0; }
    // The encoder holds its own ceiling in single precision, and so does this one: 9.99899959564209.
    static double maxEncoderQuality() { return 9.999F; }

    // Takes over the encoder's choices, but not what describes the sound: rate, channels and mode stay.
    void copyFromConfig(const KTMp3LameConfig &config);
    // The next rate downwards that MP3 knows, except that 11000 to 11024 belong to 11025.
    qint32 findNextSampleRate(qint64 sampleRate) const;

    qint64 bitrate() const { return m_bitrate; }
    void setBitrate(qint64 bitrate);
    double encodeQuality() const { return m_encodeQuality; }
    // A NaN is kept as it is.
    void setEncodeQuality(double encodeQuality);
    qint64 sampleRate() const { return m_sampleRate; }
    void setSampleRate(qint64 sampleRate);
    qint64 numberOfChannel() const { return m_numberOfChannel; }
    // Any count is kept; below two the mode becomes mono, otherwise joint stereo.
    void setNumberOfChannel(qint64 numberOfChannel);
    bool isCBR() const { return m_isCBR; }
    void setIsCBR(bool isCBR);
    qint32 encoderTarget() const { return m_encoderTarget; }
    void setEncoderTarget(qint32 encoderTarget);
    qint32 encoderEngineQuality() const { return m_encoderEngineQuality; }
    void setEncoderEngineQuality(qint32 encoderEngineQuality);
    qint32 lameMode() const { return m_lameMode; }
    void setLameMode(qint32 lameMode);
    qint32 vbrMode() const { return m_vbrMode; }
    void setVbrMode(qint32 vbrMode);

    QStringList encoderEngineQualityNames() const;
    QStringList vbrModeNames() const;
    QString encoderEngineQualityName() const;
    void setEncoderEngineQualityName(const QString &name);
    QString vbrModeName() const;
    void setVbrModeName(const QString &name);
    QString bitrateDesc() const;
    bool enableQualityTarget() const { return m_encoderTarget == QualityTarget; }
    void setEnableQualityTarget(bool enable);

    Q_INVOKABLE static QStringList keyPathsForValuesAffectingEncoderEngineQualityName();
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingVbrModeName();
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingBitrateDesc();
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingEnableQualityTarget();

Q_SIGNALS:
    void bitrateChanged();
    void encodeQualityChanged();
    void sampleRateChanged();
    void numberOfChannelChanged();
    void isCBRChanged();
    void encoderTargetChanged();
    void encoderEngineQualityChanged();
    void lameModeChanged();
    void vbrModeChanged();
    // The lists never change; a bound menu only needs a signal to connect to.
    void encoderEngineQualityNamesChanged();
    void vbrModeNamesChanged();
    void encoderEngineQualityNameChanged();
    void vbrModeNameChanged();
    void bitrateDescChanged();
    void enableQualityTargetChanged();

private:
    template <typename Value> void store(Value &field, Value value, void (KTMp3LameConfig::*changed)());

    qint64 m_bitrate = 0;
    double m_encodeQuality = 0.0;
    qint64 m_sampleRate = 0;
    qint64 m_numberOfChannel = 0;
    bool m_isCBR = false;
    qint32 m_encoderTarget = 0;
    qint32 m_encoderEngineQuality = 0;
    qint32 m_lameMode = 0;
    qint32 m_vbrMode = 0;
};
