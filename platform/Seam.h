// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/ThreadCheck.h"

#include <functional>
#include <utility>

namespace platform {

// Removes a stand-in again when it goes, so that no test can leave one behind. Guards of one seam must go in
// the reverse order in which they came.
class [[nodiscard]] SeamGuard {
public:
    explicit SeamGuard(std::function<void()> restore)
        : m_restore(std::move(restore))
    {
    }
    SeamGuard(SeamGuard &&other) noexcept
        : m_restore(std::exchange(other.m_restore, nullptr))
    {
    }
    SeamGuard &operator=(SeamGuard &&) = delete;
    ~SeamGuard()
    {
        if (m_restore)
            m_restore();
    }

private:
    std::function<void()> m_restore;
};

// One thing that the desktop offers, and the place where a test puts another in its place. A platform file
// declares a function that answers its seam, named after what stands behind it:
//
//     Seam<std::function<void(const QUrl &)>> &fileManager();
//
// and calls what is in use. Main thread only.
template <typename T> class Seam {
public:
    explicit Seam(T own)
        : m_inUse(std::move(own))
    {
    }

    const T &inUse() const
    {
        assertMainThread();
        return m_inUse;
    }

    // For as long as the guard lives.
    SeamGuard replace(T other)
    {
        assertMainThread();
        return SeamGuard([this, before = std::exchange(m_inUse, std::move(other))] { m_inUse = before; });
    }

private:
    T m_inUse;
};

} // namespace platform
