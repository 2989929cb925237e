// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ui/CardWindow.h"

class QAbstractButton;
class QPushButton;

namespace testbed {

// Two cards with a few controls each, laid out like the program's own, for tests and measurements of the
// window mechanics. They do nothing.
class RecorderCard : public CardWindow {
public:
    RecorderCard();
    QAbstractButton *preferences;
};

class PreferencesCard : public CardWindow {
public:
    PreferencesCard();
    QPushButton *done;
};

} // namespace testbed
