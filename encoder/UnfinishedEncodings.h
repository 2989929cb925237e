// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdio>

struct lame_global_struct;

// Stopping a recording ends its capture only: the encoder and the file of a writer that is destroyed without
// finalizeEncode() stay open until the process exits. They are kept reachable here, so that a leak checker
// does not report them.
namespace UnfinishedEncodings {

// Any thread.
void keepUntilExit(lame_global_struct *encoder, std::FILE *file);

} // namespace UnfinishedEncodings
