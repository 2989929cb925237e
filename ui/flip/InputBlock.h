// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

// As long as it lives, no key, click or touch reaches a window of the application and the pointer is hidden.
// Timers, sound and everything else go on.
class InputBlock : public QObject {
    Q_OBJECT

public:
    InputBlock();
    ~InputBlock() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
