// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "encoder/UnfinishedEncodings.h"

#include <QMutex>
#include <vector>

namespace UnfinishedEncodings {

namespace {

struct Kept {
    QMutex mutex;
    std::vector<std::pair<lame_global_struct *, std::FILE *>> encodings;
};

} // namespace

void keepUntilExit(lame_global_struct *encoder, std::FILE *file)
{
    // Never destroyed: "until exit" includes the destructors that run then.
    static Kept *const kept = new Kept;
    const QMutexLocker lock(&kept->mutex);
    kept->encodings.emplace_back(encoder, file);
}

} // namespace UnfinishedEncodings
