// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/DiskWatch.h"
#include "app/SoundWatch.h"

#include <QString>

// What is known to be wrong with a recording, several things at once as a rule: a cause and its symptoms.
struct Troubles {
    bool diskIsSilent = false; // it was asked, and does not answer
    DiskWatch::Judgement disk = DiskWatch::Judgement::Fine;
    std::chrono::seconds timeLeft = std::chrono::seconds::max(); // until the disk is full
    SoundWatch::Judgement sound = SoundWatch::Judgement::Fine;

    // The one that is to be told, as a sentence: a cause before its symptoms, what is lost before what may
    // be. Empty when nothing is wrong.
    QString sentence(const QString &device) const;
};
