// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/FileWriter.h"

#include <memory>
#include <mutex>
#include <vector>

namespace platform {

// Every file that this process has opened and not closed. Any thread.
class OpenOutputs {
public:
    // Never destroyed: threads may come back from a disk while the process ends.
    static OpenOutputs &instance();

    void add(std::shared_ptr<FileWriter> writer);
    void remove(const FileWriter *writer);
    std::vector<std::shared_ptr<FileWriter>> all() const;

private:
    OpenOutputs();

    mutable std::mutex m_mutex;
    std::vector<std::shared_ptr<FileWriter>> m_writers;
};

} // namespace platform
