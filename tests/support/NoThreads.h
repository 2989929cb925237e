// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <pthread.h>

namespace testbed {

// No thread can have a stack as large as the address space.
class NoThreads {
public:
    NoThreads()
    {
        pthread_getattr_default_np(&m_before);
        pthread_attr_t attributes = m_before;
        pthread_attr_setstacksize(&attributes, std::size_t(1) << 47);
        pthread_setattr_default_np(&attributes);
    }
    ~NoThreads() { pthread_setattr_default_np(&m_before); }

private:
    pthread_attr_t m_before = {};
};

} // namespace testbed
