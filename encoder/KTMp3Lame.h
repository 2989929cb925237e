// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/OutputStream.h"
#include "platform/ThreadCheck.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QMutex>
#include <QSharedPointer>
#include <QString>
#include <QVariantMap>
#include <array>
#include <atomic>
#include <memory>

class KTMp3LameConfig;
struct lame_global_struct;

// Writes one stream of PCM into one MP3 file while it arrives: readyToEncode(), any number of PCM calls, and
// finalizeEncode() where the owner wants the file completed; then it may start again.
//
// Threads: the PCM calls belong to the capture thread, one at a time (a device that comes back may bring
// another thread with it). Everything else belongs to the main thread, apart from the constructor and the
// accessors of outFile and meta, which any thread may use. PCM calls may overlap readyToEncode(), which
// publishes the encoder when it is set up; until then they are refused. They must not overlap
// configLameEncoder(), finalizeEncode() or the destructor.
//
// The buffers are part of the object, so that no PCM call allocates. They take more than half a megabyte:
// create a writer on the heap.
class KTMp3Lame {
public:
    enum MessageType : qint32 { DebugMessage = 0, PlainMessage = 1, ErrorMessage = 2 };

    explicit KTMp3Lame(const QSharedPointer<KTMp3LameConfig> &config = {}, const QString &outFile = {});
    // An encoding that was not finalized stays open until the process exits: every byte that the encoder gave
    // is in the file already or on its way, and what the encoder still holds is not wanted.
    virtual ~KTMp3Lame();
    KTMp3Lame(const KTMp3Lame &) = delete;
    KTMp3Lame &operator=(const KTMp3Lame &) = delete;

    // A configuration with the defaults when none was given.
    QSharedPointer<KTMp3LameConfig> config();
    QString outFile() const;
    void setOutFile(const QString &outFile);
    // Kept for whoever sets it; nothing of it is written.
    QVariantMap meta() const;
    void setMeta(const QVariantMap &meta);

    // Creates or truncates the file and sets the encoder up from the configuration. False, and nothing left
    // behind, when the file cannot be opened in time or another process writes to it; false with its
    // log line when it is encoding already. When only the encoder refuses its settings, the file is open, PCM
    // calls fail and finalizeEncode() must follow.
    bool readyToEncode(QDeadlineTimer deadline = QDeadlineTimer(750));
    // Hands the configuration to the encoder of a running encoding.
    void configLameEncoder();

    // `sampleCount` samples per channel; interleaved left, right when the encoder has two channels. False,
    // with its log line, when the encoder refused them; the encoding goes on with the next call. Integers are
    // full scale, floating-point samples nominally -1.0 to 1.0; a call is refused when one of them is NaN,
    // infinite or beyond 1000.0.
    //
    // The float call is different on purpose: it writes as many bytes as the encoder gave, but takes them
    // from the memory of the encoder's handle, followed by zeros.
    bool addPCMDataToEncode(const float *samples, qint64 sampleCount);
    bool addPCMDataToEncode_shortInt(const qint16 *samples, qint64 sampleCount);
    bool addPCMDataToEncode_int(const qint32 *samples, qint64 sampleCount);
    bool addPCMDataToEncode_long(const qint64 *samples, qint64 sampleCount);
    bool addPCMDataToEncode_double(const double *samples, qint64 sampleCount);

    // Writes what the encoder still holds and closes the file. Nothing when it is not encoding.
    void finalizeEncode();

    // How the file gets on with its disk; after a failed start, why.
    platform::OutputState outputState() const;

    // The log line of a result of the encoder; none for 0 and above.
    void logErrorMessage(qint32 code) const;
    // What the encoder says, on the thread that called it. Does nothing here.
    virtual void reportMessage(const QString &message, qint32 msgType);

    // A cover picture of at most 600 x 600 as JPEG; the same data when it is no picture. Any thread.
    static QByteArray downAlbumArtSize(const QByteArray &imageData);

private:
    // Bytes that one call may give, and room behind them for the piece of a long call that exceeds them.
    static constexpr int outputCapacity = 576000;
    static constexpr int outputMargin = 19200;
    static constexpr int splitLength = 2048;

    struct HandleCloser {
        void operator()(lame_global_struct *handle) const;
    };

    void resetTagText();
    void configTarget(lame_global_struct *handle);
    template <typename EncodePiece> int encode(qint64 sampleCount, int longestPiece, EncodePiece encodePiece);
    template <typename Sample, typename Mono, typename Interleaved>
    int encodeWith(Mono mono, Interleaved interleaved, const Sample *samples, qint64 sampleCount);
    template <typename Sample> bool addSplit(const Sample *samples, qint64 sampleCount);
    bool write(int result);
    void replaceOutputByHandleMemory(int size);

    // UTF-16 with a byte-order mark, for tags; no tag is written.
    std::array<char16_t, 1024> m_tagText;
    mutable QMutex m_accessorMutex;
    QString m_outFile;
    platform::OutputStream m_file;
    std::unique_ptr<lame_global_struct, HandleCloser> m_handle;
    // The handle as the capture thread sees it: null until the encoder is set up, and for the whole encoding
    // when it refuses its settings.
    std::atomic<lame_global_struct *> m_encoder = nullptr;
    std::array<unsigned char, outputCapacity + outputMargin> m_output;
    std::array<long, splitLength> m_left;
    std::array<long, splitLength> m_right;
    QSharedPointer<KTMp3LameConfig> m_config;
    QVariantMap m_meta;
    platform::OverlapCheck m_pcmCalls;
};
