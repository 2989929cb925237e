// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/AudioStreamBasicDescription.h"
#include "platform/ThreadCheck.h"

#include <QString>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <span>

struct mpg123_handle_struct;

// The PCM of one MPEG audio file, read from its beginning to its end. Nothing is read ahead and nothing is
// kept, so that neither the start nor the memory depends on the length of the file, and a file that still
// grows is read to where it ends at that moment. One thread at a time.
class Mp3Source {
public:
    Mp3Source();
    ~Mp3Source();

    // Reads up to the first MPEG frame. False when this is no readable MPEG audio file; error() says why.
    bool open(const QString &path);

    // Interleaved signed 16-bit samples in native byte order, at the rate and with the channels of the first
    // MPEG frame. What comes in another format later in the file is converted to it.
    const AudioStreamBasicDescription &format() const { return m_format; }
    // MPEG frames in the file, estimated from its size.
    std::uint32_t totalPacketCount() const { return m_totalPacketCount; }

    // The samples of the next MPEG frame, valid until the next call; empty at the end. A damaged place is
    // passed over; where that cannot be done this is the end, and error() is not empty.
    std::span<const std::byte> nextPacket();

    QString error() const { return m_error; }

private:
    struct HandleDeleter {
        void operator()(mpg123_handle_struct *handle) const;
    };
    struct FileCloser {
        void operator()(std::FILE *file) const { std::fclose(file); }
    };

    bool configure();
    bool openRegularFile(const QString &path);
    bool readFormat();
    bool fail(int code);

    platform::OverlapCheck m_calls;
    // The handle reads from the file and goes first.
    std::unique_ptr<std::FILE, FileCloser> m_file;
    std::unique_ptr<mpg123_handle_struct, HandleDeleter> m_handle;
    AudioStreamBasicDescription m_format;
    std::uint32_t m_totalPacketCount = 0;
    QString m_error;
};
