// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/DiskWatch.h"
#include "app/SoundWatch.h"

#include <QCoreApplication>
#include <QString>

// What is known to be wrong with a recording, several things at once as a rule: a cause and its symptoms.
struct Troubles {
    Q_DECLARE_TR_FUNCTIONS(Troubles)

public:
    using milliseconds = std::chrono::milliseconds;

    // Below this nothing is told: an encoder holds back as much, and nobody hears it.
    static constexpr milliseconds worthTelling{100};

    bool diskIsSilent = false; // it was asked, or given something, and does not answer
    QString diskProblem{}; // why it takes nothing, to follow a colon: "the disk is full"; empty while it does
    DiskWatch::Judgement disk = DiskWatch::Judgement::Fine;
    std::chrono::seconds timeLeft = std::chrono::seconds::max(); // until the disk is full
    milliseconds waiting{0}; // of the sound, in memory: the file does not have it yet
    milliseconds unwritten{0}; // of the sound: it cannot come into the file any more
    milliseconds missing{0}; // of the sound: it was never captured
    QString missingBecause{}; // to follow a colon: "the computer was busy"
    SoundWatch::Judgement sound = SoundWatch::Judgement::Fine;
    bool muted = false; // the device, or its volume is zero

    // The one that is to be told, as a sentence: a cause before its symptoms, what is lost before what may
    // be, what goes on before what has passed. Empty when nothing is wrong.
    QString sentence(const QString &device) const;
    // The same with every time at its shortest, so that one sentence can be told from another however long it
    // has lasted.
    Troubles withoutDurations() const;

private:
    QString ofTheFile() const;
    QString ofTheSound(const QString &device) const;
    QString ofHoles() const;
    QString andWaiting(const QString &cause) const;
};
