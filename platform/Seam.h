// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <utility>

namespace platform {

// One thing that the desktop offers, and the place where a test puts another in its stead. A platform file
// declares a function that answers its seam:
//
//     Seam<std::function<void(const QUrl &)>> &fileManager();
//
// and calls what is in use. What was there before comes back when the guard goes, so that no test can leave
// its stand-in behind. Main thread only, unless the file says otherwise.
template <typename T> class Seam {
public:
    class [[nodiscard]] Guard {
    public:
        Guard(Seam &seam, T before)
            : m_seam(&seam)
            , m_before(std::move(before))
        {
        }
        Guard(Guard &&other) noexcept
            : m_seam(std::exchange(other.m_seam, nullptr))
            , m_before(std::move(other.m_before))
        {
        }
        Guard &operator=(Guard &&) = delete;
        ~Guard()
        {
            if (m_seam)
                m_seam->m_inUse = std::move(m_before);
        }

    private:
        Seam *m_seam;
        T m_before;
    };

    explicit Seam(T own)
        : m_inUse(std::move(own))
    {
    }

    const T &inUse() const { return m_inUse; }

    // For as long as the guard lives. Guards go in the reverse order of their coming.
    Guard replace(T other) { return Guard(*this, std::exchange(m_inUse, std::move(other))); }

private:
    T m_inUse;
};

} // namespace platform
