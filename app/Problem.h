// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QString>

// Why a command could not be done, as a sentence.
struct Problem {
    Q_DECLARE_TR_FUNCTIONS(Problem)

public:
    QString words; // empty when it could
    QString inEnglish; // the same for scripts, which get it in English everywhere

    static Problem cannotRecord(const QString &reason);
    static Problem cannotPlay(const QString &file, const QString &reason);
};
