// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

// Whether libmp3lame can take these samples. It squares and sums them in single precision: from about 10,000
// times full scale on, its psychoacoustic model loops for ever or ends the process. 1,000 times full scale is
// far beyond any sound, and still safe; NaN and infinity are not.
bool isWithinSoundRange(const float *samples, qsizetype count);
bool isWithinSoundRange(const double *samples, qsizetype count);
