// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/OutputStream.h"

#include "platform/FileWriter.h"

#include <cerrno>
#include <utility>

namespace platform {

namespace {

// The stream's cookie: its share of the writer.
using Cookie = std::shared_ptr<FileWriter>;

ssize_t writeTo(void *cookie, const char *bytes, size_t count)
{
    return (*static_cast<Cookie *>(cookie))->write(bytes, count) ? ssize_t(count) : 0;
}

int seekIn(void *cookie, off64_t *offset, int whence)
{
    const auto reached = (*static_cast<Cookie *>(cookie))->seek(*offset, whence);
    if (!reached)
        return -1;
    *offset = *reached;
    return 0;
}

int closeIt(void *cookie)
{
    const std::unique_ptr<Cookie> writer(static_cast<Cookie *>(cookie));
    (*writer)->close();
    return 0;
}

std::FILE *streamTo(const std::shared_ptr<FileWriter> &writer)
{
    auto cookie = std::make_unique<Cookie>(writer);
    std::FILE *const file = fopencookie(cookie.get(), "w+b", {nullptr, writeTo, seekIn, closeIt});
    if (!file)
        return nullptr;
    std::setvbuf(file, nullptr, _IONBF, 0);
    static_cast<void>(cookie.release()); // the stream closes it
    return file;
}

} // namespace

OutputStream::OutputStream() = default;

OutputStream::~OutputStream()
{
    close();
}

bool OutputStream::open(const QString &path, QDeadlineTimer deadline)
{
    close();
    m_refusal = {};
    m_refusal.path = path;
    m_writer = FileWriter::open(path, m_refusal.error, deadline);
    if (m_writer && !(m_file = streamTo(m_writer))) {
        m_refusal.error = errno;
        std::exchange(m_writer, nullptr)->close();
    }
    return m_file != nullptr;
}

void OutputStream::close()
{
    if (m_file)
        std::fclose(std::exchange(m_file, nullptr));
}

std::FILE *OutputStream::abandon()
{
    if (m_writer)
        m_writer->release();
    return std::exchange(m_file, nullptr);
}

OutputState OutputStream::state() const
{
    return m_writer ? m_writer->state() : m_refusal;
}

} // namespace platform
