// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/UnfinishedRecordings.h"

#include "audio/HBRecordingTask.h"
#include "platform/ThreadCheck.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace UnfinishedRecordings {

namespace {

std::vector<std::shared_ptr<HBRecordingTask>> &kept()
{
    static std::vector<std::shared_ptr<HBRecordingTask>> tasks;
    return tasks;
}

} // namespace

void keep(const std::shared_ptr<HBRecordingTask> &task)
{
    platform::assertMainThread();
    if (!task->audioRecorder()->isDelivering() || std::ranges::find(kept(), task) != kept().end())
        return;
    kept().push_back(task);
    task->audioRecorder()->whenDelivered([done = task.get()] {
        std::erase_if(kept(), [done](const auto &one) { return one.get() == done; });
    });
}

bool isEmpty()
{
    platform::assertMainThread();
    return kept().empty();
}

void finish(QDeadlineTimer deadline)
{
    platform::assertMainThread();
    const auto tasks = std::exchange(kept(), {});
    for (const auto &task : tasks)
        task->audioRecorder()->finish(deadline);
}

} // namespace UnfinishedRecordings
