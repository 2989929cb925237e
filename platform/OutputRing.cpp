// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/OutputRing.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <sys/mman.h>

namespace platform {

namespace {

constexpr std::size_t pageSize = 65536; // or a part of it, on every architecture
constexpr std::size_t leastCapacity = 1024UL * 1024;

char *reserve(std::size_t size)
{
    void *const memory
        = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return memory == MAP_FAILED ? nullptr : static_cast<char *>(memory);
}

} // namespace

OutputRing::OutputRing(std::size_t capacity)
    : m_capacity(capacity)
{
    while (m_capacity >= leastCapacity && !(m_memory = reserve(m_capacity)))
        m_capacity /= 2;
    if (!m_memory)
        m_capacity = 0;
}

OutputRing::~OutputRing()
{
    dispose();
}

void OutputRing::dispose()
{
    if (m_memory)
        munmap(m_memory, m_capacity);
    m_memory = nullptr;
    m_capacity = 0;
    m_size = 0;
}

bool OutputRing::append(const char *bytes, std::size_t count)
{
    if (count > m_capacity - m_size)
        return false;
    const std::size_t end = (m_begin + m_size) % m_capacity;
    const std::size_t first = std::min(count, m_capacity - end);
    std::memcpy(m_memory + end, bytes, first);
    std::memcpy(m_memory, bytes + first, count - first);
    m_size += count;
    return true;
}

std::array<iovec, 2> OutputRing::parts() const
{
    const std::size_t first = std::min(m_size, m_capacity - m_begin);
    return {iovec{m_memory + m_begin, first}, iovec{m_memory, m_size - first}};
}

void OutputRing::giveBack(std::size_t count) const
{
    const std::size_t from = (m_begin + pageSize - 1) / pageSize * pageSize;
    const std::size_t to = std::min(m_begin + count, m_capacity) / pageSize * pageSize;
    if (from < to)
        madvise(m_memory + from, to - from, MADV_DONTNEED);
}

void OutputRing::takeOut(std::size_t count)
{
    m_size -= count;
    // An empty ring starts again with the pages that it has.
    m_begin = m_size == 0 ? 0 : (m_begin + count) % m_capacity;
}

} // namespace platform
