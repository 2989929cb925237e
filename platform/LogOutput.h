// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

namespace platform {

// Opens what the process was started without of the standard streams: the next file or connection would have
// their numbers, and be sent the log. What is printed there fails. Before anything else is opened.
void keepStandardStreams();

// From now on no thread waits for whoever takes the log: a line for which a pipe or a terminal has no room is
// left out and counted, a line that is longer than a page loses its middle, and a reader that is gone does
// not end the process. Only a file on a disk that does not answer still holds the one thread that writes to
// it. At the start, main thread only.
void neverWaitForLog();

} // namespace platform
