// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/Problem.h"

#include "platform/ForPeople.h"

using namespace Qt::StringLiterals;

Problem Problem::cannotRecord(const QString &reason)
{
    return {tr("Cannot record: %1").arg(platform::inWords(reason)), u"Cannot record: %1"_s.arg(reason)};
}

Problem Problem::cannotPlay(const QString &file, const QString &reason)
{
    return {tr("Cannot play %1: %2").arg(file, platform::inWords(reason)),
        u"Cannot play %1: %2"_s.arg(file, reason)};
}
