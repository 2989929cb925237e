// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/Mp3Source.h"

#include "platform/ForPeople.h"

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <limits>
#include <mpg123.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// How far a damaged place may reach, and how much of a file that is no MPEG audio is looked through, in
// bytes.
constexpr long longestDamage = 1 << 20;

// All rates and both channel counts, in one sample format.
void acceptAnyFormat(mpg123_handle *handle)
{
    const long *rates = nullptr;
    std::size_t count = 0;
    mpg123_rates(&rates, &count);
    mpg123_format_none(handle);
    for (const long rate : std::span(rates, count))
        mpg123_format(handle, rate, MPG123_MONO | MPG123_STEREO, MPG123_ENC_SIGNED_16);
}

// Through a buffered file: the library looks for frames in damaged places byte by byte.
ssize_t readFile(void *file, void *buffer, std::size_t bytes)
{
    auto *const stream = static_cast<std::FILE *>(file);
    const std::size_t count = std::fread(buffer, 1, bytes, stream);
    return count == 0 && std::ferror(stream) ? -1 : static_cast<ssize_t>(count);
}

off_t seekFile(void *file, off_t offset, int whence)
{
    auto *const stream = static_cast<std::FILE *>(file);
    return fseeko(stream, offset, whence) == 0 ? ftello(stream) : -1;
}

} // namespace

void Mp3Source::HandleDeleter::operator()(mpg123_handle_struct *handle) const
{
    mpg123_delete(handle);
}

Mp3Source::Mp3Source() = default;
Mp3Source::~Mp3Source() = default;

bool Mp3Source::open(const QString &path)
{
    const platform::OverlapCheck::Call call(m_calls);
    return openRegularFile(path) && configure() && readFormat();
}

// A pipe or a device could keep the reader waiting for ever.
bool Mp3Source::openRegularFile(const QString &path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor >= 0)
        m_file.reset(fdopen(descriptor, "rb"));
    struct stat status = {};
    if (!m_file || fstat(descriptor, &status) != 0)
        m_error = errno == ENOENT ? platform::reason(QT_TRANSLATE_NOOP("Reason", "no such file"))
                                  : platform::systemError(errno).toLower();
    else if (!S_ISREG(status.st_mode))
        m_error = platform::reason(QT_TRANSLATE_NOOP("Reason", "not a regular file"));
    else if (status.st_size == 0)
        m_error = platform::reason(QT_TRANSLATE_NOOP("Reason", "the file is empty"));
    return m_error.isEmpty();
}

// Every sample that is in the file is played: recordings carry no information frame that would say what to
// trim. The index of frames, which grows with the file, is for seeking.
bool Mp3Source::configure()
{
    int code = MPG123_OK;
    m_handle.reset(mpg123_new(nullptr, &code));
    if (!m_handle)
        return fail(code);
    mpg123_param(m_handle.get(), MPG123_REMOVE_FLAGS, MPG123_GAPLESS, 0);
    mpg123_param(m_handle.get(), MPG123_ADD_FLAGS, MPG123_QUIET | MPG123_SKIP_ID3V2, 0);
    mpg123_param(m_handle.get(), MPG123_INDEX_SIZE, 0, 0);
    mpg123_param(m_handle.get(), MPG123_RESYNC_LIMIT, longestDamage, 0);
    acceptAnyFormat(m_handle.get());
    mpg123_replace_reader_handle(m_handle.get(), readFile, seekFile, nullptr);
    code = mpg123_open_handle(m_handle.get(), m_file.get());
    return code == MPG123_OK || fail(code);
}

// From here on the first frame's format is the only one accepted, so that the decoder converts any other to
// it.
bool Mp3Source::readFormat()
{
    long rate = 0;
    int channels = 0;
    int encoding = 0;
    if (const int code = mpg123_getformat(m_handle.get(), &rate, &channels, &encoding); code != MPG123_OK)
        return fail(code);
    mpg123_format_none(m_handle.get());
    if (const int code = mpg123_format(m_handle.get(), rate, channels, encoding); code != MPG123_OK)
        return fail(code);
    m_format
        = packedPCM(double(rate), static_cast<std::uint32_t>(channels), 16, kAudioFormatFlagIsSignedInteger);
    const off_t packets = mpg123_framelength(m_handle.get());
    m_totalPacketCount = static_cast<std::uint32_t>(
        std::clamp<off_t>(packets, 0, std::numeric_limits<std::uint32_t>::max()));
    return true;
}

std::span<const std::byte> Mp3Source::nextPacket()
{
    const platform::OverlapCheck::Call call(m_calls);
    int code = MPG123_OK;
    while (code == MPG123_OK || code == MPG123_NEW_FORMAT) {
        off_t number = 0;
        unsigned char *samples = nullptr;
        std::size_t size = 0;
        code = mpg123_decode_frame(m_handle.get(), &number, &samples, &size);
        if (size > 0)
            return {reinterpret_cast<const std::byte *>(samples), size};
    }
    if (code != MPG123_DONE)
        fail(code);
    return {};
}

bool Mp3Source::fail(int code)
{
    const bool detailed = code == MPG123_ERR && m_handle;
    m_error = QString::fromUtf8(detailed ? mpg123_strerror(m_handle.get()) : mpg123_plain_strerror(code));
    // An empty or too short file is just over before its first frame.
    if (code == MPG123_DONE)
        m_error = platform::reason(QT_TRANSLATE_NOOP("Reason", "no MPEG audio in it"));
    return false;
}
