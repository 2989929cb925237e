// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

// Whether libmp3lame can take these samples. It squares and sums them in single precision: from about 10000
// times full scale on, its psychoacoustic model no longer ends, or ends the process. A thousandfold full
// scale (60 dB above) is no sound any more and still safe; what is not a number never is.
bool isWithinSoundRange(const float *samples, qsizetype count);
bool isWithinSoundRange(const double *samples, qsizetype count);
