// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "encoder/KTMp3LameConfig.h"

#include <QByteArrayList>
#include <QVariant>
#include <cstdio>
#include <span>

// Settings of the encoder in words, PROPERTY=NUMBER each. False, and a line on stderr, for one that there is
// not.
inline bool takeSettings(KTMp3LameConfig &config, std::span<char *const> words)
{
    for (const char *word : words) {
        const QByteArrayList parts = QByteArray(word).split('=');
        if (parts.size() != 2 || !config.setProperty(parts[0].constData(), parts[1].toDouble())) {
            std::fprintf(stderr, "no such property: %s\n", word);
            return false;
        }
    }
    return true;
}
