// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <sys/uio.h>

namespace platform {

// Bytes that wait for a disk, in order. The addresses for all of them are reserved at once and the memory
// behind them is taken when it is needed, so that nothing is ever allocated or moved; while bytes leave as
// fast as they come, that is the first page.
//
// One thread appends and another takes out, under their common lock. The memory of parts() stays as it is
// until it is taken out, also without the lock.
class OutputRing {
public:
    // As much of the capacity, in bytes, as there are addresses for.
    explicit OutputRing(std::size_t capacity);
    ~OutputRing();
    OutputRing(const OutputRing &) = delete;
    OutputRing &operator=(const OutputRing &) = delete;

    // Gives up all of it; nothing can be appended any more.
    void dispose();

    std::size_t capacity() const { return m_capacity; }
    std::size_t size() const { return m_size; }
    bool isEmpty() const { return m_size == 0; }

    // All of them, or false and none.
    bool append(const char *bytes, std::size_t count);
    // Everything that waits; the second part may be empty.
    std::array<iovec, 2> parts() const;
    // Gives the memory of the first `count` bytes, which have to be taken out next, back to the system. For
    // the thread that takes out, without the lock.
    void giveBack(std::size_t count) const;
    void takeOut(std::size_t count);

private:
    char *m_memory = nullptr;
    std::size_t m_capacity = 0;
    std::size_t m_begin = 0;
    std::size_t m_size = 0;
};

} // namespace platform
